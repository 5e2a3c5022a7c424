// Keeping the earlier version of a report (earlier_version.h).
#include "report/earlier_version.h"

#include "platform/files.h"
#include "platform/runtime.h"

#include <map>

namespace {

// The reports that a save of this session did not complete, with the copies of their earlier versions.
std::map<std::string, std::string> IncompleteReports;

// The first name of a report followed by "~", "~~" ... that is free: a copy that is there already may be the only whole
// version left by a program that was cut short, or the user's own.
std::string FreeCopyName(const std::string &path) {
    std::string name = path + "~";
    while (NameTaken(name)) name += "~";
    return name;
}

} // namespace

std::string KeepEarlierVersion(const std::string &path) {
    const auto incomplete = IncompleteReports.find(path);
    if (incomplete != IncompleteReports.end() && FileExists(incomplete->second)) return incomplete->second;
    if (FileSize(path) == 0) return "";
    std::string kept = FreeCopyName(path);
    try {
        CopyFile(path, kept);
        IncompleteReports[path] = kept;
        return kept;
    } catch (const RuntimeError &error) {
        TryToDelete(kept);
        // A directory that takes no new file cannot keep the user from saving into the old one.
        if (error.Number != PermissionDenied && error.Number != PathAccessError) throw;
        return "";
    }
}

void DropEarlierVersion(const std::string &path, const std::string &kept) {
    if (kept.empty()) return;
    IncompleteReports.erase(path);
    TryToDelete(kept); // the report is whole, with or without it
}
