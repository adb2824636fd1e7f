#include "Platform/Desktop/Linux/FolderDialog.h"

#include "Utilities/ShownText.h"

#include <QAccessible>
#include <QCollator>
#include <QDialogButtonBox>
#include <QFile>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

#include <algorithm>
#include <optional>
#include <utility>

namespace morlaine {

namespace {

constexpr int placesWidth = 160;
constexpr QSize usualSize(720, 480);
constexpr int pathRole = Qt::UserRole;

QString textOf(const std::string& bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

QByteArray bytesOf(const std::string& text)
{
    return QByteArray::fromStdString(text);
}

std::string pathOf(const QListWidgetItem& item)
{
    return item.data(pathRole).toByteArray().toStdString();
}

/// Expands `~` at the start of a typed path.
std::string meantPath(const QString& text, const std::string& home)
{
    const std::string typed = text.toStdString();
    const bool isInHome = typed == "~" || typed.starts_with("~/");
    return isInHome ? home + typed.substr(1) : typed;
}

std::string withSlash(const std::string& path)
{
    return path.ends_with('/') ? path : path + '/';
}

/// The path up to its last slash, which is included.
std::string folderPart(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

void sortForPeople(std::vector<std::string>& names)
{
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names) {
        keyed.emplace_back(collator.sortKey(textOf(name)), std::move(name));
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first.compare(b.first) < 0; });
    std::transform(keyed.begin(), keyed.end(), names.begin(), [](auto& each) { return std::move(each.second); });
}

/// Hidden folders are offered only if the typed name begins with a full stop.
bool isOffered(const std::string& name, const QString& beginning)
{
    return textOf(name).startsWith(beginning, Qt::CaseInsensitive) &&
           (!name.starts_with('.') || beginning.startsWith(u'.'));
}

} // namespace

FolderDialog::FolderDialog(const FolderChooser::Texts& texts, const UserFolders& places, QWidget& window)
    : QDialog(&window)
    , m_home(places.home.path())
{
    setWindowTitle(texts.title ? QString::fromStdString(*texts.title) : QStringLiteral("Choose Folder"));
    auto* layout = new QGridLayout(this);
    layout->addWidget(makeLine(), 0, 0, 1, 2);
    layout->addWidget(makePlaces(places), 1, 0);
    layout->addWidget(makeList(), 1, 1);
    m_message = new QLabel;
    m_message->setTextFormat(Qt::PlainText);
    layout->addWidget(m_message, 2, 0, 1, 2);
    layout->addWidget(makeButtons(texts.prompt), 3, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    m_accept->setDefault(true); // only now is it a button of the dialog
    resize(usualSize);
    enter(m_home);
    m_line->setFocus();
}

FileUrl FolderDialog::folder() const
{
    return FileUrl::fromPath(path());
}

QWidget* FolderDialog::makeLine()
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    m_line = new QLineEdit;
    auto* label = new QLabel(QStringLiteral("&Folder:"));
    label->setBuddy(m_line);
    m_line->setAccessibleName(QStringLiteral("Folder"));
    m_line->installEventFilter(this);
    connect(m_line, &QLineEdit::textEdited, this, &FolderDialog::lineEdited);
    auto* up = new QToolButton;
    up->setIcon(style()->standardIcon(QStyle::SP_FileDialogToParent));
    up->setToolTip(QStringLiteral("Enclosing Folder (Alt+Up)"));
    up->setAccessibleName(QStringLiteral("Enclosing Folder"));
    up->setShortcut(Qt::ALT | Qt::Key_Up);
    up->setFocusPolicy(Qt::TabFocus);
    connect(up, &QToolButton::clicked, this, &FolderDialog::leave);
    layout->addWidget(label);
    layout->addWidget(m_line);
    layout->addWidget(up);
    return row;
}

QWidget* FolderDialog::makePlaces(const UserFolders& places)
{
    auto* list = new QListWidget;
    list->setAccessibleName(QStringLiteral("Places"));
    list->setFixedWidth(placesWidth);
    const auto add = [&](const QString& name, const std::optional<FileUrl>& url, QStyle::StandardPixmap icon) {
        if (url) {
            auto* item = new QListWidgetItem(style()->standardIcon(icon), name, list);
            item->setData(pathRole, bytesOf(url->path()));
        }
    };
    add(QStringLiteral("Home"), places.home, QStyle::SP_DirHomeIcon);
    add(QStringLiteral("Desktop"), places.desktop, QStyle::SP_DesktopIcon);
    add(QStringLiteral("Documents"), places.documents, QStyle::SP_DirIcon);
    add(QStringLiteral("Downloads"), places.downloads, QStyle::SP_DirIcon);
    add(QStringLiteral("File System"), FileUrl::fromPath("/"), QStyle::SP_DriveHDIcon);
    list->installEventFilter(this);
    connect(list, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) { enter(pathOf(*item)); });
    return list;
}

