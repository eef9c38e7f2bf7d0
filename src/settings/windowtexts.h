#pragma once

#include <span>

namespace tavik {

// A window's section of the language files: its name and the names of its captioned controls
// (labels, buttons, check and option boxes, frames, menus and entries). Windows give their
// controls exactly these object names; every delivered language file has a "Caption" and a
// value for each of them. Labels filled by code and picture-only controls without a tool tip
// are not listed.
struct WindowTexts {
    const char* window;
    std::span<const char* const> controls;
};

std::span<const WindowTexts> LocalisedWindows();

} // namespace tavik
