#pragma once

#include <QListWidget>

namespace tavik {

// The folder list of a file browser: the folders from the root down to the open one, then
// the open folder's subfolders. Activating an entry opens that folder.
class FolderList : public QListWidget {
    Q_OBJECT
public:
    explicit FolderList(QWidget* parent = nullptr);

    QString Path() const { return path_; }
    // Opens `path`. False when it is no folder that can be read; the list then keeps its own.
    bool SetPath(const QString& path);
    void Refresh();

Q_SIGNALS:
    // The open folder changed.
    void Change();

private:
    QString path_;
};

// The file list of a file browser: the files of one folder that match a pattern, several of
// which can be selected.
class FileList : public QListWidget {
    Q_OBJECT
public:
    explicit FileList(QWidget* parent = nullptr);

    QString Path() const { return path_; }
    void SetPath(const QString& path);
    QString Pattern() const { return pattern_; }
    void SetPattern(const QString& pattern);
    // The name of the current entry, "" when there is none.
    QString FileName() const;
    void Refresh();

private:
    QString path_;
    QString pattern_ = QStringLiteral("*.*");
};

} // namespace tavik
