#pragma once

namespace tavik::test {

// How close the own engine's output is held to its schedule on this system, after the
// constant latency. Each system has its own file (outputtolerance_unix.cpp, _win.cpp).
struct OutputTolerance {
    double commandsMs; // every start and cut against its command
    double renderedMs; // every entry against where the rendered file has it
    // How often a run whose sound was broken for a moment is played again: more than never
    // where the system's own sound path does that at random.
    int playsAgainAfterABreak;
};
OutputTolerance OwnEngineTolerance();

} // namespace tavik::test
