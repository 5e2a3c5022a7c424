// The work files (work_files.h).
#include "model/work_files.h"

#include "model/field_model.h"
#include "model/text_files.h"
#include "platform/files.h"
#include "platform/items.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace {

std::string NumberedName(std::string_view kind, Integer element) {
    return std::string(kind) + std::to_string(100000 + element).substr(1) + ".XXX";
}

std::string LowByteFirst(Integer number) {
    const auto bits = static_cast<unsigned>(static_cast<std::uint16_t>(number));
    return {static_cast<char>(static_cast<unsigned char>(bits & 0xFF)),
            static_cast<char>(static_cast<unsigned char>(bits >> 8))};
}

// By name, where they are held.
std::map<std::string, std::string> Held;
bool Holds = false;

std::string ChoiceLines(const std::vector<std::string> &choices) {
    std::string lines;
    for (const auto &choice : choices) lines += Quoted(choice) + NL;
    return FileBytes(lines);
}

// Hands out the name and the bytes of each file that a template needs.
void EachWorkFile(const TemplateContent &content, const std::function<void(std::string, std::string)> &put) {
    Integer element = 0;
    for (const TemplateElement &e : content.Elements) {
        ++element;
        if (e.Type == ElementType::List) put(ChoiceFileName(element), ChoiceLines(e.Choices));
        if (e.Type == ElementType::GroupStart) put(GroupFileName(element), BlankStore(e.Cells));
    }
}

// Writes the files of a template under their temporary names and returns their final ones.
void StageWorkFiles(const TemplateContent &content, std::vector<std::string> &names) {
    EachWorkFile(content, [&](std::string name, const std::string &bytes) {
        names.push_back(std::move(name));
        OutputFile file(ResourceDir + StagedName(names.back()), OutputFile::Access::Own);
        file.Write(bytes);
        file.Close(false);
    });
}

// A directory is not deleted with the old work files, and no file can take its name.
void RefuseDirectories(const std::vector<std::string> &names) {
    for (const auto &name : names)
        if (DirectoryExists(ResourceDir + name)) throw RuntimeError{PathAccessError};
}

// Files of the resource directory that were given another name: the old one and the new one.
using Renames = std::vector<std::pair<std::string, std::string>>;

void Rename(const std::string &from, const std::string &to, Renames &done) {
    RenameFile(ResourceDir + from, ResourceDir + to);
    done.emplace_back(from, to);
}

// The last one first. Where no file can be given another name any more a copy does, and what cannot be taken back
// leaves the others their turn.
void TakeBack(const Renames &done) {
    std::for_each(done.rbegin(), done.rend(), [](const auto &rename) {
        const std::string from = ResourceDir + rename.second;
        const std::string to = ResourceDir + rename.first;
        if (FaultOf([&] { RenameFile(from, to); }) != 0) FaultOf([&] { CopyFile(from, to); });
    });
}

} // namespace

std::string ChoiceFileName(Integer element) { return NumberedName("LST", element); }

std::string GroupFileName(Integer element) { return NumberedName("GRP", element); }

std::string ReadWorkFile(const std::string &name) {
    if (!Holds) return ReadFile(ResourceDir + name);
    const auto held = Held.find(name);
    if (held == Held.end()) throw RuntimeError{FileNotFound};
    return held->second;
}

void HoldWorkFiles() { Holds = true; }

bool WorkFilesAreHeld() { return Holds; }

void HoldWorkFile(std::string name, std::string bytes) { Held[std::move(name)] = std::move(bytes); }

void DeleteWorkFiles() {
    DeleteMatching(ResourceDir, "*.XXX");
    DeleteMatching(ResourceDir, "*.$$$");
}

void ReplaceWorkFiles(const TemplateContent &content) {
    if (Holds) {
        Held.clear();
        EachWorkFile(content, HoldWorkFile);
        return;
    }
    DeleteMatching(ResourceDir, "*.$$$");
    std::vector<std::string> names;
    Renames done;
    try {
        StageWorkFiles(content, names);
        RefuseDirectories(names);
        for (const auto &name : MatchingNames(ResourceDir, "*.XXX")) Rename(name, name + ".$$$", done);
        for (const auto &name : names) Rename(StagedName(name), name, done);
    } catch (const RuntimeError &) {
        TakeBack(done);
        DeleteMatching(ResourceDir, "*.$$$");
        throw;
    }
    DeleteMatching(ResourceDir, "*.$$$");
}

std::string StagedName(const std::string &name) { return name.substr(0, name.size() - 3) + "$$$"; }

std::string GroupStoreHeader(Integer itemCount, Integer occurrenceCount) {
    return LowByteFirst(itemCount) + LowByteFirst(occurrenceCount);
}

std::string BlankStore(Integer itemCount) {
    return GroupStoreHeader(itemCount, 1) + std::string(static_cast<std::size_t>(itemCount), ' ');
}

std::string WorkFileErrorText(Integer error) {
    return "Error: " + ErrorText(error) + NL +
           "Error using a work file in the resource directory! (read only file or drive? full drive? file locked? "
           "wrong privileges?). Correct the problem and try again.";
}
