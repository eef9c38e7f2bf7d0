#pragma once

#include <QTemporaryDir>
#include <QtGlobal>

namespace tavik::test {

// A cache folder of the test run's own, so that measurements kept there neither come from the
// user's cache nor land in it.
class PrivateCacheFolder {
public:
    PrivateCacheFolder() { qputenv("XDG_CACHE_HOME", dir_.path().toLocal8Bit()); }
    QString path() const { return dir_.path(); }

private:
    QTemporaryDir dir_;
};

} // namespace tavik::test
