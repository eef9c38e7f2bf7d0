#include "mciemulator.h"

#include "audio/mcicommand.h"
#include "audio/mcierrors.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <algorithm>

namespace tavik {

namespace {

const QString kWaveAudio = QStringLiteral("waveaudio");
const QString kMpegVideo = QStringLiteral("mpegvideo");

MciEmulator::Reply ok(QString text = {}) {
    return {mci::NoError, std::move(text)};
}
MciEmulator::Reply error(int code) {
    return {code, {}};
}

} // namespace

MciEmulator::MciEmulator(Clock clock, std::shared_ptr<SoundOutput> output)
    : clock_(std::move(clock)), output_(std::move(output)) {
    if (!clock_) {
        auto timer = std::make_shared<QElapsedTimer>();
        timer->start();
        clock_ = [timer] { return timer->elapsed(); };
    }
}

QString MciEmulator::deviceTypeForExtension(const QString& extension) {
    const QString e = extension.toLower();
    if (e == u"wav")
        return kWaveAudio;
    if (e == u"mp3" || e == u"mp2" || e == u"mpa" || e == u"mpg" || e == u"mpeg" || e == u"m1v")
        return kMpegVideo;
    // Every format the import offers plays, also when no device type is named: the media
    // device reads them as it reads MPEG.
    if (e == u"ogg" || e == u"oga" || e == u"flac" || e == u"opus")
        return kMpegVideo;
    return {};
}

bool MciEmulator::isOpen(const QString& alias) const {
    return devices_.contains(alias.toLower());
}

bool MciEmulator::isPlaying(const QString& alias) const {
    const auto it = devices_.constFind(alias.toLower());
    return it != devices_.cend() && it->playing && positionOf(*it) < it->info.lengthMs();
}

qint64 MciEmulator::position(const QString& alias) const {
    const auto it = devices_.constFind(alias.toLower());
    return it == devices_.cend() ? -1 : positionOf(*it);
}

qint64 MciEmulator::positionOf(const Device& device) const {
    if (!device.playing)
        return device.position;
    return std::min(device.info.lengthMs(), device.position + (clock_() - device.startedAt));
}

SoundOutput& MciEmulator::output() {
    if (!output_)
        output_ = createSoundOutput(deviceLog_);
    return *output_;
}

void MciEmulator::drain() {
    if (output_)
        output_->drain();
}

void MciEmulator::settle(Device& device) {
    device.position = positionOf(device);
    if (device.playing)
        output().stop(device.id);
    device.playing = false;
}

void MciEmulator::play(Device& device) {
    settle(device);
    if (device.position >= device.info.lengthMs())
        device.position = device.info.lengthMs();
    device.playing = true;
    device.startedAt = clock_();
    output().start(device.id, device.sound, device.position);
}

MciEmulator::Reply MciEmulator::open(const QString& path, const QString& type,
                                     const QString& alias) {
    if (devices_.contains(alias.toLower()))
        return error(mci::DuplicateAlias);
    // One file information for the name's extension and the file's kind.
    const QFileInfo file(path);
    QString deviceType = type.toLower();
    if (deviceType.isEmpty()) {
        deviceType = deviceTypeForExtension(file.suffix());
        if (deviceType.isEmpty())
            return error(mci::ExtensionNotFound);
    } else if (deviceType != kWaveAudio && deviceType != kMpegVideo) {
        return error(mci::InvalidDeviceName);
    }
    if (!file.isFile())
        return error(mci::FileNotFound);
    const std::optional<SoundInfo> info = probeSound(path);
    // The wave device reads RIFF WAVE files only; the MPEG device whatever can be decoded.
    if (!info || (deviceType == kWaveAudio && !info->wave))
        return error(mci::InvalidFile);
    Device device;
    device.info = *info;
    device.id = nextId_++;
    device.sound = output().prepare(path, *info);
    devices_.insert(alias.toLower(), device);
    return ok(QString::number(device.id));
}

MciEmulator::Reply MciEmulator::status(Device& device, const QStringList& words) {
    const QString item = words.value(0);
    if (item.isEmpty())
        return error(mci::MissingParameter);
    if (item == u"length")
        return ok(QString::number(device.info.lengthMs()));
    if (item == u"position")
        return ok(QString::number(positionOf(device)));
    if (item == u"mode") {
        const bool playing = device.playing && positionOf(device) < device.info.lengthMs();
        return ok(playing ? QStringLiteral("playing") : QStringLiteral("stopped"));
    }
    return error(mci::UnrecognizedKeyword);
}

MciEmulator::Reply MciEmulator::sendOpen(const QString& text, const QString& path,
                                         const QString& inCommand) {
    // The command begins with "open " and the element (without regard to case); every sound a
    // load opens comes here, so the command is read in place.
    const QStringView command(text);
    const QStringView verb = u"open ";
    // The element as it was put in (the program's own commands) matches at once; only
    // another spelling needs the case-blind comparison.
    const QStringView element = command.mid(std::min(verb.size(), command.size()));
    if (inCommand.isEmpty() || !command.startsWith(verb, Qt::CaseInsensitive) ||
        !(element.startsWith(inCommand) || element.startsWith(inCommand, Qt::CaseInsensitive)))
        return send(text);
    // What follows the element is "[type T] alias A".
    const QList<QStringView> words =
        command.mid(verb.size() + inCommand.size()).split(u' ', Qt::SkipEmptyParts);
    QString type;
    QString alias;
    for (qsizetype i = 0; i + 1 < words.size(); i += 2) {
        const QString keyword = words[i].toString().toLower();
        if (keyword == u"type" && type.isEmpty())
            type = words[i + 1].toString();
        else if (keyword == u"alias" && alias.isEmpty())
            alias = words[i + 1].toString();
        else
            return send(text);
    }
    if (words.size() % 2 != 0)
        return send(text);
    return open(path, type, alias.isEmpty() ? path : alias);
}

MciEmulator::Reply MciEmulator::send(const QString& text) {
    const MciCommand command = parseMciCommand(text);
    if (command.verb == u"open" && command.error == 0)
        return open(command.path, command.type, command.device);
    if (command.error != 0)
        return error(command.error);

    if (command.verb == u"close" && command.device.compare(u"all", Qt::CaseInsensitive) == 0) {
        for (Device& device : devices_)
            settle(device);
        devices_.clear();
        return ok();
    }
    static const QStringList known = {"close", "play", "stop", "seek", "set", "status"};
    if (!known.contains(command.verb))
        return error(mci::UnrecognizedCommand);
    const auto it = devices_.find(command.device.toLower());
    if (it == devices_.end())
        return error(mci::InvalidDeviceName);
    Device& device = *it;
    const QStringList& words = command.words;

    if (command.verb == u"close") {
        settle(device);
        devices_.erase(it);
        return ok();
    }
    if (command.verb == u"play") {
        if (!words.isEmpty())
            return error(mci::UnrecognizedKeyword);
        play(device);
        return ok();
    }
    if (command.verb == u"stop") {
        settle(device);
        return ok();
    }
    if (command.verb == u"seek") {
        if (words.size() != 2 || words[0] != u"to")
            return error(mci::MissingParameter);
        settle(device);
        if (words[1] == u"start")
            device.position = 0;
        else if (words[1] == u"end")
            device.position = device.info.lengthMs();
        else
            return error(mci::BadConstant);
        return ok();
    }
    if (command.verb == u"set") {
        if (words.size() == 3 && words[0] == u"time" && words[1] == u"format")
            return (words[2] == u"milliseconds" || words[2] == u"ms") ? ok()
                                                                      : error(mci::BadTimeFormat);
        return error(mci::UnrecognizedKeyword);
    }
    return status(device, words);
}

} // namespace tavik
