#include "winmmbackend.h"

#include "util/cp1252.h"

// windows.h first: mmsystem.h needs its types.
#include <windows.h>

#include <mmsystem.h>

namespace tavik {

MciBackend::Result WinmmBackend::sendString(const QString& command, int replyLength,
                                            qintptr callbackWindow) {
    const QByteArray text = toCp1252(command);
    QByteArray reply(qMax(replyLength, 1), '\0');
    const MCIERROR code =
        mciSendStringA(text.constData(), replyLength > 0 ? reply.data() : nullptr,
                       static_cast<UINT>(replyLength), reinterpret_cast<HWND>(callbackWindow));
    const qsizetype nul = reply.indexOf('\0');
    return {static_cast<int>(code), fromCp1252(nul < 0 ? reply : reply.left(nul)).trimmed()};
}

QString WinmmBackend::errorString(int code) {
    char buffer[256] = {};
    mciGetErrorStringA(static_cast<MCIERROR>(code), buffer, sizeof buffer);
    return fromCp1252(QByteArray(buffer));
}

} // namespace tavik
