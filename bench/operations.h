// The program's heavy work without a window, at any size up to the 16-bit limits. growth_bench.cpp measures its time,
// cost.cpp counts its instructions.
#pragma once

#include <span>
#include <string_view>

struct Operation {
    std::string_view Name;
    void (*Prepare)(int size); // to be called before every run
    void (*Run)();             // throws where the work was not done
};

std::span<const Operation> Operations();
