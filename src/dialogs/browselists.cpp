#include "dialogs/browselists.h"

#include "dialogs/filebrowsing.h"

#include <QDir>
#include <QFileInfo>

namespace tavik {

namespace {

constexpr int kPathRole = Qt::UserRole;
constexpr int kIndentStep = 2;

} // namespace

FolderList::FolderList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QListWidget::itemActivated, this,
            [this](QListWidgetItem* item) { SetPath(item->data(kPathRole).toString()); });
}

bool FolderList::SetPath(const QString& path) {
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isDir() || !info.isReadable() || !QDir(path).isReadable())
        return false;
    const QString clean = QDir::toNativeSeparators(QDir::cleanPath(info.absoluteFilePath()));
    const bool changed = clean != path_;
    path_ = clean;
    Refresh();
    if (changed)
        Q_EMIT Change();
    return true;
}

void FolderList::Refresh() {
    clear();
    if (path_.isEmpty())
        return;
    // The chain of folders from the root down to the open one.
    QStringList chain;
    for (QDir dir(path_);;) {
        chain.prepend(QDir::toNativeSeparators(dir.absolutePath()));
        if (dir.isRoot() || !dir.cdUp())
            break;
    }
    int depth = 0;
    for (const QString& folder : chain) {
        const QString name =
            QDir(folder).isRoot() ? QDir::toNativeSeparators(folder) : QFileInfo(folder).fileName();
        auto* item = new QListWidgetItem(QString(depth * kIndentStep, u' ') + name, this);
        item->setData(kPathRole, folder);
        ++depth;
    }
    setCurrentRow(count() - 1);
    for (const QString& name : ListFolders(path_)) {
        auto* item = new QListWidgetItem(QString(depth * kIndentStep, u' ') + name, this);
        item->setData(kPathRole, JoinFolderFile(path_, name));
    }
}

FileList::FileList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::ExtendedSelection);
}

void FileList::SetPath(const QString& path) {
    path_ = path;
    Refresh();
}

void FileList::SetPattern(const QString& pattern) {
    pattern_ = pattern;
    Refresh();
}

QString FileList::FileName() const {
    const QListWidgetItem* item = currentItem();
    return item ? item->text() : QString();
}

void FileList::Refresh() {
    clear();
    addItems(ListPatternFiles(path_, pattern_));
}

} // namespace tavik
