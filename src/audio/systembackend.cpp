#include "systembackend.h"

#include "audio/emulatorbackend.h"
#include "util/cp1252.h"

#ifdef Q_OS_WIN
#include <mmsystem.h>
#include <windows.h>
#endif

namespace tavik {

#ifdef Q_OS_WIN
namespace {

// The real command-string interface, with ANSI texts as the program always sent them.
class WinmmBackend : public MciBackend {
public:
    Result sendString(const QString& command, int replyLength, qintptr callbackWindow) override {
        const QByteArray text = toCp1252(command);
        QByteArray reply(qMax(replyLength, 1), '\0');
        const MCIERROR code =
            mciSendStringA(text.constData(), replyLength > 0 ? reply.data() : nullptr,
                           static_cast<UINT>(replyLength), reinterpret_cast<HWND>(callbackWindow));
        const qsizetype nul = reply.indexOf('\0');
        return {static_cast<int>(code), fromCp1252(nul < 0 ? reply : reply.left(nul)).trimmed()};
    }
    QString errorString(int code) override {
        char buffer[256] = {};
        mciGetErrorStringA(static_cast<MCIERROR>(code), buffer, sizeof buffer);
        return fromCp1252(QByteArray(buffer));
    }
};

} // namespace
#endif

std::unique_ptr<MciBackend> createSystemMciBackend(bool sound) {
#ifdef Q_OS_WIN
    Q_UNUSED(sound);
    return std::make_unique<WinmmBackend>();
#else
    if (!sound)
        return std::make_unique<EmulatorBackend>(MciEmulator::Clock{},
                                                 std::make_shared<NullSoundOutput>());
    return std::make_unique<EmulatorBackend>();
#endif
}

} // namespace tavik
