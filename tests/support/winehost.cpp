#include "support/winehost.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <QUuid>
#include <windows.h>

namespace tavik::test {

QString HostPath(const QString& windowsPath) {
    using UnixName = char* (*)(const wchar_t*);
    // Only Wine's kernel32 has it.
    const auto unixName = reinterpret_cast<UnixName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (!unixName)
        return {};
    const QString native = QDir::toNativeSeparators(windowsPath);
    char* name = unixName(reinterpret_cast<const wchar_t*>(native.utf16()));
    if (!name)
        return {};
    const QString result = QString::fromUtf8(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

QString HostProgram(const QString& name) {
    // The host's root is Wine's drive Z:; Debian keeps every program in /usr/bin.
    return name.startsWith(u'/') ? QStringLiteral("Z:") + QString(name).replace(u'/', u'\\')
                                 : QStringLiteral("Z:\\usr\\bin\\") + name;
}

int RunOnHost(const QString& program, const QStringList& arguments, int waitMs) {
    // Wine starts a host program without a Windows process to wait for: a shell runs it and
    // leaves its exit code in a file, which is waited for instead.
    const QString status = QDir::temp().filePath(
        QStringLiteral("tavik-host-") + QUuid::createUuid().toString(QUuid::WithoutBraces));
    const QString hostStatus = HostPath(status);
    if (hostStatus.isEmpty())
        return -1;
    QStringList shell = {
        QStringLiteral("-c"),
        QStringLiteral("s=$1; shift; \"$@\"; echo $? > \"$s.part\"; mv \"$s.part\" \"$s\""),
        QStringLiteral("sh"), hostStatus, program};
    shell << arguments;
    if (!QProcess::startDetached(HostProgram(QStringLiteral("sh")), shell))
        return -1;
    QElapsedTimer t;
    t.start();
    while (!QFile::exists(status)) {
        if (t.elapsed() > waitMs)
            return -1;
        QThread::msleep(5);
    }
    QFile file(status);
    const int code = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : -1;
    file.close();
    QFile::remove(status);
    return code;
}

} // namespace tavik::test
