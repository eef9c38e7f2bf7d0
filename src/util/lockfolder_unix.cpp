#include "packagelock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace tavik {

namespace {

// A folder only this user can write to, so no one else can plant or take away a lock.
bool isOwnPrivateFolder(const QString& path) {
    struct stat st {};
    return ::lstat(QFile::encodeName(path).constData(), &st) == 0 && S_ISDIR(st.st_mode) &&
           st.st_uid == ::getuid() && (st.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool makePrivateFolder(const QString& path) {
    if (::mkdir(QFile::encodeName(path).constData(), 0700) != 0 && errno != EEXIST)
        return false;
    return isOwnPrivateFolder(path);
}

} // namespace

QString UserLockFolder() {
    // The session's runtime folder, where it is set; otherwise one of our own in the temporary
    // folder, or beside the user's cache when someone else took that name.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && isOwnPrivateFolder(runtime)) {
        const QString folder = runtime + QStringLiteral("/tavik");
        if (makePrivateFolder(folder))
            return folder;
    }
    const QString temp = QDir::tempPath() + QStringLiteral("/tavik-locks-%1").arg(::getuid());
    if (makePrivateFolder(temp))
        return temp;
    const QString home = QDir::homePath() + QStringLiteral("/.tavik-locks");
    makePrivateFolder(home);
    return home;
}

} // namespace tavik
