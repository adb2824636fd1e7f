#pragma once

#include <QWidget>

namespace morlaine::Theme {

/// The kinds of translucent backing. The raw values are those of systems with translucency.
enum class Material : int { sidebar = 7 };
enum class BlendingMode : int { behindWindow = 0, withinWindow = 1 };

class VisualEffectWidget;

/// Describes the backing of a panel.
struct VisualEffectView {
    Material material = Material::sidebar;
    BlendingMode blendingMode = BlendingMode::behindWindow;

    /// Makes a widget with this backing, which keeps its active look in an inactive window. `parent` owns it.
    [[nodiscard]] VisualEffectWidget* make(QWidget* parent) const;

    /// Changes the backing of an existing widget.
    void update(VisualEffectWidget& widget) const;
};

/// The backing that a VisualEffectView describes. Linux desktops have no common kind of translucency, so that it is
/// filled with the panel's background. It keeps the description.
class VisualEffectWidget final : public QWidget {
    Q_OBJECT

public:
    VisualEffectWidget(VisualEffectView effect, QWidget* parent);

    [[nodiscard]] Material material() const { return m_effect.material; }
    [[nodiscard]] BlendingMode blendingMode() const { return m_effect.blendingMode; }

    /// Whether it keeps its active look in an inactive window.
    [[nodiscard]] static constexpr bool isAlwaysActive() { return true; }

    void setEffect(VisualEffectView effect);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    VisualEffectView m_effect;
};

} // namespace morlaine::Theme
