#pragma once

#include <QString>
#include <cstdint>
#include <functional>

namespace tavik {

// The runtime's pseudo-random generator: a state that each re-seed mixes a number into and
// each draw advances. Seedable, so tests draw known sequences.
class RandomGenerator {
public:
    // Seconds since midnight, the number every draw re-seeds from.
    using Clock = std::function<double()>;

    explicit RandomGenerator(std::uint64_t seed, Clock clock = SecondsSinceMidnight);
    // Seeded from the clock of the system.
    RandomGenerator();

    void Randomize(double seed);
    // Uniform in [0, 1).
    double Rnd();
    double now() const { return clock_(); }

    static double SecondsSinceMidnight();

private:
    std::uint64_t state_;
    Clock clock_;
};

// The program-wide random routine: re-seeds from the negated time of day before every single
// draw and draws until the result is at least `min`. A `max` below `min` could never end and
// raises the invalid-call error instead.
std::int16_t RandomInRange(RandomGenerator& generator, std::int16_t min, std::int16_t max);

// `length` random decimal digits.
QString GenerateKey(RandomGenerator& generator, std::int16_t length);

} // namespace tavik