QWidget* FolderDialog::makeList()
{
    m_list = new QListWidget;
    m_list->setAccessibleName(QStringLiteral("Folders"));
    m_list->setUniformItemSizes(true);
    m_list->installEventFilter(this);
    connect(m_list, &QListWidget::currentItemChanged, this, &FolderDialog::select);
    connect(m_list, &QListWidget::itemDoubleClicked, this,
            [this](const QListWidgetItem* item) { enter(pathOf(*item)); });
    return m_list;
}

QWidget* FolderDialog::makeButtons(const std::string& prompt)
{
    auto* box = new QDialogButtonBox(QDialogButtonBox::Cancel);
    m_accept = box->addButton(QString::fromStdString(prompt), QDialogButtonBox::AcceptRole);
    connect(box, &QDialogButtonBox::accepted, this, &FolderDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &FolderDialog::reject);
    return box;
}

/// Return enters the selected item of a list. Down moves from the line into the list.
bool FolderDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    const int key = static_cast<const QKeyEvent*>(event)->key();
    const auto* const list = qobject_cast<QListWidget*>(watched);
    if (list != nullptr && (key == Qt::Key_Return || key == Qt::Key_Enter) && list->currentItem() != nullptr) {
        enter(pathOf(*list->currentItem()));
        return true;
    }
    if (watched == m_line && key == Qt::Key_Down && m_list->count() > 0) {
        m_list->setFocus();
        m_list->setCurrentRow(std::max(m_list->currentRow(), 0));
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void FolderDialog::accept()
{
    const std::string chosen = path();
    if (!chosen.starts_with('/')) {
        say(QStringLiteral("The path has to begin with a slash."));
        return;
    }
    m_test.test(chosen, [this, chosen](bool isFolder) {
        if (chosen != path()) {
            return; // edited in the meantime
        }
        if (isFolder) {
            QDialog::accept();
        } else {
            say(QStringLiteral("There is no such folder."));
        }
    });
}

/// Shows a folder and its subfolders.
void FolderDialog::enter(const std::string& path)
{
    showLine(withSlash(path));
    m_line->selectAll();
    list(withSlash(path));
}

void FolderDialog::leave()
{
    std::string inside = path();
    while (inside.size() > 1 && inside.ends_with('/')) {
        inside.pop_back();
    }
    if (inside.starts_with('/')) {
        enter(folderPart(inside));
    }
}

void FolderDialog::lineEdited()
{
    say({});
    const std::string folder = folderPart(path());
    if (folder == m_listed) {
        showNames();
    } else {
        list(folder);
    }
}

void FolderDialog::select(const QListWidgetItem* item)
{
    if (item != nullptr) {
        showLine(pathOf(*item));
    }
}

void FolderDialog::showLine(const std::string& path)
{
    m_shown = path;
    m_line->setText(textOf(path));
    say({});
}

void FolderDialog::list(const std::string& path)
{
    m_listed = path;
    m_names.clear();
    showNames();
    if (!path.starts_with('/')) {
        return;
    }
    m_listing.list(path, [this](FolderListing::Names names) {
        if (!names) {
            say(QStringLiteral("This folder cannot be read."));
            return;
        }
        m_names = std::move(*names);
        sortForPeople(m_names);
        showNames();
    });
}

void FolderDialog::showNames()
{
    const QSignalBlocker blocker(m_list);
    m_list->clear();
    const std::string typed = path();
    const bool isTyped = typed.size() > m_listed.size() && typed.starts_with(m_listed);
    const QString beginning = isTyped ? textOf(typed.substr(m_listed.size())) : QString();
    const QIcon icon = style()->standardIcon(QStyle::SP_DirIcon);
    for (const std::string& name : m_names) {
        if (isOffered(name, beginning)) {
            auto* item = new QListWidgetItem(icon, shownText(std::string_view(name)), m_list);
            item->setData(pathRole, bytesOf(m_listed + name));
        }
    }
}

void FolderDialog::say(const QString& text)
{
    if (text == m_message->text()) {
        return;
    }
    m_message->setText(text);
    if (!text.isEmpty()) {
        QAccessibleEvent event(m_message, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

std::string FolderDialog::path() const
{
    const QString text = m_line->text();
    return text == textOf(m_shown) ? m_shown : meantPath(text, m_home);
}

} // namespace morlaine
