#include "UI/Styles/CalmStyle.h"

#include "UI/Styles/Contrast.h"
#include "UI/Styles/Symbols.h"
#include "UI/Styles/Theme.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace morlaine {

namespace {

constexpr int scrollBarExtent = 12;
constexpr int leastSliderLength = 28;
constexpr int fieldPadding = 4;
constexpr int gapBesideIcon = 3;

bool has(const QStyleOption& option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

QColor textAt(const QStyleOption& option, double opacity)
{
    return Theme::withOpacity(option.palette.color(QPalette::WindowText), opacity);
}

/// A rounded rectangle whose outline, if any, is aligned to whole pixels.
void drawRound(QPainter& painter, const QRectF& rect, double radius, const QBrush& fill,
               const QPen& outline = Qt::NoPen)
{
    const double inset = outline.style() == Qt::NoPen ? 0 : outline.widthF() / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(outline);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.restore();
}

/// The fill of a button in its state. Tinted buttons darken; others move towards their text colour.
QColor buttonFill(const QStyleOption& option)
{
    const QColor fill = option.palette.color(QPalette::Button);
    const QColor towards = option.palette.color(QPalette::ButtonText);
    if (!has(option, QStyle::State_Enabled)) {
        return fill;
    }
    if (has(option, QStyle::State_Sunken) || has(option, QStyle::State_On)) {
        return mixed(towards, fill, 0.14);
    }
    return has(option, QStyle::State_MouseOver) ? mixed(towards, fill, 0.06) : fill;
}

void drawButton(QPainter& painter, const QStyleOption& option)
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    if (button != nullptr && button->features.testFlag(QStyleOptionButton::Flat) &&
        !has(option, QStyle::State_Sunken) && !has(option, QStyle::State_MouseOver)) {
        return;
    }
    const bool isFocused = has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange);
    const bool isDefault = button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
    const QColor edge = isFocused || isDefault ? option.palette.color(QPalette::Highlight) : textAt(option, 0.16);
    const QPen outline(edge, isFocused ? 2 : 1);
    drawRound(painter, option.rect, Theme::cornerRadiusSmall, buttonFill(option), outline);
}

void drawToolButton(QPainter& painter, const QStyleOption& option)
{
    if (!has(option, QStyle::State_Enabled)) {
        return;
    }
    // What a button has switched on is seen elsewhere in the window.
    const bool isDown = has(option, QStyle::State_Sunken);
    if (isDown || has(option, QStyle::State_MouseOver)) {
        drawRound(painter, option.rect, Theme::cornerRadiusSmall,
                  textAt(option, isDown ? Theme::pressedOpacity : Theme::hoverOpacity));
    }
}

void drawFocus(QPainter& painter, const QStyleOption& option)
{
    const QColor ring = Theme::withOpacity(option.palette.color(QPalette::Highlight), 0.8);
    drawRound(painter, option.rect, Theme::cornerRadiusSmall - 1, Qt::NoBrush, QPen(ring, 2));
}

void drawField(QPainter& painter, const QStyleOption& option)
{
    const bool isFocused = has(option, QStyle::State_HasFocus);
    const QPen outline = isFocused ? QPen(option.palette.color(QPalette::Highlight), 2) : QPen(textAt(option, 0.18), 1);
    drawRound(painter, option.rect, Theme::cornerRadiusSmall, option.palette.color(QPalette::Base), outline);
}

void drawPanelFrame(QPainter& painter, const QStyleOption& option)
{
    drawRound(painter, option.rect, 0, Qt::NoBrush, QPen(Theme::separator(option.palette), 1));
}

/// A bar in the middle of the rectangle, at most six points thick.
QRectF pill(const QRect& rect)
{
    constexpr double thickest = 6;
    const double height = std::min<double>(thickest, rect.height());
    return {rect.x() + 0.0, rect.y() + (rect.height() - height) / 2, rect.width() + 0.0, height};
}

void drawProgressGroove(QPainter& painter, const QStyleOption& option)
{
    const QRectF rect = pill(option.rect);
    drawRound(painter, rect, rect.height() / 2, textAt(option, 0.12));
}

