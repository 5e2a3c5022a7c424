// How many files the program has open.
#pragma once

#include <filesystem>
#include <iterator>

inline std::ptrdiff_t OpenFileCount() {
    namespace fs = std::filesystem;
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}
