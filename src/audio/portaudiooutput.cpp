#include "portaudiooutput.h"

#include "audio/quieterrors.h"
#include "util/tickcount.h"

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <portaudio.h>
#include <thread>

namespace tavik {

namespace {

// The first part of every opened sound is converted at once; the decoder thread has this long
// to open the file for the rest.
constexpr double kHeadSeconds = 0.4;
// Buffers of 1024 frames (23.2 ms at 44,100 Hz) with 50 ms asked of the device: small buffers
// underrun on a busy machine (the sound server's plug-in then drops frames), while the schedule
// does not depend on the buffer size. A command is heard one latency after it is given: how far
// ahead of the clock the device takes its buffers (its delay plus a buffer) and kSafety,
// measured once as the stream starts; about 75 ms through PulseAudio's null sink.
constexpr unsigned long kFramesPerBuffer = 1024;
constexpr double kDeviceLatency = 0.050;
// Beyond the device's own latency: room for a late callback before a start would be late.
constexpr double kSafety = 0.005;

// How slowly the frame clock follows the device's reported times. The sound server's reported
// delay steps and wanders by tenths of a millisecond within seconds, which a sentence would hear
// as drift against its schedule; a device clock that runs off the system's by 100 ppm is still
// followed, 2 ms behind, inside kSafety.
constexpr double kFollowSeconds = 20.0;
// A report further off than this is a step of the stream itself (frames lost or the stream
// held up), taken at once.
constexpr double kStep = 0.002;
// How far MME's reports wander from buffer to buffer with the callback's timing.
constexpr double kMmeJitter = 0.050;

// A stream of the ALSA plug-in for PulseAudio makes its first few buffers, then stands still
// for up to two seconds before it runs steadily; the output counts as running after this many
// buffers in a row came on time.
constexpr int kRunningAfterCallbacks = 20;
constexpr auto kStartLimit = std::chrono::seconds(5);

// Commands are stamped with the tick count's clock: reading it costs nothing, while asking the
// stream for its time is a round trip to the sound server.
double clockSeconds() {
    return std::chrono::duration<double>(TickClock::now().time_since_epoch()).count();
}

double wallSeconds() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

QString paProblem(PaError error) {
    return QString::fromUtf8(Pa_GetErrorText(error));
}

} // namespace

struct PortAudioOutput::Stream {
    PaStream* stream = nullptr;
    bool initialised = false;
    OutputFormat format;
    std::atomic<Mixer*> mixer{nullptr};
    // The frame clock: the buffer that starts at `framesDone` is heard at anchor + frames
    // since the anchor. It follows the device's reports slowly (kFollowSeconds), so jitter of
    // the callback and the steps of the reported delay do not move the frames.
    qint64 framesDone = 0;
    qint64 anchorFrame = 0;
    double anchorTime = 0;
    bool anchored = false;
    // A report further off than this is a step of the stream (kStep). Windows' MME stamps a
    // buffer with the moment of its callback plus a fixed latency, not with when it is heard,
    // so its reports wander with the callback's jitter: they are followed slowly like any, and
    // only a jump larger than that jitter counts as a step.
    double step = kStep;
    std::atomic<double> largestLead{0}; // how far ahead of the clock a buffer was made
    std::atomic<int> callbacks{0};
    // The count of callbacks when one last came late (more than two buffers after the one
    // before): the stream runs steadily once enough have come on time since.
    std::atomic<int> lastLateCallback{0};
    double lastCallbackAt = -1;
    // Underruns and steps of the stream since the output started.
    std::atomic<int> interruptions{0};

    ~Stream() {
        if (stream) {
            Pa_StopStream(stream);
            Pa_CloseStream(stream);
        }
        if (initialised)
            Pa_Terminate();
    }

    // When this buffer is heard, on our clock. The stream's times are of the wall clock (ALSA
    // stamps them so) or of ours; a wall-clock time is carried over through both clocks read
    // now, so a callback that starts late does not move it.
    double heardTime(const PaStreamCallbackTimeInfo* time, double now) const {
        const double dacTime = time->outputBufferDacTime;
        const double ahead = dacTime - time->currentTime;
        if (dacTime > 0 && time->currentTime > 0 && ahead >= 0 && ahead < 1) {
            const double wallNow = wallSeconds();
            if (std::fabs(time->currentTime - wallNow) < 1)
                return dacTime - wallNow + now;
            if (std::fabs(time->currentTime - now) < 1)
                return dacTime;
            return now + ahead;
        }
        return now + Pa_GetStreamInfo(stream)->outputLatency;
    }

