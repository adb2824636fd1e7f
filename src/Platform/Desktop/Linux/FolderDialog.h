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

/// A dialog in which people choose a folder, for sessions that have none to offer: a line for the path, below it the
/// folders that the path may go on with, and beside them the user's own. What the line says is what is chosen.
/// Main thread only.
class FolderDialog final : public QDialog {
    Q_OBJECT

public:
    /// Begins in the home folder.
    FolderDialog(const FolderChooser::Texts& texts, const UserFolders& places, QWidget& window);

    /// The folder that was chosen, once accepted: in its exact bytes when it was taken from the list, even where its
    /// name is invalid UTF-8.
    [[nodiscard]] FileUrl folder() const;

    /// Closes the dialog when the line names a folder, else says that it does not. The answer may take a moment.
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

    std::string m_shown;              // the path that the line shows, as long as nobody edits it
    std::string m_listed;             // the folder whose folders are in the list, ending in a slash
    std::vector<std::string> m_names; // of these, sorted for people
    FolderListing m_listing;
    FolderListing m_test;
};

} // namespace morlaine
