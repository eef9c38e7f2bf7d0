#pragma once

#include <QByteArray>
#include <QString>

namespace tavik::test {

// Whether this system takes names such as "CON" or "aux.wav" for devices (Windows does).
bool SystemHasDeviceNames();

// Puts a plain file with `bytes` under `name` in `folder`, also where the system would take the
// name for a device: a Windows program under Wine has the host make it. False when it cannot.
bool PutFileNamedLikeADevice(const QString& folder, const QString& name, const QByteArray& bytes);

// Removes such a file again (a Windows program cannot: the name is the device to it).
void RemoveFileNamedLikeADevice(const QString& folder, const QString& name);

} // namespace tavik::test
