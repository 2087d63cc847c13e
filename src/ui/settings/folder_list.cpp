#include "ui/settings/folder_list.h"

#include <QDir>
#include <QKeyEvent>
#include <QStyle>

namespace {

constexpr int nameRole = Qt::UserRole;  // empty for the entry that leads up

}  // namespace

FolderList::FolderList(QWidget* parent) : QListWidget(parent) {
    setUniformItemSizes(true);
    // Not itemActivated, which is a single click on some desktops: a click marks.
    connect(this, &QListWidget::itemDoubleClicked, this, &FolderList::OpenEntry);
}

void FolderList::SetUpText(const QString& text) {
    upText = text;
    if (count() > 0 && item(0)->data(nameRole).toString().isEmpty()) item(0)->setText(text);
}

QSize FolderList::sizeHint() const {
    constexpr int lines = 11;
    constexpr int letters = 52;
    return {fontMetrics().averageCharWidth() * letters, fontMetrics().lineSpacing() * lines};
}

QString FolderList::Path() const {
    const QList<QListWidgetItem*> marked = selectedItems();
    const QString name = marked.isEmpty() ? QString() : marked.first()->data(nameRole).toString();
    return name.isEmpty() ? open : QDir(open).filePath(name);
}

void FolderList::OpenAbove() {
    QDir above(open);
    if (!open.isEmpty() && above.cdUp()) Open(above.absolutePath());
}

bool FolderList::MakeFolder(const QString& name) {
    if (open.isEmpty() || name.isEmpty() || !QDir(open).mkdir(name)) return false;
    Open(QDir(open).filePath(name));
    return true;
}

FolderList::Content FolderList::Read(const QString& folder, bool orAbove) {
    QDir dir(QDir::cleanPath(QDir(QDir::fromNativeSeparators(folder)).absolutePath()));
    // A folder that is gone can still be climbed out of by its name.
    while (orAbove && !dir.isReadable() && !dir.isRoot()) {
        const QString path = dir.absolutePath();
        const QString above = path.left(path.lastIndexOf(u'/'));
        dir.setPath(above.isEmpty() || above.endsWith(u':') ? above + u'/' : above);
    }
    if (!dir.exists() || !dir.isReadable()) return {};
    return {dir.absolutePath(), dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot,
                                              QDir::Name | QDir::IgnoreCase | QDir::LocaleAware)};
}

void FolderList::Open(const QString& folder, bool orAbove) {
    reading = true;
    emit ReadingStarted();
    background.Run([this, folder, orAbove]() -> std::function<void()> {
        const Content content = Read(folder, orAbove);
        return [this, folder, content] { Show(folder, content); };
    });
}

void FolderList::Show(const QString& wanted, const Content& content) {
    reading = false;
    if (content.Folder.isEmpty()) {
        emit Unreadable(wanted);
        return;
    }
    open = content.Folder;
    clear();
    if (!QDir(open).isRoot())
        addItem(new QListWidgetItem(style()->standardIcon(QStyle::SP_FileDialogToParent), upText));
    const QIcon icon = style()->standardIcon(QStyle::SP_DirIcon);
    for (const QString& name : content.Names) {
        auto* entry = new QListWidgetItem(icon, name, this);
        entry->setData(nameRole, name);
    }
    emit Opened();
}

void FolderList::OpenEntry(const QListWidgetItem* entry) {
    if (!entry) return;
    const QString name = entry->data(nameRole).toString();
    if (name.isEmpty())
        OpenAbove();
    else
        Open(QDir(open).filePath(name));
}

void FolderList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        OpenEntry(currentItem());  // and not the window's button
    else if (event->key() == Qt::Key_Backspace)
        OpenAbove();
    else
        QListWidget::keyPressEvent(event);
}
