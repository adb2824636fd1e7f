#pragma once

#include "UI/Styles/Theme.h"

#include <QWidget>

namespace morlaine::Theme {

/// The backing that a VisualEffectView describes. No toolkit-independent translucency exists on this desktop, so that
/// it is filled with the panel's background; it still carries what it was asked to be.
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
