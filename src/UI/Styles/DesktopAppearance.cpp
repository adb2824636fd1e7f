#include "UI/Styles/DesktopAppearance.h"

#include "UI/Styles/CalmStyle.h"
#include "UI/Styles/Palettes.h"
#include "UI/Styles/TextDirectionStyle.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

#include <algorithm>
#include <array>

namespace morlaine {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 100ms;

/// Qt does not say where the application's palette comes from. If the desktop sets none, it is that of the style.
bool desktopBringsColors()
{
    const QPalette palette = QApplication::palette();
    const QPalette ofStyle = QApplication::style()->standardPalette();
    constexpr std::array roles{QPalette::Window, QPalette::WindowText, QPalette::Base, QPalette::Button,
                               QPalette::Highlight};
    return std::ranges::any_of(roles, [&](auto role) { return palette.color(role) != ofStyle.color(role); });
}

void apply(Appearance::Preference preference)
{
    QApplication::setPalette(preference == Appearance::Preference::dark ? Palettes::dark() : Palettes::light());
}

/// Keeps hints and disabled texts visible whatever colours the desktop changes to.
class VisibleTexts final : public QObject {
public:
    VisibleTexts()
    {
        QCoreApplication::instance()->installEventFilter(this);
        mend();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ApplicationPaletteChange && watched == QCoreApplication::instance()) {
            mend();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static void mend()
    {
        const QPalette now = QApplication::palette();
        const QPalette visible = Palettes::withVisibleTexts(now);
        if (visible != now) {
            QApplication::setPalette(visible);
        }
    }
};

} // namespace

DesktopAppearance::DesktopAppearance(std::unique_ptr<Appearance> appearance) : m_appearance(std::move(appearance))
{
    if (desktopBringsColors()) {
        if (QApplication::isRightToLeft()) {
            QApplication::setStyle(new TextDirectionStyle(QApplication::style()->name()));
        }
        m_appearance.reset();
        m_visibleTexts = std::make_unique<VisibleTexts>();
        return;
    }
    QApplication::setStyle(new CalmStyle);
    m_appearance->waitForAnswer(patience);
    apply(m_appearance->preference());
    m_appearance->observe(apply);
}

} // namespace morlaine
