// Reading a report (reader.h): records to elements. Occurrences of groups: group_reader.cpp; the index that finds an
// element: title_index.cpp; the command around it: load_command.cpp.
#include "report/reader.h"

#include "model/field_model.h"
#include "report/choice_matching.h"
#include "report/group_reader.h"
#include "report/notices.h"
#include "report/records.h"
#include "report/title_index.h"

#include <vector>

namespace {

// By element: this load has put a value into it.
std::vector<bool> Filled;

// The value of an element goes behind those that it holds. Nothing is asked at level 0: there the first value of a load
// replaces what was on the screen, and each further one is a further instance.
bool Adds(Integer element) {
    const Integer level = FieldInfo[element][LevelItem];
    if (level == 0 && MergeFlag == Undecided) return Filled[static_cast<std::size_t>(element)];
    return level >= 0 && MergeFlag == AddInstances;
}

// Puts a value into the slot of an element, told before its choice file can fail and after its list may have refused
// it.
void StoreFieldValue(Integer element, const std::string &value) {
    if (!ValueOf(element).empty() && FieldInfo[element][LevelItem] > 0) AskOverwriteFields();
    std::string &slot = ValueOf(element);
    const bool adds = !slot.empty() && Adds(element);
    const bool more = Filled[static_cast<std::size_t>(element)];
    Filled[static_cast<std::size_t>(element)] = true;
    if (adds && value.empty()) return; // nothing to add
    if (!adds && !slot.empty() && slot != value) {
        TellValueReplaced(element);
        if (more) NoteLeftOut();
    }
    if (adds)
        slot += "|" + value;
    else
        slot = value;
    const Integer row = ToInteger(FieldRow[element] - 1);
    NotePlaced(row);
    if (!IsList(element)) return;
    MatchChoiceValue(element);
    NotePlaced(row);
}

// Places one value record; false where it has no place and the user stops the load.
bool MatchReportField(const ReportRecord &record) {
    const Integer member =
        InOccurrence() ? FindElement(record.Level, record.Title, Target::Member, OpenBlock()) : Integer{0};
    const Integer field = member != 0 ? Integer{0} : FindElement(record.Level, record.Title, Target::Field);
    if (member != 0)
        PlaceMember(member, record.Text);
    else if (field != 0)
        StoreFieldValue(field, record.Text);
    else
        return MayDropRecord(record.Title);
    return true;
}

// False where the user stopped the load.
bool PlaceRecord(const ReportRecord &record) {
    // Nothing is asked about the records of an occurrence that is dropped.
    const bool dropped = SkipsOccurrence() && record.Count != OccurrenceMarker;
    const bool isEnd = record.Count == GroupEndMarker;
    // Skipped alone: what stands behind a marker that is too deep is read as if it were not there.
    if (record.Level > DeepestLevel) return isEnd || dropped || MaySkipTooDeep(record.Level, record.Title);
    if (isEnd) {
        EndBlock();
        return true;
    }
    NoteTitleRead(record.Level, record.Title);
    if (record.Count == OccurrenceMarker) return BeginOccurrence(record.Level, record.Title);
    return record.Count < 0 || dropped || MatchReportField(record);
}

bool PlaceRecords(ItemInput &input) {
    ReportRecord record;
    while (!AtEnd(input)) {
        BeginRecord(input);
        NoteRecord(input.At);
        ReadReportRecord(input, record);
        if (!PlaceRecord(record)) return false;
    }
    return true;
}

// The occurrences of a block that a fault cut short stay, as every value before the fault does. That they cannot be
// stored either is not worth a second message.
void KeepOpenBlock() { FaultOf(EndBlock); }

} // namespace

LoadResult ReadReport(ItemInput &input, const LoadFront &front) {
    BeginNotices(front, input);
    if (!ReadReportHeader(input)) {
        TellNotAReport();
        return LoadResult::Refused;
    }
    TellEncoding();
    ForgetTitlesRead();
    Filled.assign(static_cast<std::size_t>(NumFields) + 1, false);
    StartBlocks();
    bool whole = false;
    const Integer fault = FaultOf([&] {
        whole = PlaceRecords(input);
        EndBlock();
    });
    if (fault != 0) {
        KeepOpenBlock();
        TellDamaged(fault);
    }
    TellCutMembers();
    if (!whole || fault != 0) return LoadResult::Stopped;
    return LeftSomethingOut() ? LoadResult::Partial : LoadResult::Whole;
}
