#pragma once

#include "package/slotarray.h"
#include "util/variant.h"

#include <QString>
#include <array>
#include <cstdint>

namespace tavik {

// The fields in an order that leaves no padding between them: a big package holds tens of
// thousands of these.
struct ZeldbItem {
    QString Name;
    Variant Value;
    std::int16_t InUse = 0; // -1 in use, 0 free
    std::int16_t Reserved = 0;
};

struct ZeldbKey {
    QString Name;
    SlotArray<ZeldbItem> Items; // not allocated until the first item is added
    std::int16_t InUse = 0;     // -1 in use, 0 free
    std::int16_t ItemCount = 0; // high-water mark of Items
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
