#pragma once

#include <QString>
#include <cstdint>

namespace tavik {

// The sounds of a package as the media layer opens them, seen from the package layer: loading
// a package and checking it open, measure and close sounds through this, and the media layer
// implements it. Answers are the media layer's own.
class PackageSounds {
public:
    virtual ~PackageSounds() = default;

    // The device type the formats file names for a file extension; "" when it lists none.
    virtual QString DeviceType(const QString& extension) = 0;
    // -1 when the sound at `path` opened under `alias`, else the media error code.
    virtual std::int16_t Open(const QString& path, const QString& alias,
                              const QString& deviceType) = 0;
    // The length in milliseconds of the sound open under `alias`; 0 on any problem.
    virtual std::int32_t Length(const QString& alias) = 0;
    virtual void Close(const QString& alias) = 0;
};

// The media error for an alias that is already open.
inline constexpr std::int16_t kAliasAlreadyOpen = 289;

} // namespace tavik
