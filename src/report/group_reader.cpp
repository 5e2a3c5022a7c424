// Occurrences in a report being read (group_reader.h).
#include "report/group_reader.h"

#include "model/cells.h"
#include "model/field_model.h"
#include "model/store.h"
#include "platform/characters.h"
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
    Cells Occurrences; // those so far
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
    OpenedBlock.Occurrences = BlankCells(static_cast<std::size_t>(LengthOf(head)), 0);
    Cells stored;
    ReadStore(head, stored);
    OpenedBlock.StoreBlank = IsBlank(stored);
    if (!OpenedBlock.StoreBlank) AskOverwriteGroups();
}

// Its place among the members of the group being read.
std::size_t PlaceOf(Integer member) {
    const GroupMembers &members = Members(OpenedBlock.Head);
    const auto place = std::lower_bound(members.begin(), members.end(), member,
                                        [](const Member &m, Integer element) { return m.Element < element; });
    return static_cast<std::size_t>(place - members.begin());
}

std::string FittedValue(Integer member, std::string_view value) {
    std::string text(value);
    std::erase(text, '|'); // a member holds no instances
    text = RTrim(text);
    const auto cells = static_cast<std::size_t>(LengthOf(member));
    const std::string_view fitting = FirstCharacters(text, cells);
    if (fitting.size() == text.size()) return text;
    CutMembers.insert(member);
    TellValueCut(member);
    if (FirstCut == 0) FirstCut = member;
    text.resize(fitting.size());
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
    ToInteger(CountIn(OpenedBlock.Occurrences) + 1); // those before one too many stay
    AppendBlankOccurrence(OpenedBlock.Occurrences, Members(head));
    return true;
}

bool InOccurrence() { return OpenedBlock.Head != 0; }

Integer OpenBlock() { return OpenedBlock.Head; }

bool SkipsOccurrence() { return OpenedBlock.Unknown; }

void PlaceMember(Integer member, std::string_view value) {
    // What is no choice as the record has it does not become one by being cut.
    const bool refused = IsList(member) && !MatchMemberChoice(member, std::string(value));
    const std::string placed = refused ? "" : FittedValue(member, value);
    const GroupMembers &members = Members(OpenedBlock.Head);
    const std::size_t place = PlaceOf(member);
    const std::size_t last = CountIn(OpenedBlock.Occurrences) - 1;
    std::string room;
    const std::string_view former = MemberIn(OpenedBlock.Occurrences, members, last, place, room);
    if (!IsBlank(former) && RTrim(former) != placed) {
        TellValueReplaced(member);
        NoteLeftOut();
    }
    PutMember(OpenedBlock.Occurrences, members, last, place, placed);
    OpenedBlock.HasValue = OpenedBlock.HasValue || !placed.empty();
}

void EndBlock() {
    const Block block = std::exchange(OpenedBlock, {});
    if (!block.HasValue) return;
    const bool again = !Stored.insert(block.Head).second;
    if (block.StoreBlank) {
        ReplaceStore(block.Head, block.Occurrences);
        return;
    }
    Cells stored;
    ReadStore(block.Head, stored);
    if (MergeFlag != AddInstances) {
        if (stored != block.Occurrences) TellValueReplaced(block.Head);
        if (again) NoteLeftOut();
        stored.Bytes.clear();
    }
    AppendCells(stored, Members(block.Head), block.Occurrences);
    ReplaceStore(block.Head, std::move(stored));
}

void TellCutMembers() {
    if (!CutMembers.empty()) TellValuesCut(CutMembers.size(), FirstCut);
}
