#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class QTemporaryDir;

namespace tavik {

// Sound files taken out of a package folder by an edit that can still be undone: each is
// kept in a private folder outside the package until the edit is undone (the file goes back)
// or the package is closed (the file goes to the system's trash when the package on disk no
// longer names it, and back into the package when it still does).
class SetAsideFiles {
public:
    SetAsideFiles();
    ~SetAsideFiles();
    SetAsideFiles(const SetAsideFiles&) = delete;
    SetAsideFiles& operator=(const SetAsideFiles&) = delete;

    // Moves the file out of its folder. A missing file raises 53, a file that cannot be moved
    // 75; the file then stays where it is.
    void put(const QString& path);
    // Moves the file back where it was. A file in its place raises 58, a folder that cannot be
    // written 75; the file then stays aside.
    void bringBack(const QString& path);
    bool holds(const QString& path) const { return held_.contains(path); }
    QStringList paths() const { return held_.keys(); }

    // The package closes: a file `stillListed` names goes back, every other one to the trash
    // (deleted where the system has none). A file that cannot go back goes to the trash too,
    // so nothing is lost with the private folder.
    void settle(const std::function<bool(const QString& path)>& stillListed);

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QHash<QString, QString> held_; // original path -> where it is kept
    int next_ = 0;
};

} // namespace tavik
