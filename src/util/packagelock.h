#pragma once

#include "util/runtimeerror.h"

#include <QString>
#include <memory>

class QLockFile;

namespace tavik {

// How long a writer waits for another one to finish with the same package before it gives up.
inline constexpr int kPackageLockWaitMs = 4000;

// Raised when another program keeps a package's write lock longer than a writer waits. It is
// the runtime's "permission denied" to the editor's error handler; the tool ends with exit 3.
class PackageBusy : public RuntimeError {
public:
    PackageBusy(QString folder, QString holder);
    const QString& folder() const { return folder_; }
    // "tavik-editor (process 1234 on host)", or "" when the holder could not be read.
    const QString& holder() const { return holder_; }

private:
    QString folder_;
    QString holder_;
};

// The one lock every read-modify-write of a package's files holds: the tool's writing verbs and
// the editor's save, removal and imports. It is advisory and kept in the user's own lock folder,
// keyed by the package folder's canonical path, so nothing new ever appears inside the package.
// Taking it again in a process that holds it already just nests.
class PackageWriteLock {
public:
    // Waits up to `waitMs` for the lock; raises PackageBusy naming the holder after that.
    explicit PackageWriteLock(const QString& packageFolder, int waitMs = kPackageLockWaitMs);
    ~PackageWriteLock();
    PackageWriteLock(const PackageWriteLock&) = delete;
    PackageWriteLock& operator=(const PackageWriteLock&) = delete;

private:
    QString key_;
    std::unique_ptr<QLockFile> file_;
};

// The lock file that stands for `packageFolder` (also for a folder not made yet): the same
// file for every spelling of the same folder.
QString PackageLockFile(const QString& packageFolder,
                        const QString& purpose = QStringLiteral("write"));

// Who holds the lock file `lockFile` now, as PackageBusy names it; "" when nobody does.
QString LockHolder(const QString& lockFile);

// The per-user folder that holds the lock files (made when missing), one for each platform.
QString UserLockFolder();

} // namespace tavik
