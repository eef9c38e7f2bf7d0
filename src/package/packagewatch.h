#pragma once

#include "package/packagedisk.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

class QFileSystemWatcher;
class QLockFile;
class QTimer;

namespace tavik {

// Starts `timer` anew at every change `watcher` reports, so that it times out once the changes
// have settled for `settleMs` (a writer often touches several files in a row).
void SettleAfterChanges(QFileSystemWatcher& watcher, QTimer& timer, int settleMs);

// Follows the files of the package a window has open: remembers what they were when it loaded
// them, watches the folder and the files for changes by other programs, and holds the
// package's "open" lock, so that a second editor on the same package learns who has it open.
class PackageWatch : public QObject {
    Q_OBJECT
public:
    explicit PackageWatch(QObject* parent = nullptr);
    ~PackageWatch() override;

    // Starts following `packageFolder` as it is now (what a load is about to read). Returns who
    // else has the package open, "" when nobody does or it is the same package as before.
    QString follow(const QString& packageFolder);
    const QString& folder() const { return folder_; }

    // The followed files that changed on disk since they were loaded or written by us.
    QStringList changes() const;
    // The window showed `changes()`: the same state is not announced again.
    void markShown();
    // Whether the changes now are the ones already shown.
    bool alreadyShown() const;
    // Files the window itself just wrote or removed, or changes it has nothing to do with.
    void noteOwnWrite(const QStringList& names);
    // The changes that concern the list: the index and the sounds, not the service files.
    QStringList listChanges() const;

    // How long the watch waits after the last change before it tells (a writer often touches
    // several files in a row).
    static constexpr int kSettleMs = 200;

Q_SIGNALS:
    // Files changed by another program; emitted once they have settled.
    void changedOnDisk(const QStringList& names);

private:
    void rewatch();
    void settle();

    QString folder_;
    PackageDiskState loaded_;
    PackageDiskState shown_;
    QFileSystemWatcher* watcher_;
    QTimer* settleTimer_;
    std::unique_ptr<QLockFile> openLock_;
};

} // namespace tavik
