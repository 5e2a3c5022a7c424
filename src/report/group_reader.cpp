// Occurrences in a report being read (group_reader.h).
#include "report/group_reader.h"

#include "groups/store.h"
#include "model/field_model.h"
#include "platform/dialogs.h"
#include "report/choice_matching.h"
#include "report/merge.h"
#include "report/title_index.h"

#include <set>
#include <utility>
#include <vector>

void (*OnCutMember)(Integer member) = nullptr;

namespace {

// The block being read.
struct Block {
    Integer Head = 0;        // element that starts the group; 0: no block
    bool Unknown = false;    // its records are skipped
    bool StoreBlank = false; // the store held nothing when the block began
    bool HasValue = false;
    std::string Cells;                 // of all its occurrences so far
    Integer Occurrences = 0;           // of this block
    Integer Length = 0;                // cells of one occurrence
    std::vector<Integer> FirstCells{}; // of the elements behind the group start, within an occurrence
};

Block Present;

// Members some value of which did not fit, and the first of them; empty and 0 for none.
std::set<Integer> CutMembers;
Integer FirstCut = 0;

bool IsBlank(std::string_view cells) { return cells.find_first_not_of(' ') == std::string_view::npos; }

void BeginBlock(Integer head) {
    Present = {};
    Present.Head = head;
    for (Integer e = ToInteger(head + 1); e < GroupEnd(head); ++e) {
        Present.FirstCells.push_back(Present.Length);
        if (HasValue(e)) Present.Length = ToInteger(Present.Length + FieldInfo[e][KindItem]);
    }
    std::string stored;
    ReadStore(head, stored);
    Present.StoreBlank = IsBlank(stored);
    if (!Present.StoreBlank) AskOverwriteGroups();
}

// Where a member's cells begin in the occurrence being built.
std::size_t FirstCellOf(Integer member) {
    const auto place = static_cast<std::size_t>(member - Present.Head - 1);
    return Present.Cells.size() - static_cast<std::size_t>(Present.Length - Present.FirstCells.at(place));
}

std::string FittedValue(Integer member, std::string_view value) {
    std::string text(value);
    std::erase(text, '|'); // a member holds no instances
    text = RTrim(text);
    const auto cells = static_cast<std::size_t>(FieldInfo[member][KindItem]);
    if (text.size() <= cells) return text;
    CutMembers.insert(member);
    if (OnCutMember != nullptr) OnCutMember(member);
    if (FirstCut == 0) FirstCut = member;
    text.resize(cells);
    if (text.ends_with('\r')) text.pop_back(); // half a line break
    return text;
}

} // namespace

void StartBlocks() {
    Present = {};
    CutMembers.clear();
    FirstCut = 0;
}

void BeginOccurrence(Integer level, const std::string &title) {
    const Integer head = FindElement(level, title, Target::Group);
    if (head == 0) {
        DropOccurrences();
        TmpStr = MayDropRecord(title) ? "No Match Found!" : "CANCELLED!";
        return;
    }
    if (head != Present.Head) {
        EndBlock();
        BeginBlock(head);
    }
    Present.Occurrences = ToInteger(Present.Occurrences + 1); // those before one too many stay
    Present.Cells.append(static_cast<std::size_t>(Present.Length), ' ');
}

void DropOccurrences() {
    EndBlock();
    Present.Unknown = true;
}

bool InOccurrence() { return Present.Head != 0; }

Integer OpenBlock() { return Present.Head; }

bool SkipsOccurrence() { return Present.Unknown; }

void PlaceMember(Integer member, std::string_view value) {
    const std::string text = FittedValue(member, value);
    const auto cells = static_cast<std::size_t>(FieldInfo[member][KindItem]);
    const std::string placed = IsList(member) && !MatchMemberChoice(member, text) ? "" : text;
    std::string padded = placed;
    padded.resize(cells, ' ');
    const std::size_t first = FirstCellOf(member);
    const std::string_view former = std::string_view(Present.Cells).substr(first, cells);
    if (OnReplacedValue != nullptr && !IsBlank(former) && former != padded) OnReplacedValue(member);
    Present.Cells.replace(first, cells, padded);
    Present.HasValue = Present.HasValue || !placed.empty();
}

void EndBlock() {
    const Block block = std::exchange(Present, {});
    if (!block.HasValue) return;
    std::string stored;
    if (!block.StoreBlank && MergeFlag == AddInstances) ReadStore(block.Head, stored);
    ReplaceStore(block.Head, stored + block.Cells);
}

void TellCutMembers() {
    if (CutMembers.empty()) return;
    MsgBox(
        "The data of " + std::to_string(CutMembers.size()) +
            " field(s) did not fit into their Repeating Group and were cut to the length that the Fields Template File "
            "allows!" +
            NL + NL + "First field: " + FieldTitle[FirstCut],
        ExclamationIcon, CutTitle);
}
