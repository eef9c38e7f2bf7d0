#pragma once

#include <QString>

namespace tavik {

// Why a file cannot be imported as a sound, in words ("not a sound file"), or empty text for
// a whole sound. The file is decoded to its end, so a file cut short is found too.
QString SoundRefusal(const QString& path);

} // namespace tavik
