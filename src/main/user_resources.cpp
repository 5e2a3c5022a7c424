// Filling the user's own resource directory (user_resources.h). How the program goes on in it: start_up.cpp.
#include "main/user_resources.h"

#include "model/field_model.h"
#include "model/resource_table.h"
#include "platform/clock.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"

#include <algorithm>
#include <set>

namespace {

// In the user's directory: the names of the files that it was given, one a line.
constexpr const char *GivenNames = ".given";

// A file while it is written; it gets its name when it is whole.
constexpr const char *Unfinished = ".unfinished";

std::set<std::string> ReadGivenNames(const std::string &directory) {
    std::set<std::string> names;
    if (!NameTaken(directory + GivenNames)) return names;
    const std::string text = ReadFile(directory + GivenNames);
    for (std::size_t start = 0; start < text.size();) {
        const auto end = std::min(text.find('\n', start), text.size());
        names.insert(text.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

void WriteGivenNames(const std::string &directory, const std::set<std::string> &names) {
    OutputFile file(directory + Unfinished, OutputFile::Access::Own);
    for (const auto &name : names) file.Write(name + '\n');
    file.Close(true);
    RenameFile(directory + Unfinished, directory + GivenNames);
}

// The names are written down last: a run that breaks off is taken up by the next one.
void GiveFiles(const std::string &installed, const std::string &directory) {
    if (!FileExists(installed + std::string(ResourceTableName)) &&
        !FileExists(directory + std::string(ResourceTableName)))
        throw RuntimeError{FileNotFound};
    std::set<std::string> given = ReadGivenNames(directory);
    const auto before = given.size();
    for (const auto &name : MatchingNames(installed, "*")) {
        if (!given.insert(name).second || NameTaken(directory + name)) continue;
        CopyFile(installed + name, directory + Unfinished);
        RenameFile(directory + Unfinished, directory + name);
    }
    if (given.size() != before) WriteGivenNames(directory, given);
}

// Takes the directory's lock. False where another program works in it, which has filled it, or is about to: then its
// table is waited for, for a while.
bool MayFill(const std::string &directory) {
    constexpr int LongestFilling = 5000; // milliseconds
    bool locked = false;
    ComesOffWithin(LongestFilling, [&] {
        locked = LockDirectory(directory);
        return locked || FileExists(directory + std::string(ResourceTableName));
    });
    return locked;
}

} // namespace

std::string UserResources(const std::string &installed) {
    const std::string data = UserDataDirectory();
    std::string directory = data.empty() ? "" : data + "quintave/";
    try {
        if (directory.empty()) throw RuntimeError{PathNotFound};
        MakeDirectory(directory);
        if (MayFill(directory)) GiveFiles(installed, directory);
    } catch (const RuntimeError &error) {
        MsgBox(
            "Error: " + ErrorText(error.Number) + NL + "Error filling your own resource directory (" +
                NameText(directory) + ") from the installed one (" + NameText(installed) +
                ")! (not installed? read only file or drive? full drive? wrong privileges?). Correct the problem and "
                "try again.",
            CriticalIcon, "Quintave");
    }
    UnlockDirectory();
    return directory;
}
