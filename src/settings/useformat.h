#pragma once

#include <functional>

namespace tavik {

class RuntimeError;

// The "UseFormat" setting of section "SOUND" in the program's settings file, default false:
// whether sounds are opened with their device type named. A value that is no Boolean ("" or
// "abc") is the runtime's type-mismatch error; it goes to `onBadValue` and the default stands,
// so a bad line in the settings file never keeps a program from starting.
bool ReadUseFormat(const std::function<void(const RuntimeError&)>& onBadValue = {});

} // namespace tavik
