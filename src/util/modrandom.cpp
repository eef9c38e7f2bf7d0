#include "modrandom.h"

#include "util/conversions.h"
#include "util/runtimeerror.h"

#include <QDateTime>
#include <QTime>
#include <bit>
#include <cmath>

namespace tavik {

namespace {

std::uint64_t splitMix(std::uint64_t& state) {
    state += 0x9E3779B97F4A7C15ull;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

} // namespace

RandomGenerator::RandomGenerator(std::uint64_t seed, Clock clock)
    : state_(seed), clock_(std::move(clock)) {}

RandomGenerator::RandomGenerator()
    : RandomGenerator(static_cast<std::uint64_t>(QDateTime::currentMSecsSinceEpoch())) {}

double RandomGenerator::SecondsSinceMidnight() {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void RandomGenerator::Randomize(double seed) {
    // Mixed into the state rather than replacing it, so draws within one second differ.
    state_ ^= std::bit_cast<std::uint64_t>(seed);
    splitMix(state_);
}

double RandomGenerator::Rnd() {
    return static_cast<double>(splitMix(state_) >> 11) * 0x1.0p-53;
}

std::int16_t RandomInRange(RandomGenerator& generator, std::int16_t min, std::int16_t max) {
    if (min > 0 && max < min)
        throw RuntimeError(rt::InvalidCall);
    std::int16_t r = 0;
    while (r < min) {
        generator.Randomize(-generator.now());
        const double u = generator.Rnd();
        r = CInt(std::floor(max * u + 1));
    }
    return r;
}

QString GenerateKey(RandomGenerator& generator, std::int16_t length) {
    QString key;
    for (std::int16_t i = 0; i < length; ++i)
        key += QString::number(RandomInRange(generator, 1, 10) - 1);
    return key;
}

} // namespace tavik