void drawProgress(QPainter& painter, const QStyleOptionProgressBar& option)
{
    const double range = static_cast<double>(option.maximum) - option.minimum;
    const double share = std::clamp((static_cast<double>(option.progress) - option.minimum) / range, 0.0, 1.0);
    QRectF rect = pill(option.rect);
    if (share > 0) {
        // At least as wide as high, so that its ends stay round.
        const double width = std::max(rect.width() * share, rect.height());
        rect.setLeft(option.direction == Qt::RightToLeft ? rect.right() - width : rect.left());
        rect.setWidth(width);
        drawRound(painter, rect, rect.height() / 2, option.palette.color(QPalette::Highlight));
    }
}

void drawSplitter(QPainter& painter, const QStyleOption& option)
{
    const QRect rect = option.rect;
    const QRect line = has(option, QStyle::State_Horizontal) ? QRect(rect.center().x(), rect.top(), 1, rect.height())
                                                             : QRect(rect.left(), rect.center().y(), rect.width(), 1);
    painter.fillRect(rect, Theme::panelBackground(option.palette));
    painter.fillRect(line, Theme::separator(option.palette));
}

/// Icon and text side by side, centred together.
void drawLabelledIcon(QPainter& painter, const QStyleOptionToolButton& option, const QStyle& style)
{
    const QSize side = option.iconSize;
    const int textWidth = option.fontMetrics.size(Qt::TextShowMnemonic, option.text).width();
    QRect content(0, 0, side.width() + gapBesideIcon + textWidth, option.rect.height());
    content.moveCenter(option.rect.center());
    const bool isEnabled = has(option, QStyle::State_Enabled);
    QRect icon(content.topLeft(), side);
    icon.moveTop(content.top() + (content.height() - side.height()) / 2);
    icon = QStyle::visualRect(option.direction, content, icon);
    const QRect text =
        QStyle::visualRect(option.direction, content, content.adjusted(side.width() + gapBesideIcon, 0, 0, 0));
    option.icon.paint(&painter, icon, Qt::AlignCenter, isEnabled ? QIcon::Normal : QIcon::Disabled);
    style.drawItemText(&painter, text, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextHideMnemonic, option.palette,
                       isEnabled, option.text, QPalette::ButtonText);
}

void drawToolBar(QPainter& painter, const QStyleOption& option)
{
    const QRect rect = option.rect;
    painter.fillRect(rect, Theme::panelBackground(option.palette));
    painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1, Theme::separator(option.palette));
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& slider)
{
    if (option.minimum == option.maximum) {
        return;
    }
    constexpr int margin = 3;
    const bool isDown = has(option, QStyle::State_Sunken) && option.activeSubControls == QStyle::SC_ScrollBarSlider;
    const double opacity = isDown ? 0.5 : has(option, QStyle::State_MouseOver) ? 0.4 : 0.25;
    const QRectF rect = QRectF(slider).adjusted(margin, margin, -margin, -margin);
    drawRound(painter, rect, std::min(rect.width(), rect.height()) / 2, textAt(option, opacity));
}

/// The slider in a groove that fills the whole scroll bar; there are no arrow buttons.
QRect sliderRect(const QStyleOptionSlider& option)
{
    const bool isHorizontal = option.orientation == Qt::Horizontal;
    const int length = isHorizontal ? option.rect.width() : option.rect.height();
    const qint64 range = static_cast<qint64>(option.maximum) - option.minimum;
    const qint64 proportional =
        length * static_cast<qint64>(option.pageStep) / std::max<qint64>(range + option.pageStep, 1);
    const int slider = std::min(length, std::max(leastSliderLength, static_cast<int>(proportional)));
    const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                      length - slider, option.upsideDown);
    return isHorizontal ? QRect(option.rect.x() + start, option.rect.y(), slider, option.rect.height())
                        : QRect(option.rect.x(), option.rect.y() + start, option.rect.width(), slider);
}

QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part)
{
    const QRect slider = sliderRect(option);
    const bool isHorizontal = option.orientation == Qt::Horizontal;
    QRect rect = option.rect;
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return slider;
    case QStyle::SC_ScrollBarGroove:
        return rect;
    case QStyle::SC_ScrollBarSubPage:
        isHorizontal ? rect.setRight(slider.left() - 1) : rect.setBottom(slider.top() - 1);
        return rect;
    case QStyle::SC_ScrollBarAddPage:
        isHorizontal ? rect.setLeft(slider.right() + 1) : rect.setTop(slider.bottom() + 1);
        return rect;
    default:
        return {};
    }
}

} // namespace

CalmStyle::CalmStyle() : TextDirectionStyle(QStringLiteral("fusion"))
{
}

void CalmStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        return drawButton(*painter, *option);
    case PE_PanelButtonTool:
        return drawToolButton(*painter, *option);
    case PE_FrameFocusRect:
        return drawFocus(*painter, *option);
    case PE_FrameLineEdit:
        return drawField(*painter, *option);
    case PE_Frame:
        return drawPanelFrame(*painter, *option);
    default:
        TextDirectionStyle::drawPrimitive(element, option, painter, widget);
    }
}

void CalmStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const
{
    const auto* progress = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
    const auto* toolButton = qstyleoption_cast<const QStyleOptionToolButton*>(option);
    if (element == CE_Splitter) {
        drawSplitter(*painter, *option);
    } else if (toolButton != nullptr && element == CE_ToolButtonLabel &&
               toolButton->toolButtonStyle == Qt::ToolButtonTextBesideIcon) {
        drawLabelledIcon(*painter, *toolButton, *this);
    } else if (element == CE_ToolBar) {
        drawToolBar(*painter, *option);
    } else if (element == CE_ProgressBarGroove) {
        drawProgressGroove(*painter, *option);
    } else if (element == CE_ProgressBarContents && progress != nullptr && progress->maximum > progress->minimum) {
        drawProgress(*painter, *progress);
    } else {
        TextDirectionStyle::drawControl(element, option, painter, widget);
    }
}

void CalmStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const
{
    const auto* scrollBar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && scrollBar != nullptr) {
        drawScrollBar(*painter, *scrollBar, sliderRect(*scrollBar));
    } else {
        TextDirectionStyle::drawComplexControl(control, option, painter, widget);
    }
}

QRect CalmStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                                const QWidget* widget) const
{
    const auto* scrollBar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && scrollBar != nullptr) {
        return scrollBarPart(*scrollBar, subControl);
    }
    return TextDirectionStyle::subControlRect(control, option, subControl, widget);
}

QRect CalmStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    const QRect rect = TextDirectionStyle::subElementRect(element, option, widget);
    const auto* field = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const bool isFramedField = element == SE_LineEditContents && field != nullptr && field->lineWidth > 0;
    return isFramedField ? rect.adjusted(fieldPadding, 0, -fieldPadding, 0) : rect;
}

int CalmStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return scrollBarExtent;
    case PM_ScrollBarSliderMin:
        return leastSliderLength;
    case PM_SplitterWidth:
        return 5;
    case PM_ToolBarIconSize:
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
        return 16;
    case PM_ToolBarItemMargin:
    case PM_ToolBarItemSpacing:
        return 4;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return TextDirectionStyle::pixelMetric(metric, option, widget);
    }
}

int CalmStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const
{
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    default:
        return TextDirectionStyle::styleHint(hint, option, widget, returned);
    }
}

QSize CalmStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contentsSize,
                                  const QWidget* widget) const
{
    const QSize size = TextDirectionStyle::sizeFromContents(type, option, contentsSize, widget);
    switch (type) {
    case CT_PushButton:
        return size + QSize(8, 4);
    case CT_ToolButton:
    case CT_ComboBox:
    case CT_LineEdit:
        return size + QSize(4, 4);
    case CT_ItemViewItem:
        return size + QSize(0, 6);
    default:
        return size;
    }
}

/// The pictures of the folder dialog, and of the button that each tool bar has for what does not fit. Qt's own ones
/// have other colours, and load the readers of all picture formats.
QIcon CalmStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const
{
    const bool isMirrored = QApplication::isRightToLeft();
    switch (icon) {
    case SP_ToolBarHorizontalExtensionButton:
        return Symbols::icon(isMirrored ? SymbolName("chevron.left") : SymbolName("chevron.right"),
                             Theme::textSecondary);
    case SP_FileDialogToParent:
        return Symbols::icon("chevron.up", Theme::textSecondary);
    case SP_DirHomeIcon:
        return Symbols::icon("house", Theme::textSecondary);
    case SP_DesktopIcon:
        return Symbols::icon("desktopcomputer", Theme::textSecondary);
    case SP_DriveHDIcon:
        return Symbols::icon("internaldrive", Theme::textSecondary);
    case SP_DirIcon:
        return Symbols::icon("folder.fill", Theme::textSecondary);
    default:
        return TextDirectionStyle::standardIcon(icon, option, widget);
    }
}

} // namespace morlaine
