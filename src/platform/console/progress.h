// What a program without a display would show in the middle of a long work, for tests.
#pragma once

struct Control;

struct ConsoleProgress {
    bool PointerIsBusy = false;
    void (*OnRepaint)(const Control &control) = nullptr; // runs for each control painted meanwhile
};

extern ConsoleProgress Progress;
