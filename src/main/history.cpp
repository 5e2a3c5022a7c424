// Recording and going through the steps (history.h). Putting a state on the screen: history_states.h.
#include "main/history.h"

#include "main/history_position.h"
#include "main/history_states.h"
#include "model/field_model.h"
#include "platform/controls.h"
#include "platform/front.h"
#include "platform/runtime.h"
#include "screen/selection.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Step {
    Change What;
    Position Undone; // where the user is to be once it is undone
    Position Redone; // or done again
    std::string Name;
};

// What belongs to a state beside the entries.
struct Standing {
    bool Saved = false;
    bool Merges = false;  // the next report is merged
    std::size_t Name = 0; // in Names
};

// All of it; nothing before the first look.
struct History {
    KnownState Known;              // the present state
    std::vector<Step> Steps;       // those before At lead to the present state, the others are undone
    std::size_t At = 0;            // also the number of the present state
    std::vector<Standing> States;  // one more than steps
    std::vector<ReportName> Names; // what states have in common until a step changes it
    Position Stood;                // where the user was at the last look
    long Saves = 0;                // of TheFiles, by then
};

std::optional<History> Past;

Standing &Present() { return Past->States[Past->At]; }

void Begin() {
    History first;
    first.Known = StateNow();
    first.States = {{DataChanged == False, MergeIsOffered(), 0}};
    first.Names = {ReportNameNow()};
    first.Stood = PositionNow();
    first.Saves = TheFiles.Saves;
    Past = std::move(first);
}

// What a step is called that changed one value: nothing else tells it better.
std::string NameOf(const Change &what, const std::string &command) {
    if (!command.empty()) return command;
    const Integer element = ElementOf(what);
    return element == 0 ? "several values" : "value of " + FieldTitle[element];
}

void Push(Change what, const std::string &command) {
    History &past = *Past;
    const ReportName name = ReportNameNow();
    std::size_t number = Present().Name;
    if (past.Names[number] != name) {
        number = past.Names.size();
        past.Names.push_back(name);
    }
    past.Steps.resize(past.At);
    past.States.resize(past.At + 1);
    const Position before = PlaceOfChange(what, past.Stood);
    std::string called = NameOf(what, command);
    const bool one = IsOneValue(what);
    past.Steps.push_back({std::move(what), before, one ? before : PositionNow(), std::move(called)});
    past.States.push_back({DataChanged == False, MergeIsOffered(), number});
    ++past.At;
}

// Whatever a save has made of the values, they are what the report holds now; no other state is any more.
void TakeSave() {
    History &past = *Past;
    past.Saves = TheFiles.Saves;
    const ReportName name = ReportNameNow();
    past.Names[Present().Name] = name;
    for (Standing &state : past.States)
        if (past.Names[state.Name].IsSameFile(name)) state.Saved = false;
    Present() = {true, MergeIsOffered(), Present().Name};
}

void Look(const std::string &command) {
    History &past = *Past;
    Change what = TakeChange(past.Known);
    if (past.Saves != TheFiles.Saves)
        TakeSave();
    else if (!what.IsEmpty())
        Push(std::move(what), command);
    else {
        past.Names[Present().Name] = ReportNameNow();
        if (DataChanged == False) Present().Saved = true;
    }
    past.Stood = PositionNow();
}

void ShowStanding() {
    const Standing &state = Present();
    PutReportName(Past->Names[state.Name]);
    DataChanged = Truth(!state.Saved);
    OfferMerge(state.Merges);
}

void Go(bool back) {
    if (!Past || IsInterrupting() || !EntriesAreShown()) return;
    History &past = *Past;
    if (back ? past.At == 0 : past.At == past.Steps.size()) {
        ShowNote(back ? "There is nothing to undo." : "There is nothing to redo.");
        return;
    }
    Step &step = past.Steps[back ? past.At - 1 : past.At];
    const Exchanged exchanged = ExchangeState(past.Known, step.What);
    if (exchanged == Exchanged::Not) return;
    const bool done = exchanged == Exchanged::Done;
    if (done) past.At = back ? past.At - 1 : past.At + 1;
    ShowPosition(!done ? past.Stood : back ? step.Undone : step.Redone);
    ShowStanding();
    if (done) ShowNote((back ? "Undone: " : "Redone: ") + step.Name);
}

} // namespace

void RecordStep(const std::string &command) {
    if (!HasFirstState()) return;
    // Without memory for a step there is none to go back to, but the work goes on.
    if (FaultOf([&] { Past ? Look(command) : Begin(); }) != 0) Past.reset();
}

void Undo_Click() { Go(true); }

void Redo_Click() { Go(false); }

std::size_t HistoryBytes() {
    if (!Past) return 0;
    std::size_t bytes = Bytes(Past->Known.Entries);
    for (const Step &step : Past->Steps)
        bytes += sizeof(Step) + sizeof(Standing) + step.Name.capacity() + Bytes(step.What);
    return bytes;
}
