#pragma once

#include <QTemporaryDir>
#include <QtGlobal>

namespace tavik::test {

// A cache folder of the test run's own, so that measurements kept there neither come from the
// user's cache nor land in it.
class PrivateCacheFolder {
public:
    // TAVIK_CACHE as well: on Windows the user's cache folder is the profile's, shared by every
    // test process at once.
    PrivateCacheFolder() {
        qputenv("XDG_CACHE_HOME", dir_.path().toLocal8Bit());
        qputenv("TAVIK_CACHE", (dir_.path() + QStringLiteral("/tavik")).toLocal8Bit());
    }
    QString path() const { return dir_.path(); }

private:
    QTemporaryDir dir_;
};

} // namespace tavik::test
