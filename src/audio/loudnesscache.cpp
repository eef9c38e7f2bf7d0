#include "audio/loudnesscache.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTextStream>
#include <charconv>

namespace tavik {

namespace {

QString keyOf(const QString& path) {
    const QFileInfo info(path);
    return info.absoluteFilePath() + u'\t' + QString::number(info.size()) + u'\t' +
           QString::number(info.lastModified().toMSecsSinceEpoch());
}

constexpr char kNoLoudness[] = "-";

// A figure as the cache writes it ("-23.40123457": a sign, digits and a point) read straight
// from its characters; any other spelling goes to QString::toDouble, which decides about it.
// Both give the nearest double, so a cache of thousands of sounds is read the same, only
// faster.
double readFigure(const QString& text, bool* ok) {
    constexpr qsizetype kLongest = 24;
    const qsizetype n = text.size();
    char ascii[kLongest];
    bool plain = n > 0 && n <= kLongest;
    bool point = false;
    for (qsizetype i = 0; plain && i < n; ++i) {
        const char16_t c = text[i].unicode();
        const bool digit = c >= u'0' && c <= u'9';
        const bool sign = c == u'-' && i == 0;
        const bool dot = c == u'.' && !point && i > 0 && text[i - 1].isDigit() && i + 1 < n;
        point = point || dot;
        plain = digit || sign || dot;
        ascii[i] = static_cast<char>(c);
    }
    if (plain && text[n - 1].isDigit()) {
        double value = 0;
        const auto [end, error] = std::from_chars(ascii, ascii + n, value);
        if (error == std::errc() && end == ascii + n) {
            *ok = true;
            return value;
        }
    }
    return text.toDouble(ok);
}

} // namespace

LoudnessCache::LoudnessCache() : LoudnessCache(defaultFile()) {}

LoudnessCache::LoudnessCache(QString file) : file_(std::move(file)) {}

LoudnessCache::~LoudnessCache() {
    save();
}

QString LoudnessCache::defaultFile() {
    // TAVIK_CACHE moves the cache where the user's cache folder cannot be chosen per process
    // (Windows keeps it in the profile, whatever the environment says).
    const QString chosen = qEnvironmentVariable("TAVIK_CACHE");
    if (!chosen.isEmpty())
        return chosen + QStringLiteral("/loudness.tsv");
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
        l.truePeakDbtp = readFigure(fields[4], &okPeak);
        if (!okPeak)
            continue;
        if (fields[3] != QLatin1String(kNoLoudness)) {
            bool okLufs = false;
            l.integratedLufs = readFigure(fields[3], &okLufs);
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
