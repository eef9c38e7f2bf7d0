#pragma once

namespace tavik {

// While it lives, the process's error stream goes to the system's null device: the sound
// libraries print every device they probe there, and the program reports a device that fails in
// its own words instead.
class QuietErrors {
public:
    QuietErrors();
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    int saved_ = -1;
};

} // namespace tavik
