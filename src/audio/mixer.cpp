#include "mixer.h"

#include <QMutexLocker>
#include <algorithm>
#include <cmath>
#include <vector>

namespace tavik {

Mixer::Mixer(int sampleRate, int channels) : sampleRate_(sampleRate), channels_(channels) {}

void Mixer::start(int voice, std::shared_ptr<const DecodedSound> sound, qint64 fromMs) {
    if (!sound || sound->info.sampleRate <= 0 || sound->info.channels <= 0)
        return;
    Voice v;
    v.position = static_cast<double>(fromMs) * sound->info.sampleRate / 1000.0;
    v.step = static_cast<double>(sound->info.sampleRate) / sampleRate_;
    v.sound = std::move(sound);
    const QMutexLocker lock(&mutex_);
    voices_[voice] = std::move(v);
}

void Mixer::stop(int voice) {
    const QMutexLocker lock(&mutex_);
    voices_.erase(voice);
}

int Mixer::activeVoices() const {
    const QMutexLocker lock(&mutex_);
    return static_cast<int>(voices_.size());
}

void Mixer::mix(qint16* out, qint64 frames) {
    std::vector<float> sum(static_cast<std::size_t>(frames * channels_), 0.0f);
    {
        const QMutexLocker lock(&mutex_);
        for (auto it = voices_.begin(); it != voices_.end();) {
            Voice& v = it->second;
            const DecodedSound& s = *v.sound;
            const qint64 length = s.info.frames;
            const int inChannels = s.info.channels;
            for (qint64 f = 0; f < frames && v.position < length; ++f) {
                // Linear interpolation between the two nearest source frames.
                const auto i = static_cast<qint64>(v.position);
                const double t = v.position - static_cast<double>(i);
                const qint64 j = std::min(i + 1, length - 1);
                for (int c = 0; c < channels_; ++c) {
                    const int from = std::min(c, inChannels - 1);
                    const float a = s.samples[static_cast<std::size_t>(i * inChannels + from)];
                    const float b = s.samples[static_cast<std::size_t>(j * inChannels + from)];
                    sum[static_cast<std::size_t>(f * channels_ + c)] +=
                        static_cast<float>(a + (b - a) * t);
                }
                v.position += v.step;
            }
            it = v.position >= length ? voices_.erase(it) : std::next(it);
        }
    }
    for (std::size_t k = 0; k < sum.size(); ++k)
        out[k] = static_cast<qint16>(std::lround(std::clamp(sum[k], -1.0f, 1.0f) * 32767.0f));
}

} // namespace tavik
