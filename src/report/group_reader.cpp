// Occurrences in a report being read (group_reader.h).
#include "report/group_reader.h"

#include "model/field_model.h"
#include "model/store.h"
#include "report/choice_matching.h"
#include "report/notices.h"
#include "report/title_index.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace {

// The block being read.
struct Block {
    Integer Head = 0;        // element that starts the group; 0: no block
    bool Unknown = false;    // its records are skipped
    bool StoreBlank = false; // the store held nothing when the block began
    bool HasValue = false;
    std::string Cells;       // of all its occurrences so far
    Integer Occurrences = 0; // of this block
    std::size_t Length = 0;  // cells of one occurrence
};

Block OpenedBlock;

// Groups that this load has put a block into.
std::set<Integer> Stored;

// Members some value of which did not fit, and the first of them; empty and 0 for none.
std::set<Integer> CutMembers;
Integer FirstCut = 0;

void BeginBlock(Integer head) {
    OpenedBlock = {};
    OpenedBlock.Head = head;
    OpenedBlock.Length = static_cast<std::size_t>(LengthOf(head));
    std::string stored;
    ReadStore(head, stored);
    OpenedBlock.StoreBlank = IsBlank(stored);
    if (!OpenedBlock.StoreBlank) AskOverwriteGroups();
}

const Member &PlaceOf(Integer member) {
    const std::vector<Member> &members = Members(OpenedBlock.Head);
    return *std::lower_bound(members.begin(), members.end(), member,
                             [](const Member &m, Integer element) { return m.Element < element; });
}

std::string FittedValue(Integer member, std::string_view value) {
    std::string text(value);
    std::erase(text, '|'); // a member holds no instances
    text = RTrim(text);
    const auto cells = static_cast<std::size_t>(LengthOf(member));
    if (text.size() <= cells) return text;
    CutMembers.insert(member);
    TellValueCut(member);
    if (FirstCut == 0) FirstCut = member;
    text.resize(cells);
    if (text.ends_with('\r')) text.pop_back(); // half a line break
    return text;
}

} // namespace

void StartBlocks() {
    OpenedBlock = {};
    Stored.clear();
    CutMembers.clear();
    FirstCut = 0;
}

bool BeginOccurrence(Integer level, const std::string &title) {
    // The group being read goes on: its members may have put other titles in the place of those above it.
    const Integer open = OpenedBlock.Head;
    const bool goesOn = open != 0 && LevelOf(open) == level && FieldTitle[open] == title;
    const Integer head = goesOn ? open : FindElement(level, title, Target::Group);
    if (head == 0) {
        EndBlock();
        OpenedBlock.Unknown = true;
        return MayDropRecord(title);
    }
    if (head != OpenedBlock.Head) {
        EndBlock();
        BeginBlock(head);
    }
    OpenedBlock.Occurrences = ToInteger(OpenedBlock.Occurrences + 1); // those before one too many stay
    OpenedBlock.Cells.append(OpenedBlock.Length, ' ');
    return true;
}

bool InOccurrence() { return OpenedBlock.Head != 0; }

Integer OpenBlock() { return OpenedBlock.Head; }

bool SkipsOccurrence() { return OpenedBlock.Unknown; }

void PlaceMember(Integer member, std::string_view value) {
    // What is no choice as the record has it does not become one by being cut.
    const bool refused = IsList(member) && !MatchMemberChoice(member, std::string(value));
    const std::string placed = refused ? "" : FittedValue(member, value);
    const Member &place = PlaceOf(member);
    std::string padded = placed;
    padded.resize(place.Cells, ' ');
    const std::size_t first = OpenedBlock.Cells.size() - OpenedBlock.Length + place.First;
    const std::string_view former = std::string_view(OpenedBlock.Cells).substr(first, place.Cells);
    if (!IsBlank(former) && former != padded) {
        TellValueReplaced(member);
        NoteLeftOut();
    }
    OpenedBlock.Cells.replace(first, place.Cells, padded);
    OpenedBlock.HasValue = OpenedBlock.HasValue || !placed.empty();
}

void EndBlock() {
    const Block block = std::exchange(OpenedBlock, {});
    if (!block.HasValue) return;
    std::string stored;
    if (!block.StoreBlank) ReadStore(block.Head, stored);
    const bool again = !Stored.insert(block.Head).second;
    if (MergeFlag != AddInstances && !stored.empty()) {
        if (stored != block.Cells) TellValueReplaced(block.Head);
        if (again) NoteLeftOut();
        stored.clear();
    }
    ReplaceStore(block.Head, stored + block.Cells);
}

void TellCutMembers() {
    if (!CutMembers.empty()) TellValuesCut(CutMembers.size(), FirstCut);
}
