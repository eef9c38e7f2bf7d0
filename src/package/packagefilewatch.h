#pragma once

#include "package/packagedisk.h"

#include <QObject>
#include <QString>

class QFileSystemWatcher;
class QTimer;

namespace tavik {

// Follows one file of a package that a window has open on its own (a service file): remembers
// what it was when the window read or wrote it, and tells when another program changes,
// replaces or removes it.
class PackageFileWatch : public QObject {
    Q_OBJECT
public:
    explicit PackageFileWatch(QObject* parent = nullptr);

    // Starts following `path` as it is on disk now; "" follows nothing.
    void follow(const QString& path);
    const QString& path() const { return path_; }

    // The followed file as it is now, from one reading of it: whether its bytes, or its being
    // there at all, differ from what the window read or wrote (the same bytes written again are
    // no change), whether it is there, and whether this state was shown already.
    struct Look {
        bool changed = false;
        bool exists = false;
        bool alreadyShown = false;
    };
    Look look() const;
    bool changed() const { return look().changed; }
    // The window showed the change: the same state is not announced again.
    void markShown();

    static constexpr int kSettleMs = 200;

Q_SIGNALS:
    // The followed file changed; emitted once it has settled, and once per state.
    void changedOnDisk();

private:
    PackageFileState now() const;
    void rewatch();
    void settle();

    QString path_;
    PackageFileState loaded_;
    PackageFileState shown_;
    bool hasShown_ = false;
    QFileSystemWatcher* watcher_;
    QTimer* settleTimer_;
};

} // namespace tavik
