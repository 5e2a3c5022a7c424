// Keeping the earlier version of a report (earlier_version.h).
#include "report/earlier_version.h"

#include "platform/checksum.h"
#include "platform/files.h"
#include "platform/runtime.h"
#include "report/records.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace {

// A report that the last save of this session did not complete.
struct Incomplete {
    std::uint64_t Part = 0; // tells what the save left of it
    std::vector<std::string> Copies;
};

std::map<std::string, Incomplete> IncompleteReports;

// Reports of which a load has left something out.
std::set<std::string> LoadedInPart;

// The first name of a report followed by "~", "~~" ... that is free: a copy that is there already may be the only whole
// version left by a program that was cut short, or the user's own.
std::string FreeCopyName(const std::string &path) {
    std::string name = path + "~";
    while (NameTaken(name)) name += "~";
    return name;
}

std::uint64_t MarkOf(const std::string &path) { return Checksum().Add(ReadFile(path)).Value(); }

} // namespace

void NoteLoaded(const std::string &path, bool whole) {
    if (whole)
        LoadedInPart.erase(path);
    else
        LoadedInPart.insert(path);
}

EarlierVersion::EarlierVersion(std::string report) : path(std::move(report)) {
    const bool empty = FileSize(path) == 0;
    const auto incomplete = IncompleteReports.find(path);
    if (incomplete != IncompleteReports.end() && FileExists(incomplete->second.Copies.back()) &&
        (empty || MarkOf(path) == incomplete->second.Part)) {
        copy = incomplete->second.Copies.back();
        return;
    }
    if (empty) return;
    const std::string name = FreeCopyName(path);
    try {
        CopyFile(path, name);
        copy = name;
        made = true;
    } catch (const RuntimeError &error) {
        TryToDelete(name);
        // A directory that takes no new file cannot keep the user from saving into the old one.
        if (error.Number != PermissionDenied && error.Number != PathAccessError) throw;
    }
}

EarlierVersion::~EarlierVersion() {
    if (ended || copy.empty()) return;
    if (!begun) {
        if (made) TryToDelete(copy);
        return;
    }
    Incomplete &incomplete = IncompleteReports[path];
    if (made) incomplete.Copies.push_back(copy);
    FaultOf([&] { incomplete.Part = MarkOf(path); });
}

std::string EarlierVersion::End(long values) {
    ended = true;
    const bool inPart = LoadedInPart.erase(path) != 0;
    const bool keeps = !copy.empty() && (inPart || CountValues(copy) > values);
    for (const std::string &former : std::exchange(IncompleteReports[path].Copies, {}))
        if (former != copy) TryToDelete(former);
    IncompleteReports.erase(path);
    if (!keeps && !copy.empty()) TryToDelete(copy); // the report is whole, with or without it
    return keeps ? copy : "";
}
