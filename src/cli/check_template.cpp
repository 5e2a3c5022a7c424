// quintave-cli check-template: what is wrong with templates.
#include "cli/commands.h"
#include "cli/files.h"
#include "cli/lost_fields.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "cli/template_header.h"
#include "cli/template_walk.h"
#include "model/field_model.h"
#include "model/template_reader.h"
#include "model/text_files.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace {

long LineOf(const TemplateWalk &walk, Integer element) { return walk.Lines.at(static_cast<std::size_t>(element - 1)); }

std::string LineText(const TemplateWalk &walk, Integer element) {
    return "line " + std::to_string(LineOf(walk, element));
}

void CheckPaths(const std::string &path, const std::string &bytes, TemplateWalk &walk) {
    LoadTemplate(path, bytes);
    if (walk.Lines.size() != static_cast<std::size_t>(NumFields)) return; // what was told hides which line is whose
    const std::map<Integer, Integer> equal = FindEqualPaths();
    LostFields lost = FindLostFields();
    for (const auto &[element, first] : equal) {
        const bool takes = lost.Takers.erase(element) != 0;
        walk.Faults.push_back({LineOf(walk, element), "The title path " + TitlePath(element) + " is that of " +
                                                          LineText(walk, first) + ", too" +
                                                          (takes ? ", which may take its values" : "")});
    }
    for (const auto &[element, taker] : lost.Takers)
        walk.Faults.push_back({LineOf(walk, element), "A report may not give " + TitlePath(element) +
                                                          " back: " + LineText(walk, taker) + " may take its values"});
    if (!lost.AllCompared)
        walk.Faults.push_back(
            {1, "There are too many equal titles to find all values that a report may not give back"});
}

// What a load makes of the template: where it is refused, the fault that is told of; else what only the loaded tables
// show.
void CheckLoad(const std::string &path, const ItemInput &input, TemplateWalk &walk) {
    const auto isAstray = [](const TemplateFault &fault) { return fault.Astray; };
    const auto first = std::find_if(walk.Faults.begin(), walk.Faults.end(), isAstray);
    long line = 0;
    walk.Refusal = FaultOf([&] { ReadTemplate(input, &line); });
    if (walk.Refusal == 0) {
        if (first == walk.Faults.end()) CheckPaths(path, input.Bytes, walk);
        return;
    }
    if (std::any_of(walk.Faults.begin(), walk.Faults.end(), [](const TemplateFault &f) { return f.Error != 0; }))
        return;
    if (first != walk.Faults.end())
        first->Error = walk.Refusal;
    else
        walk.Faults.push_back({line, "the template cannot be read to its end", walk.Refusal});
}

void CheckBytes(const std::string &bytes, const ItemInput &input, TemplateWalk &walk) {
    if (const long line = CuttingLine(bytes); line != 0) walk.Faults.push_back({line, std::string(CutByEndMark)});
    if (walk.WrongHeader) return;
    if (const long line = LineNotUtf8(input); line != 0)
        walk.Faults.push_back(
            {line, "The template says that it is UTF-8, and here it is not: what is none is read as Windows-1252"});
}

std::string TextOf(const TemplateFault &fault, bool refused) {
    if (fault.Error == 0 || !refused) return Sentence(fault.Text);
    return "A load refuses it: Error: " + ErrorText(fault.Error) + ": " + fault.Text;
}

std::string Count(long number, const std::string &name) {
    return std::to_string(number) + " " + name + (number == 1 ? "" : "s");
}

void TellSound(const std::string &path, const TemplateWalk &walk) {
    TellFinding(path, 0,
                Count(walk.Fields, "field") + ", " + Count(walk.Groups, "group") + ", " + Count(walk.Lists, "list"));
}

// The names beside the template; none for one that comes through standard input or a pipe.
std::optional<DirectoryNames> NamesBeside(const std::string &path) {
    if (path == "-" || !FileExists(path)) return {};
    std::string directory;
    std::string name;
    SplitPath(path, directory, name);
    return DirectoryNames(directory.empty() ? "./" : directory);
}

int CheckOne(const std::string &path) {
    TemplateWalk walk;
    const Integer error = FaultOf([&] {
        const std::string bytes = ReadInput(path);
        const ItemInput input = TemplateText(bytes);
        const std::optional<DirectoryNames> beside = NamesBeside(path);
        walk = WalkTemplate(input, beside ? &*beside : nullptr);
        CheckBytes(bytes, input, walk);
        if (!walk.WrongHeader) CheckLoad(path, input, walk);
    });
    std::stable_sort(walk.Faults.begin(), walk.Faults.end(),
                     [](const TemplateFault &a, const TemplateFault &b) { return a.Line < b.Line; });
    for (const TemplateFault &fault : walk.Faults) TellFinding(path, fault.Line, TextOf(fault, walk.Refusal != 0));
    if (error != 0) return TellFileError(path, error);
    if (!walk.Faults.empty()) return SomethingFound;
    TellSound(path, walk);
    return NothingFound;
}

} // namespace

int CheckTemplate(const Arguments &arguments) {
    int status = NothingFound;
    std::size_t done = 0;
    for (const std::string &path : arguments.Files) {
        status = std::max(status, CheckOne(path));
        ShowProgress(++done, arguments.Files.size());
    }
    return status;
}
