#pragma once

#include <QWidget>

namespace morlaine::Theme {

/// The kinds of translucent backing. The raw values are those that desktops with translucency know.
enum class Material : int { sidebar = 7 };
enum class BlendingMode : int { behindWindow = 0, withinWindow = 1 };

class VisualEffectWidget;

/// Describes the backing of a panel.
struct VisualEffectView {
    Material material = Material::sidebar;
    BlendingMode blendingMode = BlendingMode::behindWindow;

    /// A new widget that shows the backing and looks active even while its window is not. `parent` owns it.
    [[nodiscard]] VisualEffectWidget* make(QWidget* parent) const;

    /// Makes an existing widget show this backing.
    void update(VisualEffectWidget& widget) const;
};

/// The backing that a VisualEffectView describes. No translucency that is the same everywhere exists on this desktop,
/// so that it is filled with the panel's background; it still carries what it was asked to be.
class VisualEffectWidget final : public QWidget {
    Q_OBJECT

public:
    VisualEffectWidget(VisualEffectView effect, QWidget* parent);

    [[nodiscard]] Material material() const { return m_effect.material; }
    [[nodiscard]] BlendingMode blendingMode() const { return m_effect.blendingMode; }

    /// Keeps looking active while the window is not.
    [[nodiscard]] static constexpr bool isAlwaysActive() { return true; }

    void setEffect(VisualEffectView effect);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    VisualEffectView m_effect;
};

} // namespace morlaine::Theme
