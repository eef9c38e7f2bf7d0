#pragma once

namespace tavik::test {

// How close the own engine's output is held to its schedule on this system, after the
// constant latency. Each system has its own file (outputtolerance_unix.cpp, _win.cpp).
struct OutputTolerance {
    double commandsMs; // every start and cut against its command
    double renderedMs; // every entry against where the rendered file has it
    // How often a run whose sound broke off for a moment is played again: never where that is
    // the output's own fault, more where the system's sound path does it at random.
    int playsAgainAfterABreak;
};
OutputTolerance OwnEngineTolerance();

} // namespace tavik::test
