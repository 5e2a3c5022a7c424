// What a program without a display would show in the middle of a long work, and how its time goes by, for tests.
#pragma once

#include <string>

struct Control;

struct ConsoleProgress {
    bool PointerIsBusy = false;
    void (*OnRepaint)(const Control &control) = nullptr; // runs for each control painted meanwhile
    std::string Note{};                                  // the last one that ShowNote told
    long long Clock = 0;                                 // its milliseconds, which only tests let go by
    long long ClockStep = 0;                             // how many go by whenever somebody looks at the clock
};

extern ConsoleProgress Progress;

// EndProgram was called since the last question.
bool ProgramEnded();
