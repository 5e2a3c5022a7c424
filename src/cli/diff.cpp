// quintave-cli diff: the values in which two reports differ.
#include "cli/commands.h"
#include "cli/export_formats.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/report_events.h"

#include <algorithm>
#include <unordered_map>

namespace {

// Beyond this many comparisons instances are paired by their order alone.
constexpr std::size_t LargestTable = 4'000'000;

// The values of a report by title path, in the order of the report.
struct ValuesByPath {
    std::vector<std::string> Paths;
    std::unordered_map<std::string, std::vector<std::string>> Values;
};

ValuesByPath Collect(const ReportEvents &report) {
    ValuesByPath found;
    std::string path;                 // of what is open, ending in " / "
    std::vector<std::size_t> lengths; // of the path before each open part
    std::unordered_map<std::string, int> occurrences;
    for (const ReportEvent &event : report.Events) {
        const std::string title = OneLine(event.Title);
        if (event.Is == Part::Field) {
            const std::string key = path + title;
            auto &values = found.Values[key];
            if (values.empty()) found.Paths.push_back(key);
            values.insert(values.end(), event.Values.begin(), event.Values.end());
        } else if (event.Is == Part::End) {
            path.resize(lengths.back());
            lengths.pop_back();
        } else {
            lengths.push_back(path.size());
            if (event.Is == Part::Section) path += title + " / ";
            if (event.Is == Part::Occurrence)
                path += title + " #" + std::to_string(++occurrences[path + title]) + " / ";
        }
    }
    return found;
}

std::string Shown(const std::string &value) { return JsonText(ExportedText(value)); }

void Tell(const char *what, const std::string &path, const std::string &text) {
    WriteResult(std::string(what) + " " + path + ": " + text + "\n");
}

// The instances between two that are alike: paired as far as both sides reach.
void TellGap(const std::string &path, std::span<const std::string> a, std::span<const std::string> b) {
    const std::size_t pairs = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < pairs; ++i)
        if (a[i] != b[i]) Tell("changed", path, Shown(a[i]) + " -> " + Shown(b[i]));
    for (const std::string &value : a.subspan(pairs)) Tell("missing", path, Shown(value));
    for (const std::string &value : b.subspan(pairs)) Tell("added", path, Shown(value));
}

// The longest common run of instances stays; what lies between differs.
void TellDifferences(const std::string &path, std::span<const std::string> a, std::span<const std::string> b) {
    const std::size_t rows = a.size();
    const std::size_t columns = b.size();
    if (rows == 0 || columns == 0 || rows * columns > LargestTable) {
        TellGap(path, a, b);
        return;
    }
    // longest[i][j]: instances alike in a from i and b from j on.
    std::vector<std::vector<std::uint32_t>> longest(rows + 1, std::vector<std::uint32_t>(columns + 1));
    for (std::size_t i = rows; i-- > 0;)
        for (std::size_t j = columns; j-- > 0;)
            longest[i][j] = a[i] == b[j] ? longest[i + 1][j + 1] + 1 : std::max(longest[i + 1][j], longest[i][j + 1]);
    std::size_t i = 0;
    std::size_t j = 0;
    std::size_t gapA = 0;
    std::size_t gapB = 0;
    while (i < rows && j < columns) {
        if (a[i] == b[j]) {
            TellGap(path, a.subspan(gapA, i - gapA), b.subspan(gapB, j - gapB));
            gapA = ++i;
            gapB = ++j;
        } else if (longest[i + 1][j] >= longest[i][j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
    TellGap(path, a.subspan(gapA), b.subspan(gapB));
}

// Whether anything differed.
bool Compare(const std::string &path, const std::vector<std::string> &a, const std::vector<std::string> &b) {
    if (a == b) return false;
    // What begins and ends alike needs no table.
    const auto [endA, endB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const auto same = static_cast<std::size_t>(endA - a.begin());
    std::size_t tail = 0;
    while (tail < std::min(a.size(), b.size()) - same && a[a.size() - 1 - tail] == b[b.size() - 1 - tail]) ++tail;
    TellDifferences(path, std::span(a).subspan(same, a.size() - same - tail),
                    std::span(b).subspan(same, b.size() - same - tail));
    return true;
}

} // namespace

int CompareReports(const Arguments &arguments) {
    ReportEvents first;
    ReportEvents second;
    const bool firstRead = ReadReportEvents(arguments.Files[0], first);
    if (!ReadReportEvents(arguments.Files[1], second) || !firstRead) return FileFault;
    const ValuesByPath a = Collect(first);
    const ValuesByPath b = Collect(second);
    bool differs = false;
    const std::vector<std::string> none;
    for (const std::string &path : a.Paths) {
        const auto other = b.Values.find(path);
        differs = Compare(path, a.Values.at(path), other == b.Values.end() ? none : other->second) || differs;
    }
    for (const std::string &path : b.Paths)
        if (!a.Values.contains(path)) differs = Compare(path, none, b.Values.at(path)) || differs;
    return differs ? SomethingFound : NothingFound;
}
