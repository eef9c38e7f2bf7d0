#pragma once

#include <QByteArray>
#include <QString>

namespace tavik {

// What a file looked like on disk at one moment: enough to tell that it was written since.
struct FileStamp {
    bool exists = false;
    qint64 size = 0;
    qint64 modifiedNs = 0;
    qint64 changedNs = 0;
    quint64 identity = 0;

    bool operator==(const FileStamp&) const = default;
};

// The stamp of the file `path` names now (links followed); `exists` false when there is none.
FileStamp StampOf(const QString& path);

// The stamps of many files of one folder, each looked up from the folder rather than from the
// root of the file system: a package's thousands of sounds are stamped on every load and save.
// of(name) is StampOf(folder + separator + name) for a plain name.
class FolderStamps {
public:
    explicit FolderStamps(const QString& folder);
    ~FolderStamps();
    FolderStamps(const FolderStamps&) = delete;
    FolderStamps& operator=(const FolderStamps&) = delete;

    FileStamp of(const QString& name) const;

private:
    QString folder_;
    int fd_ = -1; // the folder held open, where the system looks names up from one
};

// A whole file read into memory as one consistent copy: another program that rewrites the file
// while it is read makes the read start again, so a reader never parses half of one version and
// half of another, and never faults on a file that shrinks under it.
struct WholeRead {
    enum class Status { Read, CannotOpen, KeptChanging };
    Status status = Status::CannotOpen;
    QByteArray bytes;
    FileStamp stamp;

    bool ok() const { return status == Status::Read; }
};

// Reads `path` whole. Opened as OpenToRead opens (plain files only); a file that changes during
// every one of a few attempts comes back as KeptChanging with no bytes. `maxBytes` caps what is
// read (a longer file is read up to it), for readers that only need the start.
WholeRead ReadWholeFile(const QString& path, qint64 maxBytes = -1);

} // namespace tavik
