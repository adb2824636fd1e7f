#include "UI/Views/Window/OnboardingView.h"

#include "Platform/Workspace.h"
#include "UI/Styles/StyledLabel.h"
#include "UI/Styles/Symbols.h"
#include "UI/Styles/Theme.h"
#include "UI/Widgets/ProminentButton.h"
#include "UI/Widgets/RoundedBox.h"
#include "UI/Widgets/Scrollable.h"
#include "UI/Widgets/SymbolImage.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QPainter>
#include <QPushButton>

#include <utility>

namespace morlaine {

namespace {

constexpr int symbolSide = 88;
constexpr int symbolBesideHeadline = 16;
constexpr int spacing = 24;
constexpr int widestSubtitle = 480;
constexpr int widestPermissionBox = 580;
constexpr int permissionSpacing = 12;
constexpr double permissionBackgroundOpacity = 0.5;

/// The picture above the welcome text.
class GradientSymbol final : public QWidget {
public:
    using QWidget::QWidget;

    [[nodiscard]] QSize sizeHint() const override { return {symbolSide, symbolSide}; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        Symbols::paint(painter, rect(), "chart.pie.fill", Theme::scanGradient());
    }
};

StyledLabel* wrapping(StyledLabel* label)
{
    label->setWordWrap(true);
    return label;
}

/// A symbol beside a headline.
QWidget* makeHeadline(SymbolName symbol, const QString& text)
{
    auto* line = new QWidget;
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins({});
    layout->setSpacing(static_cast<int>(Theme::paddingSmall));
    auto* title = wrapping(new StyledLabel(TextStyle::headline));
    title->setText(text);
    auto* picture = new SymbolImage(symbol, symbolBesideHeadline, Theme::textPrimary);
    layout->addWidget(picture);
    layout->addWidget(title, 1);
    return line;
}

/// Centres `widget` at up to its maximum width. An alignment would keep it from growing with its text.
QLayout* centred(QWidget* widget)
{
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(widget, 1000);
    row->addStretch(1);
    return row;
}

} // namespace

OnboardingView::OnboardingView(std::shared_ptr<Workspace> workspace, QWidget* parent)
    : QWidget(parent)
    , m_workspace(std::move(workspace))
{
    auto* title = wrapping(new StyledLabel(TextStyle::largeTitle, QFont::Bold, Theme::textPrimary));
    title->setText(QStringLiteral("Welcome to Morlaine"));
    title->setAlignment(Qt::AlignCenter);

    auto* subtitle = wrapping(new StyledLabel(TextStyle::headline, Theme::textSecondary));
    subtitle->setText(QStringLiteral("Analyze which folders and files are taking up your disk space with a squarified "
                                     "treemap visualizer."));
    subtitle->setAlignment(Qt::AlignCenter);
    subtitle->setMaximumWidth(widestSubtitle);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    const int padding = static_cast<int>(Theme::paddingMedium);
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->setSpacing(spacing);
    layout->addStretch();
    layout->addWidget(new GradientSymbol, 0, Qt::AlignHCenter);
    layout->addLayout(centred(title));
    layout->addLayout(centred(subtitle));
    layout->addWidget(makeScanButton(), 0, Qt::AlignHCenter);
    layout->addLayout(centred(makePermissionBox()));
    layout->addStretch();

    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(scrollable(content)); // for large fonts in a low window
}

QWidget* OnboardingView::makeScanButton()
{
    auto* button = new ProminentButton(QStringLiteral("Select Folder to Scan..."), Theme::accent);
    const int side = Symbols::sideBeside(button->font());
    button->setIconSize({side, side});
    button->setIcon(Symbols::icon("folder.badge.plus", QColor(Qt::white)));
    connect(button, &QPushButton::clicked, this, &OnboardingView::folderRequested);
    return button;
}

QWidget* OnboardingView::makePermissionBox()
{
    auto* text = wrapping(new StyledLabel(TextStyle::subheadline, Theme::textSecondary));
    text->setTextFormat(Qt::RichText);
    text->setText(QStringLiteral("To scan your entire home directory or system volumes correctly, Morlaine needs "
                                 "<b>Full Disk Access</b> permissions. Without this, some system directories might be "
                                 "skipped due to macOS Sandbox boundaries."));

    auto* box = new RoundedBox(permissionBackgroundOpacity, Theme::cornerRadiusMedium);
    box->setMaximumWidth(widestPermissionBox);
    auto* layout = new QVBoxLayout(box);
    const int padding = static_cast<int>(Theme::paddingMedium);
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->setSpacing(permissionSpacing);
    layout->addWidget(makeHeadline("shield.dashed", QStringLiteral("Permission Setup (Recommended)")));
    layout->addWidget(text);
    layout->addWidget(makeSettingsRow());
    return box;
}

QWidget* OnboardingView::makeSettingsRow()
{
    auto* row = new QWidget;
    auto* layout = new QFormLayout(row);
    layout->setContentsMargins({});
    layout->setSpacing(permissionSpacing);
    layout->setRowWrapPolicy(QFormLayout::WrapLongRows); // the path is below the button if there is too little room
    auto* button = new QPushButton(QStringLiteral("Open System Settings"));
    connect(button, &QPushButton::clicked, this, [this] { m_workspace->openPrivacySettings(); });
    auto* path = wrapping(new StyledLabel(TextStyle::caption, Theme::textTertiary));
    path->setText(QStringLiteral("Settings → Privacy & Security → Full Disk Access → Add Morlaine"));
    layout->addRow(button, path);
    return row;
}

void OnboardingView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::panelBackground(palette()));
}

} // namespace morlaine
