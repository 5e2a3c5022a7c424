// quintave-cli check-template: what is wrong with templates.
#include "cli/commands.h"
#include "cli/files.h"
#include "cli/lost_fields.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "cli/template_walk.h"
#include "model/field_model.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

long LineOf(const TemplateWalk &walk, Integer element) {
    const auto place = static_cast<std::size_t>(element - 1);
    return place < walk.Lines.size() ? walk.Lines[place] : 0;
}

std::string LineText(const TemplateWalk &walk, Integer element) {
    return "line " + std::to_string(LineOf(walk, element));
}

void CheckPaths(TemplateWalk &walk) {
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

// What only the loaded template shows.
void CheckLoaded(const std::string &path, const std::string &bytes, TemplateWalk &walk) {
    const std::string refusal = LoadTemplate(path, bytes);
    if (!refusal.empty())
        walk.Faults.push_back({0, "A load refuses it: " + refusal});
    else
        CheckPaths(walk);
}

int CheckOne(const std::string &path) {
    TemplateWalk walk;
    const Integer error = FaultOf([&] {
        const std::string bytes = ReadInput(path);
        const ItemInput input = ItemsOf(bytes);
        walk = WalkTemplate(input);
        if (const long line = CuttingLine(bytes); line != 0) walk.Faults.push_back({line, std::string(CutByEndMark)});
        if (!walk.Refused) CheckLoaded(path, input.Bytes, walk);
    });
    std::stable_sort(walk.Faults.begin(), walk.Faults.end(),
                     [](const TemplateFault &a, const TemplateFault &b) { return a.Line < b.Line; });
    for (const TemplateFault &fault : walk.Faults) TellFinding(path, fault.Line, fault.Text);
    if (error != 0) return TellFileError(path, error);
    return walk.Faults.empty() ? NothingFound : SomethingFound;
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
