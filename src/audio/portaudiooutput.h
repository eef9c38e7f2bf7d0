#pragma once

#include "audio/mixer.h"
#include "audio/soundoutput.h"
#include "audio/streamdecoder.h"

#include <memory>

namespace tavik {

// The default output device through PortAudio: mixing runs in the device's own callback
// thread, a decoder thread keeps playing sounds fed, and every start and stop lands on the
// frame heard one fixed latency after its command.
class PortAudioOutput : public SoundOutput {
public:
    // Nothing, with `problem` set, when no device can be opened.
    static std::shared_ptr<PortAudioOutput> open(QString& problem);
    ~PortAudioOutput() override;

    std::shared_ptr<const PreparedSound> prepare(const QString& path,
                                                 const SoundInfo& info) override;
    void start(int voice, std::shared_ptr<const PreparedSound> sound, qint64 fromMs) override;
    void stop(int voice) override;
    void drain() override;

    OutputFormat format() const;
    // Frames the device is handed per callback.
    static unsigned long framesPerBuffer();
    // From a command to the moment it is heard: the same for every command.
    double latency() const;
    qint64 starvedFrames() const;
    int interruptions() const override;
    // Seconds of the tick count's clock, which commands are stamped with.
    double now() const;

    struct Stream;

private:
    PortAudioOutput();

    std::unique_ptr<Stream> stream_;
    std::unique_ptr<StreamDecoder> decoder_;
    std::unique_ptr<Mixer> mixer_;
};

} // namespace tavik
