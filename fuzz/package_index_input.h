#pragma once

#include <cstddef>
#include <cstdint>

namespace tavik::fuzz {

// Takes one input through everything a package index meets: read, look up, change, write,
// read again. Returns false when the input exposes an inconsistency (a write that does not
// read back to itself, or memory beyond what the input can account for). Runtime errors are
// the defined failure of a broken store and are not inconsistencies.
bool packageIndexInput(const std::uint8_t* data, std::size_t size);

} // namespace tavik::fuzz
