#pragma once

#include <cstddef>
#include <cstdint>

namespace tavik::fuzz {

// Takes one input through what a service file meets: read whole, read its header for the
// list, write back, read again. Returns false when the input exposes an inconsistency (a
// complete read that does not write back to the bytes it came from, a write that does not
// read back to itself, or memory beyond what the input can account for).
bool serviceInput(const std::uint8_t* data, std::size_t size);

} // namespace tavik::fuzz
