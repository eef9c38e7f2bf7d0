#pragma once

#include <QtGlobal>
#include <array>
#include <cstdint>

namespace tavik {

// The highlight colours an announcement can be listed in, as colour values with red in the
// low byte. Option 1, black, means no highlight; it is deliberately not the first option.
inline constexpr std::array<std::int32_t, 9> kAnnouncementColors = {
    8421504,  // grey
    0,        // black: no highlight
    255,      // red
    33023,    // orange
    49344,    // olive
    49152,    // green
    12632064, // teal
    16711680, // blue
    16711935, // magenta
};
inline constexpr int kNoHighlightOption = 1;

// The option whose colour is `foreColor`, the text colour a list entry is drawn in; -1 when
// it is none of them (the list's default colour, or one set elsewhere).
int ColorOptionOf(quint32 foreColor);

// What confirming the properties does with the colour, for the selected option (-1: none).
struct ColorChoice {
    bool changesLook = false; // the entry is redrawn in foreColor, bold or not
    quint32 foreColor = 0;
    bool bold = false;
    std::int32_t stored = 0; // the announcement's colour from now on
};
ColorChoice ChooseColor(int selectedOption);

} // namespace tavik