    int callback(float* out, unsigned long frames, const PaStreamCallbackTimeInfo* time,
                 PaStreamCallbackFlags flags) {
        const double now = clockSeconds();
        const bool attached = mixer.load(std::memory_order_acquire) != nullptr;
        if (attached && (flags & paOutputUnderflow))
            interruptions.fetch_add(1, std::memory_order_relaxed);
        const double bufferSeconds = static_cast<double>(frames) / format.sampleRate;
        if (lastCallbackAt >= 0 && now - lastCallbackAt > 2 * bufferSeconds)
            lastLateCallback.store(callbacks.load(std::memory_order_relaxed),
                                   std::memory_order_relaxed);
        lastCallbackAt = now;
        const double dac = heardTime(time, now);
        const double expected =
            anchorTime + static_cast<double>(framesDone - anchorFrame) / format.sampleRate;
        if (!anchored || std::fabs(dac - expected) > step) {
            if (anchored && attached)
                interruptions.fetch_add(1, std::memory_order_relaxed);
            anchorTime = dac;
            anchorFrame = framesDone;
            anchored = true;
        } else {
            anchorTime += (dac - expected) * std::min(1.0, bufferSeconds / kFollowSeconds);
        }
        const double heardAt =
            anchorTime + static_cast<double>(framesDone - anchorFrame) / format.sampleRate;
        const double lead = heardAt - now + bufferSeconds;
        if (lead > largestLead.load(std::memory_order_relaxed))
            largestLead.store(lead, std::memory_order_relaxed);
        if (Mixer* m = mixer.load(std::memory_order_acquire))
            m->render(out, static_cast<qint64>(frames), heardAt);
        else
            std::fill(out, out + frames * static_cast<unsigned long>(format.channels), 0.0f);
        framesDone += static_cast<qint64>(frames);
        callbacks.fetch_add(1, std::memory_order_release);
        return paContinue;
    }

