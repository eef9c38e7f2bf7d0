#pragma once

#include <QString>

namespace tavik::test {

// A real, tiny file system (tmpfs) mounted on a fresh folder, to meet a full disk as a user
// does. Mounting needs root; when it is not permitted, mounted() is false and whyNot() says
// why, for the test's skip message. Unmounted again when it goes. The Windows build makes it
// through the host system under Wine (smallfilesystem_win.cpp).
class SmallFileSystem {
public:
    SmallFileSystem(const QString& mountPoint, qint64 bytes);
    ~SmallFileSystem();
    SmallFileSystem(const SmallFileSystem&) = delete;
    SmallFileSystem& operator=(const SmallFileSystem&) = delete;

    bool mounted() const { return mounted_; }
    const QString& whyNot() const { return whyNot_; }
    const QString& path() const { return path_; }

    // Takes every free byte that is left with a file of its own (outside what the test looks
    // at when it is given another name); returns how many bytes that took.
    qint64 fill(const QString& fillerName = QStringLiteral(".filler"));

    // Mounts it again read-only, as a disk that may no longer be written; false when that
    // is not permitted.
    bool makeReadOnly();

private:
    QString path_;
    QString hostPath_; // where the host system mounted it, when that is another spelling
    bool mounted_ = false;
    QString whyNot_;
};

} // namespace tavik::test
