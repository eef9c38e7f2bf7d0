#pragma once

namespace tavik::cli {

// Makes the tool's output the same bytes on every system: Windows would otherwise turn each
// line break into a carriage return and a line break on the way out, so a dump redirected to a
// file, or a value read by a script, would differ from the same on Linux.
void UseBinaryStandardStreams();

} // namespace tavik::cli
