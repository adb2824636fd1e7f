#pragma once

#include "Platform/Desktop/FolderChooser.h"
#include "Platform/Desktop/Linux/FolderListing.h"
#include "Platform/StandardFolders.h"

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace morlaine {

/// A dialog for choosing a folder, for sessions without one: a line for the path, a list of the folders that complete
/// it, and a list of the user's places. The line determines which folder is chosen. Main thread only.
class FolderDialog final : public QDialog {
    Q_OBJECT

public:
    /// Shows the home folder first.
    FolderDialog(const FolderChooser::Texts& texts, const UserFolders& places, QWidget& window);

    /// The chosen folder, once accepted. A folder taken from the list keeps its exact bytes, even if its name is
    /// invalid UTF-8.
    [[nodiscard]] FileUrl folder() const;

    /// Closes the dialog if the line names a folder; otherwise shows a message. The check runs in the background.
    void accept() override;

private:
    [[nodiscard]] QWidget* makePlaces(const UserFolders& places);
    [[nodiscard]] QWidget* makeLine();
    [[nodiscard]] QWidget* makeList();
    [[nodiscard]] QWidget* makeButtons(const std::string& prompt);
    bool eventFilter(QObject* watched, QEvent* event) override;

    void enter(const std::string& path);
    void leave();
    void lineEdited();
    void select(const QListWidgetItem* item);
    void showLine(const std::string& path);
    void list(const std::string& path);
    void showNames();
    void say(const QString& text);

    [[nodiscard]] std::string path() const;

    const std::string m_home;
    QLineEdit* m_line = nullptr;
    QListWidget* m_list = nullptr;
    QLabel* m_message = nullptr;
    QPushButton* m_accept = nullptr;

    std::string m_shown;              // the exact path behind the text of the line, unless the text was edited
    std::string m_listed;             // the folder whose subfolders are listed, with a slash at its end
    std::vector<std::string> m_names; // their names, in natural order
    FolderListing m_listing;
    FolderListing m_test;
};

} // namespace morlaine
