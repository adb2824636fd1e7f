#pragma once

#include <QObject>

namespace morlaine {

/// Emits a signal when the application's font or palette has changed. Qt notifies widgets of their own font and palette
/// only, which may not change with the application's.
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
