#pragma once

#include "package/slotarray.h"
#include "util/variant.h"

#include <QString>
#include <array>
#include <cstdint>

namespace tavik {

struct ZeldbItem {
    std::int16_t InUse = 0; // -1 in use, 0 free
    QString Name;
    std::int16_t Reserved = 0;
    Variant Value;
};

struct ZeldbKey {
    std::int16_t InUse = 0; // -1 in use, 0 free
    QString Name;
    std::int16_t ItemCount = 0; // high-water mark of Items
    SlotArray<ZeldbItem> Items; // not allocated until the first item is added
};

struct ZeldbHeader {
    QString Text1;
    QString Text2;
    QString Text3;
    std::array<std::uint8_t, 6> Reserved{};
    QString ReservedText;
    std::int16_t KeyCount = 0; // high-water mark of the keys array
};

// How the last read of a file went, for tools that report on files.
struct ZeldbReadReport {
    enum class Status { Complete, Missing, WrongMagic, Truncated, Broken };
    Status status = Status::Complete;
    QString problem;   // what was wrong, for a message
    qint64 offset = 0; // where reading stopped
};

} // namespace tavik
