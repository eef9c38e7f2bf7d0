#pragma once

#include <QSaveFile>
#include <QStringList>
#include <optional>

class QFile;

namespace tavik {

// The program's one file check: a file is present when it is at least one byte long. With
// `deleteEmpty` a zero-length file is deleted and counted absent. Any error counts as absent.
bool FileCheck(const QString& path, bool deleteEmpty = false);

// Wildcard match of a file name against a pattern of "*" and "?", without regard to case,
// as the directory search matches names.
bool WildcardMatch(const QString& pattern, const QString& name);

// Compares two names without regard to case, as QString::compare(Qt::CaseInsensitive) does
// (the sign of its result), character by character without a folded copy of either.
int CompareWithoutCase(QStringView a, QStringView b);

// The plain files of a folder in the order the directory search lists them (names compared
// without regard to case). Folders, links and hidden files are left out.
QStringList ListFiles(const QString& folder);

// The first plain file in `folder` whose name matches `pattern`, in the order the directory
// search lists them (names compared without regard to case); "" when none does. Folders,
// links and hidden files are never found.
QString DirFirst(const QString& folder, const QString& pattern);

// The runtime's file statements. Each raises the runtime's error for what went wrong
// (53 file not found, 75 path/file access error, 76 path not found).
qint64 FileLen(const QString& path);
// FileCopy writes like WriteFileAtomically: a failed copy leaves no partial destination.
void FileCopy(const QString& source, const QString& destination);
void Kill(const QString& path);
void MkDir(const QString& path);
void RmDir(const QString& path);

// Whether a name as the system passed it (a program argument, bytes) survives the trip through
// a QString: on Unix a name that is not valid in the locale's encoding (a byte 0xFF in UTF-8)
// would come back as other bytes, and so open or make another file. Always true on Windows,
// whose names arrive as UTF-16.
bool IsFaithfulName(const QByteArray& native);

// Opens `file` for reading only when it names a plain file (through links). A pipe, socket or
// device named like a package file is refused without waiting for a writer that never comes.
bool OpenToRead(QFile& file);

// Whether `path` itself is a symbolic link (on Windows also a junction), whatever it points
// to and whether that exists. Nothing is ever written through one.
bool IsLink(const QString& path);

// The names of the plain files and of the links of a folder, dangling links included: every
// name a new file could collide with.
QStringList ListFilesAndLinks(const QString& folder);

// Writes `bytes` as the whole new content of `path` through a temporary file and a rename.
// Every write, the flush and the sync are checked before the rename, so a failure leaves the
// old file byte for byte and no temporary file behind. Raises 76 when the folder is missing,
// 75 when `path` is a folder or a link, and otherwise the runtime's error for what the system
// answered (61 for a full disk).
void WriteFileAtomically(const QString& path, const QByteArray& bytes);

// Appends `bytes` to `path`, creating it when missing. All or nothing: a failed write cuts
// the file back to its old length. Raises the same errors as WriteFileAtomically.
void AppendToFile(const QString& path, const QByteArray& bytes);

// A seam for tests: makes one of the coming checked writes (WriteFileAtomically, AppendToFile,
// FileCopy) fail as if the system had answered `systemError` at `step`. At the write step
// half of the first block reaches the disk first, as on a disk that fills up mid-write.
enum class WriteStep { Open, Write, Sync, Commit };
struct WriteFault {
    int call = 1; // 1 is the next checked write, 2 the one after it, ...
    WriteStep step = WriteStep::Write;
    int systemError = 0;
};
void InjectWriteFault(const WriteFault& fault);
void ClearWriteFault();

// WriteFileAtomically for content made piece by piece, so a large file never sits in memory
// whole: the pieces go to a temporary beside `path`, and commit() syncs and renames it over
// the old file. Dropped without commit(), the temporary goes and the old file stays. Raises
// what WriteFileAtomically raises.
class AtomicFileWriter {
public:
    explicit AtomicFileWriter(const QString& path);
    ~AtomicFileWriter();
    AtomicFileWriter(const AtomicFileWriter&) = delete;
    AtomicFileWriter& operator=(const AtomicFileWriter&) = delete;

    void write(const char* data, qint64 size);
    void commit();

private:
    QSaveFile file_;
    std::optional<WriteFault> fault_;
};

} // namespace tavik
