// The inputs that the fuzzers begin with, and those that once showed a fault, given to the same targets again.
#include "fuzz/targets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <vector>

inline void PrintTo(const FuzzTarget &target, std::ostream *out) { *out << target.Name; }

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> InputsOf(const std::string &target) {
    std::vector<fs::path> paths;
    for (const char *const kind : {"corpus", "found"})
        if (fs::exists(fs::path(FUZZ_FOLDER) / kind / target))
            for (const auto &entry : fs::directory_iterator(fs::path(FUZZ_FOLDER) / kind / target))
                paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string BytesOf(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Replay : public testing::TestWithParam<FuzzTarget> {};

std::string NameOf(const testing::TestParamInfo<FuzzTarget> &info) {
    std::string name = info.param.Name;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

} // namespace

// A target ends the program where something is wrong; the last path printed is the input that did it.
TEST_P(Replay, EndsWellWithEveryInput) {
    const auto inputs = InputsOf(GetParam().Name);
    ASSERT_FALSE(inputs.empty());
    for (const auto &path : inputs) {
        std::fprintf(stderr, "%s\n", path.c_str());
        GetParam().Take(BytesOf(path));
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay, testing::ValuesIn(FuzzTargets), NameOf);