    static int entry(const void*, void* output, unsigned long frames,
                     const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                     void* self) {
        return static_cast<Stream*>(self)->callback(static_cast<float*>(output), frames, time,
                                                    flags);
    }
};

std::shared_ptr<PortAudioOutput> PortAudioOutput::open(QString& problem) {
    std::shared_ptr<PortAudioOutput> output(new PortAudioOutput);
    output->stream_ = std::make_unique<Stream>();
    Stream& s = *output->stream_;
    const QuietErrors quiet;
    // No sound server is started on the program's behalf.
    qputenv("JACK_NO_START_SERVER", "1");
    PaError error = Pa_Initialize();
    if (error != paNoError) {
        problem = paProblem(error);
        return {};
    }
    s.initialised = true;
    const PaDeviceIndex device = Pa_GetDefaultOutputDevice();
    const PaDeviceInfo* info = device == paNoDevice ? nullptr : Pa_GetDeviceInfo(device);
    if (!info || info->maxOutputChannels <= 0) {
        problem = QStringLiteral("no output device");
        return {};
    }
    PaStreamParameters parameters{};
    parameters.device = device;
    parameters.sampleFormat = paFloat32;
    // MME's buffers go through the system's mixer late and unevenly: its reports are taken
    // with that jitter in mind. A longer latency than the low one only delays every sound.
    const PaHostApiInfo* host = Pa_GetHostApiInfo(info->hostApi);
    const bool mme = host && host->type == paMME;
    if (mme)
        s.step = kMmeJitter;
    parameters.suggestedLatency = std::max(kDeviceLatency, info->defaultLowOutputLatency);
    // Stereo at CD rate when the device takes it, else what the device prefers; the format
    // is checked before the stream is opened.
    const int channelChoices[] = {std::min(2, info->maxOutputChannels), 1};
    const double rateChoices[] = {44100.0, info->defaultSampleRate, 48000.0};
    bool found = false;
    for (const int channels : channelChoices) {
        for (const double rate : rateChoices) {
            parameters.channelCount = channels;
            if (rate > 0 &&
                Pa_IsFormatSupported(nullptr, &parameters, rate) == paFormatIsSupported) {
                s.format = {static_cast<int>(rate), channels};
                found = true;
                break;
            }
        }
        if (found)
            break;
    }
    if (!found) {
        problem = QStringLiteral("the device takes no usable format (%1)")
                      .arg(QString::fromUtf8(info->name));
        return {};
    }
    parameters.channelCount = s.format.channels;
    error = Pa_OpenStream(&s.stream, nullptr, &parameters, s.format.sampleRate, kFramesPerBuffer,
                          paClipOff, &Stream::entry, &s);
    if (error == paNoError)
        error = Pa_StartStream(s.stream);
    if (error != paNoError) {
        problem = paProblem(error);
        return {};
    }
    // The latency is measured once, on the running stream: the device's own plus how far
    // ahead of it buffers are made.
    const auto deadline = std::chrono::steady_clock::now() + kStartLimit;
    auto steady = [&s] {
        return s.callbacks.load(std::memory_order_acquire) - s.lastLateCallback.load() >=
               kRunningAfterCallbacks;
    };
    while (!steady() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    if (!steady()) {
        problem = QStringLiteral("the device does not run");
        return {};
    }
    const PaStreamInfo* streamInfo = Pa_GetStreamInfo(s.stream);
    const double latency =
        std::max(s.largestLead.load(), streamInfo ? streamInfo->outputLatency : 0.0) + kSafety;
    output->decoder_ = std::make_unique<StreamDecoder>();
    StreamDecoder* decoder = output->decoder_.get();
    output->mixer_ =
        std::make_unique<Mixer>(s.format, latency, [decoder](std::shared_ptr<StreamFeed> feed) {
            decoder->feed(std::move(feed));
        });
    // The callback picks the mixer up with its next buffer.
    s.mixer.store(output->mixer_.get(), std::memory_order_release);
    return output;
}

PortAudioOutput::PortAudioOutput() = default;

PortAudioOutput::~PortAudioOutput() {
    // The stream stops before the mixer and decoder it reads from go.
    stream_.reset();
}

std::shared_ptr<const PreparedSound> PortAudioOutput::prepare(const QString& path,
                                                              const SoundInfo& info) {
    const auto head = static_cast<qint64>(kHeadSeconds * stream_->format.sampleRate);
    auto sound = std::make_shared<PreparedSound>(path, info, stream_->format, head);
    decoder_->prepare(sound);
    return sound;
}

void PortAudioOutput::start(int voice, std::shared_ptr<const PreparedSound> sound, qint64 fromMs) {
    const double at = now();
    const qint64 fromFrame = fromMs * stream_->format.sampleRate / 1000;
    mixer_->start(voice, std::move(sound), fromFrame, at);
}

void PortAudioOutput::stop(int voice) {
    mixer_->stop(voice, now());
}

void PortAudioOutput::drain() {
    // The last command is heard one latency after it was given; a sound still running then
    // is given a little longer to end by itself.
    const double last = mixer_->lastCommandAt();
    if (last < 0)
        return;
    const double heard = last + latency() + 0.030;
    const double limit = heard + 5.0;
    for (;;) {
        const double t = now();
        if ((t >= heard && mixer_->activeVoices() == 0) || t >= limit)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

unsigned long PortAudioOutput::framesPerBuffer() {
    return kFramesPerBuffer;
}

OutputFormat PortAudioOutput::format() const {
    return stream_->format;
}

double PortAudioOutput::latency() const {
    return mixer_->latency();
}

int PortAudioOutput::interruptions() const {
    return stream_->interruptions.load(std::memory_order_relaxed);
}

qint64 PortAudioOutput::starvedFrames() const {
    return mixer_->starvedFrames();
}

double PortAudioOutput::now() const {
    return clockSeconds();
}

std::shared_ptr<SoundOutput> createSoundOutput(const std::function<void(const QString&)>& log) {
    if (qgetenv("TAVIK_AUDIO") == "null" || !QCoreApplication::instance())
        return std::make_shared<NullSoundOutput>();
    QString problem;
    if (std::shared_ptr<PortAudioOutput> output = PortAudioOutput::open(problem))
        return output;
    if (log)
        log(QStringLiteral("!AUDIO ERROR '%1' 'Playing without sound'").arg(problem));
    return std::make_shared<NullSoundOutput>();
}

} // namespace tavik
