#include "app/setasidefiles.h"

#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace tavik {

namespace {

constexpr int kFileAlreadyExists = 58;

} // namespace

SetAsideFiles::SetAsideFiles() = default;

SetAsideFiles::~SetAsideFiles() {
    // Whatever is still held when the owner goes without settling goes back: losing a sound
    // is worse than an extra file.
    settle([](const QString&) { return true; });
}

void SetAsideFiles::put(const QString& path) {
    const QFileInfo info(path);
    if (path.isEmpty() || !info.isFile())
        throw RuntimeError(rt::FileNotFound);
    if (!folder_) {
        folder_ = std::make_unique<QTemporaryDir>(QDir::tempPath() +
                                                  QStringLiteral("/tavik-undo-XXXXXX"));
        if (!folder_->isValid()) {
            folder_.reset();
            throw RuntimeError(rt::PathFileAccess);
        }
    }
    // One folder each, so that the file keeps its own name, in the trash too.
    const QString slot = folder_->filePath(QString::number(next_++));
    if (!QDir().mkpath(slot))
        throw RuntimeError(rt::PathFileAccess);
    const QString kept = slot + u'/' + info.fileName();
    // A rename where both lie on one disk, else a copy and a removal of the original.
    if (!QFile::rename(path, kept))
        throw RuntimeError(rt::PathFileAccess);
    held_.insert(path, kept);
}

void SetAsideFiles::bringBack(const QString& path) {
    const auto it = held_.constFind(path);
    if (it == held_.cend())
        throw RuntimeError(rt::FileNotFound);
    if (QFileInfo::exists(path))
        throw RuntimeError(kFileAlreadyExists);
    if (!QFile::rename(it.value(), path))
        throw RuntimeError(rt::PathFileAccess);
    held_.erase(it);
}

void SetAsideFiles::settle(const std::function<bool(const QString& path)>& stillListed) {
    const QStringList originals = held_.keys();
    for (const QString& path : originals) {
        if (stillListed(path)) {
            try {
                bringBack(path);
                continue;
            } catch (const RuntimeError&) {
            }
        }
        const QString kept = held_.take(path);
        if (!QFile::moveToTrash(kept))
            QFile::remove(kept);
    }
}

} // namespace tavik
