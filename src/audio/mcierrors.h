#pragma once

namespace tavik::mci {

// MCI's own error codes (MCIERR_BASE is 256), as the command-string interface returns them.
inline constexpr int NoError = 0;
inline constexpr int UnrecognizedKeyword = 259;
inline constexpr int UnrecognizedCommand = 261;
inline constexpr int InvalidDeviceName = 263; // an alias that is not open, an unknown type
inline constexpr int MissingParameter = 273;
inline constexpr int FileNotFound = 275;
inline constexpr int ExtensionNotFound = 281; // no device type for the file's extension
inline constexpr int OutOfRange = 282;
inline constexpr int DuplicateAlias = 289;
inline constexpr int BadConstant = 290;
inline constexpr int MissingDeviceName = 292;
inline constexpr int BadTimeFormat = 293;
inline constexpr int NoClosingQuote = 294;
inline constexpr int InvalidFile = 296; // a file the device cannot read

} // namespace tavik::mci
