#include "audio/loudnesscache.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTextStream>

namespace tavik {

namespace {

QString keyOf(const QString& path) {
    const QFileInfo info(path);
    return info.absoluteFilePath() + u'\t' + QString::number(info.size()) + u'\t' +
           QString::number(info.lastModified().toMSecsSinceEpoch());
}

constexpr char kNoLoudness[] = "-";

} // namespace

LoudnessCache::LoudnessCache() : LoudnessCache(defaultFile()) {}

LoudnessCache::LoudnessCache(QString file) : file_(std::move(file)) {}

LoudnessCache::~LoudnessCache() {
    save();
}

QString LoudnessCache::defaultFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/tavik/loudness.tsv");
}

void LoudnessCache::load() {
    loaded_ = true;
    QFile in(file_);
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    // Lines of path, size, time, loudness ("-" for silence) and peak, split at tabs; a line
    // that does not read so is skipped and measured again.
    QTextStream stream(&in);
    stream.setEncoding(QStringConverter::Utf8);
    while (!stream.atEnd()) {
        const QStringList fields = stream.readLine().split(u'\t');
        if (fields.size() != 5)
            continue;
        bool okPeak = false;
        Loudness l;
        l.truePeakDbtp = fields[4].toDouble(&okPeak);
        if (!okPeak)
            continue;
        if (fields[3] != QLatin1String(kNoLoudness)) {
            bool okLufs = false;
            l.integratedLufs = fields[3].toDouble(&okLufs);
            if (!okLufs)
                continue;
        }
        entries_.insert(fields.mid(0, 3).join(u'\t'), l);
    }
}

std::optional<Loudness> LoudnessCache::loudnessOf(const QString& path) {
    const QString key = keyOf(path);
    // A name with a tab or a line break would split its line in the file and could pose as
    // another file's line: such a sound is measured every time instead.
    const bool storable = !key.contains(u'\n') && !key.contains(u'\r') && key.count(u'\t') == 2;
    {
        const QMutexLocker lock(&mutex_);
        if (!loaded_)
            load();
        const auto found = entries_.constFind(key);
        if (found != entries_.cend())
            return *found;
    }
    const std::optional<Loudness> measured = MeasureLoudness(path);
    ++measured_;
    if (measured && storable) {
        const QMutexLocker lock(&mutex_);
        entries_.insert(key, *measured);
        dirty_ = true;
    }
    return measured;
}

void LoudnessCache::save() {
    const QMutexLocker lock(&mutex_);
    if (!dirty_ || file_.isEmpty())
        return;
    QDir().mkpath(QFileInfo(file_).absolutePath());
    QSaveFile out(file_);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Text))
        return; // a cache that cannot be written only costs measuring again
    QTextStream stream(&out);
    stream.setEncoding(QStringConverter::Utf8);
    for (auto it = entries_.cbegin(); it != entries_.cend(); ++it) {
        stream << it.key() << u'\t'
               << (it->integratedLufs ? QString::number(*it->integratedLufs, 'g', 10)
                                      : QString::fromLatin1(kNoLoudness))
               << u'\t' << QString::number(it->truePeakDbtp, 'g', 10) << u'\n';
    }
    stream.flush();
    if (out.commit())
        dirty_ = false;
}

} // namespace tavik
