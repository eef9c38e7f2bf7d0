#include "fileops.h"

#include "runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

namespace tavik {

bool FileCheck(const QString& path, bool deleteEmpty) {
    if (path.isEmpty())
        return false;
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile())
        return false;
    if (info.size() >= 1)
        return true;
    if (deleteEmpty)
        QFile::remove(path);
    return false;
}

bool WildcardMatch(const QString& pattern, const QString& name) {
    // Iterative matcher with one backtrack point: linear in practice, never exponential.
    qsizetype p = 0, n = 0, starP = -1, starN = 0;
    while (n < name.size()) {
        if (p < pattern.size() &&
            (pattern[p] == u'?' ||
             (pattern[p] != u'*' && pattern[p].toCaseFolded() == name[n].toCaseFolded()))) {
            ++p;
            ++n;
        } else if (p < pattern.size() && pattern[p] == u'*') {
            starP = p++;
            starN = n;
        } else if (starP >= 0) {
            p = starP + 1;
            n = ++starN;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

QStringList ListFiles(const QString& folder) {
    QDir dir(folder);
    if (folder.isEmpty() || !dir.exists())
        return {};
    QStringList names = dir.entryList(QDir::Files | QDir::NoSymLinks, QDir::NoSort);
    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
    return names;
}

QString DirFirst(const QString& folder, const QString& pattern) {
    for (const QString& name : ListFiles(folder)) {
        if (WildcardMatch(pattern, name))
            return name;
    }
    return {};
}

qint64 FileLen(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists() || info.isDir())
        throw RuntimeError(rt::FileNotFound);
    return info.size();
}

void FileCopy(const QString& source, const QString& destination) {
    if (!QFileInfo(source).isFile())
        throw RuntimeError(rt::FileNotFound);
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        throw RuntimeError(rt::PathFileAccess);
    WriteFileAtomically(destination, in.readAll());
}

void Kill(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists() || info.isDir())
        throw RuntimeError(rt::FileNotFound);
    if (!QFile::remove(path))
        throw RuntimeError(rt::PathFileAccess);
}

void MkDir(const QString& path) {
    const QFileInfo info(path);
    if (info.exists())
        throw RuntimeError(rt::PathFileAccess);
    if (!QFileInfo(info.absolutePath()).isDir())
        throw RuntimeError(rt::PathNotFound);
    if (!QDir().mkdir(path))
        throw RuntimeError(rt::PathFileAccess);
}

void RmDir(const QString& path) {
    if (!QFileInfo(path).isDir())
        throw RuntimeError(rt::PathNotFound);
    if (!QDir().rmdir(path))
        throw RuntimeError(rt::PathFileAccess);
}

void WriteFileAtomically(const QString& path, const QByteArray& bytes) {
    const QFileInfo info(path);
    if (!QFileInfo(info.absolutePath()).isDir())
        throw RuntimeError(rt::PathNotFound);
    if (info.isDir())
        throw RuntimeError(rt::PathFileAccess);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw RuntimeError(rt::PathFileAccess);
    if (file.write(bytes) != bytes.size() || !file.commit())
        throw RuntimeError(rt::PathFileAccess);
}

} // namespace tavik
