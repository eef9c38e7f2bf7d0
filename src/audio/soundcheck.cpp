#include "soundcheck.h"

#include <QFile>
#include <QFileInfo>
#include <sndfile.h>
#include <vector>

namespace tavik {

namespace {

// libsndfile notes a chunk that claims more bytes than the file holds ("data : 44100 (should
// be 22028)"): a WAVE file cut short, which it would otherwise read as a shorter sound.
bool chunkLongerThanFile(SNDFILE* file) {
    std::vector<char> log(16384);
    sf_command(file, SFC_GET_LOG_INFO, log.data(), static_cast<int>(log.size()));
    const QString text = QString::fromLatin1(log.data());
    for (const QString& line : text.split(u'\n')) {
        if (line.startsWith(QStringLiteral("data ")) && line.contains(QStringLiteral("should be")))
            return true;
    }
    return false;
}

} // namespace

QString SoundRefusal(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        return QStringLiteral("the file does not exist");
    if (!info.isFile())
        return QStringLiteral("not a file");
    if (info.size() == 0)
        return QStringLiteral("the file is empty");
    SF_INFO format{};
    SNDFILE* file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &format);
    if (file == nullptr)
        return QStringLiteral("not a sound file (%1)")
            .arg(QString::fromLatin1(sf_strerror(nullptr)));
    QString problem;
    if (format.channels <= 0 || format.channels > 64 || format.samplerate <= 0) {
        problem = QStringLiteral("not a sound file (no channels or rate)");
    } else if (chunkLongerThanFile(file)) {
        problem = QStringLiteral("the file is cut short: it ends before its sound does");
    } else {
        std::vector<float> block(static_cast<std::size_t>(4096 * format.channels));
        sf_count_t decoded = 0;
        for (sf_count_t got = 0; (got = sf_readf_float(file, block.data(), 4096)) > 0;)
            decoded += got;
        if (decoded == 0)
            problem = QStringLiteral("the file holds no sound");
        else if (format.frames > 0 && decoded < format.frames)
            problem = QStringLiteral("the file is cut short: it ends before its sound does");
    }
    sf_close(file);
    return problem;
}

} // namespace tavik
