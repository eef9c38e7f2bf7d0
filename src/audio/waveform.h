#pragma once

#include <QList>
#include <QString>

namespace tavik {

// The outline of a sound for drawing: the loudest sample (0 to 1) of each `bucketMs` of it,
// mixed to one channel. Empty when the file cannot be read as sound.
QList<float> WaveformPeaks(const QString& path, int bucketMs);

} // namespace tavik
