#pragma once

#include <QObject>

namespace morlaine {

/// Tells when the application's font or palette has changed. Qt tells a widget of its own font and palette
/// only, which need not change with the application's where the widget has set a part of them.
class ApplicationLook final : public QObject {
    Q_OBJECT

public:
    /// Lives as long as the application object.
    [[nodiscard]] static ApplicationLook& shared();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void fontChanged();
    void paletteChanged();

private:
    explicit ApplicationLook(QObject* application);
};

} // namespace morlaine
