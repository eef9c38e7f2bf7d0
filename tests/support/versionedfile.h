#pragma once

#include <QByteArray>
#include <cstdint>

namespace tavik::test {

// A small but whole 64-bit Windows program image (a resource-only DLL) whose only resource is
// a version resource with the given file version (most and least significant halves) and file
// type: what the system's version call reads on Windows, and what the bytes reader finds
// elsewhere.
QByteArray ProgramWithVersionResource(std::uint32_t versionMs, std::uint32_t versionLs,
                                      std::uint32_t fileType);

} // namespace tavik::test
