#pragma once

#include <QWidget>

#include <memory>

namespace morlaine {

class Workspace;

/// The welcome screen, shown while there is no tree.
class OnboardingView final : public QWidget {
    Q_OBJECT

public:
    explicit OnboardingView(std::shared_ptr<Workspace> workspace, QWidget* parent = nullptr);

Q_SIGNALS:
    /// The user wants to choose a folder to scan.
    void folderRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QWidget* makeScanButton();
    [[nodiscard]] QWidget* makePermissionBox();
    [[nodiscard]] QWidget* makeSettingsRow();

    const std::shared_ptr<Workspace> m_workspace;
};

} // namespace morlaine
