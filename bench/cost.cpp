// Does one piece of heavy work at a size, or the one that all are compared with, so that its instructions can be
// counted: quintave-cost NAME SIZE. The count starts and ends with Counted (cost.py). Without arguments it prints what
// compiled it.
#include "operations.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

void Counted(void (*work)());

namespace {

constexpr std::string_view ReferenceName = "reference";

#if defined(__clang__)
constexpr const char *Compiler = "clang";
constexpr int CompilerVersion = __clang_major__;
#else
constexpr const char *Compiler = "g++";
constexpr int CompilerVersion = __GNUC__;
#endif

int Size = 0;

// Kept so that its making cannot be left out.
std::size_t Kept = 0;

// The like of what the program does - text cut at its commas, numbers, a table of texts - in nothing but the standard
// library: another compiler or library changes its count about as much as the counts that are divided by it.
void Reference() {
    std::map<std::string, long, std::less<>> table;
    std::string text;
    for (int i = 0; i < 8 * Size; ++i) text += "2,1,\"Field " + std::to_string(i % Size) + "\",\"value\"\r\n";
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find("\r\n"));
        rest.remove_prefix(line.size() + 2);
        const auto comma = line.find(',', line.find(',') + 1);
        ++table[std::string(line.substr(comma + 1, line.find(',', comma + 1) - comma - 1))];
    }
    Kept = table.size();
}

} // namespace

// A name that the counter can be told of.
[[gnu::noinline]] void Counted(void (*work)()) { work(); }

int main(int argc, char **argv) {
    if (argc == 1) std::printf("%s %d\n", Compiler, CompilerVersion);
    if (argc != 3) return argc == 1 ? 0 : 2;
    Size = std::atoi(argv[2]);
    if (argv[1] == ReferenceName) {
        Counted(Reference);
        return Kept == static_cast<std::size_t>(Size) ? 0 : 1;
    }
    const auto operations = Operations();
    const auto found =
        std::find_if(operations.begin(), operations.end(), [&](const Operation &o) { return o.Name == argv[1]; });
    if (found == operations.end()) return 2;
    found->Prepare(Size);
    Counted(found->Run);
    return 0;
}
