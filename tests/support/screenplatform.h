#pragma once

#include <QByteArray>
#include <QString>

namespace tavik::test {

// Qt's platform for windows on a real screen here: "xcb" on an X server, "windows" on
// Windows (under Wine, that is Wine's X11 driver on the same server).
QByteArray RealScreenPlatform();

// The name a picture of this system's windows is kept under in artifacts/: the Windows build's
// pictures are "windows-" and the name, beside the Linux build's.
QString ArtifactName(const QString& name);

} // namespace tavik::test
