// quintave-cli check-template: what is wrong with templates.
#include "cli/commands.h"
#include "cli/files.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/rooms.h"
#include "cli/template_walk.h"
#include "model/field_model.h"
#include "platform/console/answers.h"
#include "report/title_index.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

// What the loader said of the present template; "" where it took it.
std::string Refusal;

Answer KeepRefusal(const ShownMessage &message) {
    Refusal = message.Text;
    return DefaultAnswer(message.Style);
}

// The element that a report gives a value to, which was written for another one: its own titles and those of what
// stands around it have been noted.
Integer ElementFor(Integer element) {
    const Integer level = LevelOf(element);
    NoteTitleRead(level, FieldTitle[element]);
    const Integer group = FieldGroup[element];
    const Target target = IsGroupStart(element) ? Target::Group : group != 0 ? Target::Member : Target::Field;
    return FindElement(level, FieldTitle[element], target, target == Target::Member ? group : Integer{0});
}

bool IsTarget(Integer element) { return HasValue(element) || IsGroupStart(element); }

bool IsHeading(Integer element) { return IsSection(element) || IsGroupStart(element); }

// What a report has above an element where nothing else is filled in: sections, and the group it is a member of.
std::vector<Integer> HeadingsAround(std::vector<Integer> &open, Integer element) {
    const bool isGroupEnd = FieldInfo[element][TypeCode] == GroupMark && !IsGroupStart(element);
    const Integer level = LevelOf(isGroupEnd ? FieldGroup[element] : element);
    while (!open.empty() && LevelOf(open.back()) >= level) open.pop_back();
    const std::vector<Integer> around = open;
    if (IsHeading(element)) open.push_back(element);
    return around;
}

long LineOf(const TemplateWalk &walk, Integer element) {
    const auto place = static_cast<std::size_t>(element - 1);
    return place < walk.Lines.size() ? walk.Lines[place] : 0;
}

std::string LostText(const TemplateWalk &walk, Integer element, Integer taker) {
    const std::string path = TitlePath(element);
    if (taker == 0) return "A report cannot give " + path + " back";
    const std::string line = "line " + std::to_string(LineOf(walk, taker));
    return TitlePath(taker) == path ? "The title path " + path + " is that of " + line + ", too, which takes all values"
                                    : "A report cannot give " + path + " back: " + line + " takes its values";
}

// Who takes the value of each field that does not get it back itself; 0 for nobody. Each field is tried alone in a
// report, then all of them in one.
std::map<Integer, Integer> FindLost() {
    std::map<Integer, Integer> takers;
    const auto tryElement = [&](Integer e) {
        const Integer taker = ElementFor(e);
        if (taker != e) takers.try_emplace(e, taker);
    };
    std::vector<Integer> open;
    for (int number = 1; number <= NumFields; ++number) {
        const Integer e = ToInteger(number);
        const std::vector<Integer> around = HeadingsAround(open, e);
        if (!IsTarget(e)) continue;
        ForgetTitlesRead();
        for (const Integer heading : around) NoteTitleRead(LevelOf(heading), FieldTitle[heading]);
        tryElement(e);
    }
    ForgetTitlesRead();
    for (int number = 1; number <= NumFields; ++number) {
        const Integer e = ToInteger(number);
        if (IsSection(e)) NoteTitleRead(LevelOf(e), FieldTitle[e]);
        if (IsTarget(e)) tryElement(e);
    }
    return takers;
}

// What only the loaded template shows.
void CheckLoaded(const std::string &path, const std::string &bytes, TemplateWalk &walk) {
    Refusal.clear();
    Dialogs.Reply = KeepRefusal;
    if (!LoadTemplate(path, bytes)) {
        walk.Faults.push_back({0, "A load refuses it: " + Refusal});
        return;
    }
    for (const auto &[element, taker] : FindLost())
        walk.Faults.push_back({LineOf(walk, element), LostText(walk, element, taker)});
}

int CheckOne(const std::string &path) {
    TemplateWalk walk;
    const Integer error = FaultOf([&] {
        const ItemInput input = ItemsOf(ReadInput(path));
        walk = WalkTemplate(input);
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
