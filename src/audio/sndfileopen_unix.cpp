#include "audio/sndfileopen.h"

#include <QFile>

namespace tavik {

SNDFILE* OpenSndFile(const QString& path, int mode, SF_INFO* info) {
    return sf_open(QFile::encodeName(path).constData(), mode, info);
}

} // namespace tavik
