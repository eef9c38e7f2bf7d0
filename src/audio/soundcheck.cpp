#include "soundcheck.h"

#include "audio/sndfileopen.h"

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

SoundProblem FindSoundProblem(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        return SoundProblem::Missing;
    if (!info.isFile())
        return SoundProblem::NotAFile;
    if (info.size() == 0)
        return SoundProblem::Empty;
    SF_INFO format{};
    SNDFILE* file = OpenSndFile(path, SFM_READ, &format);
    if (file == nullptr)
        return SoundProblem::NotSound;
    SoundProblem problem = SoundProblem::None;
    if (format.channels <= 0 || format.channels > 64 || format.samplerate <= 0) {
        problem = SoundProblem::NotSound;
    } else if (chunkLongerThanFile(file)) {
        problem = SoundProblem::Cut;
    } else {
        std::vector<float> block(static_cast<std::size_t>(4096 * format.channels));
        sf_count_t decoded = 0;
        for (sf_count_t got = 0; (got = sf_readf_float(file, block.data(), 4096)) > 0;)
            decoded += got;
        if (decoded == 0)
            problem = SoundProblem::NoSound;
        else if (format.frames > 0 && decoded < format.frames)
            problem = SoundProblem::Cut;
    }
    sf_close(file);
    return problem;
}

QString SoundProblemText(SoundProblem problem) {
    switch (problem) {
    case SoundProblem::None:
        return {};
    case SoundProblem::Missing:
        return QStringLiteral("the file does not exist");
    case SoundProblem::NotAFile:
        return QStringLiteral("not a file");
    case SoundProblem::Empty:
        return QStringLiteral("the file is empty");
    case SoundProblem::NotSound:
        return QStringLiteral("not a sound file");
    case SoundProblem::NoSound:
        return QStringLiteral("the file holds no sound");
    case SoundProblem::Cut:
        return QStringLiteral("the file is cut short: it ends before its sound does");
    }
    return {};
}

} // namespace tavik
