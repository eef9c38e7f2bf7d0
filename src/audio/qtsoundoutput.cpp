#include "audio/mixer.h"
#include "audio/soundoutput.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QCoreApplication>
#include <QIODevice>
#include <QMediaDevices>

namespace tavik {

namespace {

// The stream the sink pulls: whatever the mixer makes of the voices playing now.
class MixerDevice : public QIODevice {
public:
    MixerDevice(Mixer& mixer, int channels) : mixer_(mixer), channels_(channels) {
        open(QIODevice::ReadOnly);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return 4096 + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        const qint64 frameBytes = static_cast<qint64>(sizeof(qint16)) * channels_;
        const qint64 frames = maxSize / frameBytes;
        mixer_.mix(reinterpret_cast<qint16*>(data), frames);
        return frames * frameBytes;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    Mixer& mixer_;
    int channels_;
};

class QtSoundOutput : public SoundOutput {
public:
    explicit QtSoundOutput(const QAudioDevice& device) : device_(device) {
        format_.setSampleRate(44100);
        format_.setChannelCount(2);
        format_.setSampleFormat(QAudioFormat::Int16);
        if (!device_.isFormatSupported(format_))
            format_ = device_.preferredFormat();
        format_.setSampleFormat(QAudioFormat::Int16);
        mixer_ = std::make_unique<Mixer>(format_.sampleRate(), format_.channelCount());
    }

    void start(int voice, std::shared_ptr<const DecodedSound> sound, qint64 fromMs) override {
        mixer_->start(voice, std::move(sound), fromMs);
        if (!sink_) {
            // The sink runs for the rest of the program; silence costs nothing to mix.
            stream_ = std::make_unique<MixerDevice>(*mixer_, format_.channelCount());
            sink_ = std::make_unique<QAudioSink>(device_, format_);
            sink_->start(stream_.get());
        }
    }
    void stop(int voice) override { mixer_->stop(voice); }

private:
    QAudioDevice device_;
    QAudioFormat format_;
    std::unique_ptr<Mixer> mixer_;
    std::unique_ptr<MixerDevice> stream_;
    std::unique_ptr<QAudioSink> sink_;
};

} // namespace

std::shared_ptr<SoundOutput> createSoundOutput() {
    if (qgetenv("TAVIK_AUDIO") == "null" || !QCoreApplication::instance())
        return std::make_shared<NullSoundOutput>();
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull())
        return std::make_shared<NullSoundOutput>();
    return std::make_shared<QtSoundOutput>(device);
}

} // namespace tavik
