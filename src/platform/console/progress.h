// What a program without a display would show in the middle of a long work, and how its time goes by, for tests.
#pragma once

struct Control;

struct ConsoleProgress {
    bool PointerIsBusy = false;
    void (*OnRepaint)(const Control &control) = nullptr; // runs for each control painted meanwhile
    long long ClockAhead = 0;                            // milliseconds by which its clock is ahead of the system's
};

extern ConsoleProgress Progress;
