// Reading a report file (reader.h): records to elements. Occurrences of groups: group_reader.cpp; the index that finds
// an element: title_index.cpp; the command around it: load_command.cpp.
#include "report/reader.h"

#include "main/main_window.h"
#include "model/field_model.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/front.h"
#include "platform/items.h"
#include "report/choice_matching.h"
#include "report/group_reader.h"
#include "report/merge.h"
#include "report/records.h"
#include "report/title_index.h"
#include "screen/row_text.h"

#include <new>
#include <utility>

namespace {

// The report being read, and where its present record begins.
const ItemInput *Present = nullptr;
std::size_t RecordAt = 0;
LinePlace Counted;

bool SkipTooDeep(const ReportRecord &record) {
    return MsgBox("The nesting level (" + std::to_string(record.Level) + " ) of this field (" + record.Title +
                      " ) exceeds that allowed by the Fields Template File (" + std::to_string(DeepestLevel) + ")" +
                      NL + NL + "Press OK to continue",
                  OkCancel + InformationIcon, "Bad Nesting Level") == OkAnswer;
}

void ShowSlot(Integer row) {
    Control &rows = Quintave.List1[0];
    SetRow(rows, row, RowWithValue(rows.Rows[static_cast<std::size_t>(row)], RowValue[row]));
}

// Puts a value into the slot of an element and shows it in its row, before its choice file can fail and after its list
// may have refused it.
void StoreFieldValue(Integer element, const std::string &value) {
    const Integer row = ToInteger(FieldRow[element] - 1);
    std::string &slot = RowValue[row];
    const Integer level = FieldInfo[element][LevelItem];
    if (!slot.empty() && level > 0) AskOverwriteFields();
    const bool adds = level >= 0 && MergeFlag == AddInstances && !slot.empty();
    if (adds && value.empty()) return; // nothing to add
    if (!adds && !slot.empty() && slot != value && OnReplacedValue != nullptr) OnReplacedValue(element);
    if (adds)
        slot += "|" + value;
    else
        slot = value;
    ShowSlot(row);
    if (!IsList(element)) return;
    MatchChoiceValue(element);
    ShowSlot(row);
}

// Places one value record; TmpStr is "No Match Found!" or "CANCELLED!" where it could not be placed.
void MatchReportField(const ReportRecord &record) {
    const Integer member =
        InOccurrence() ? FindElement(record.Level, record.Title, Target::Member, OpenBlock()) : Integer{0};
    const Integer field = member != 0 ? Integer{0} : FindElement(record.Level, record.Title, Target::Field);
    if (member != 0) {
        PlaceMember(member, record.Text);
    } else if (field != 0) {
        StoreFieldValue(field, record.Text);
    } else {
        TmpStr = MayDropRecord(record.Title) ? "No Match Found!" : "CANCELLED!";
    }
}

// False where the user stopped the load.
bool PlaceRecord(const ReportRecord &record) {
    if (record.Count == GroupEndMarker) {
        EndBlock();
        return true;
    }
    // Nothing is asked about the records of an occurrence that is dropped.
    const bool dropped = SkipsOccurrence() && record.Count != OccurrenceMarker;
    if (record.Level > DeepestLevel) {
        if (record.Count == OccurrenceMarker) DropOccurrences();
        return dropped || SkipTooDeep(record);
    }
    NoteTitleRead(record.Level, record.Title);
    TmpStr.clear(); // only an answer given for this record may stop the load
    if (record.Count == OccurrenceMarker)
        BeginOccurrence(record.Level, record.Title);
    else if (record.Count >= 0 && !dropped)
        MatchReportField(record);
    return TmpStr != "CANCELLED!";
}

bool PlaceRecords(ItemInput &input) {
    constexpr int RecordsPerBreath = 200;
    ReportRecord record;
    for (int count = 1; !AtEnd(input); ++count) {
        BeginRecord(input);
        RecordAt = input.At;
        ReadReportRecord(input, record);
        if (!PlaceRecord(record)) return false;
        if (count % RecordsPerBreath == 0) KeepWindowAlive();
    }
    return true;
}

void TellLoadError(Integer number) {
    MsgBox("Error:  " + ErrorText(number) + NL + NL + NL + "Quintave Data Fields may have been corrupted!" + NL + NL +
               "You might want to `RESET' and start over!",
           CriticalIcon, "ERROR LOADING " + NameText(ReportFileName));
}

// The first file after a start, a reset or a new template is the one Save writes to; after a second one no file is.
void RememberFile() {
    if (FileMark == FirstLoad) {
        FileMark = ReportFileName;
        FileMarkDir = ReportFileDir;
    } else {
        FileMark.clear();
        DataChanged = True;
    }
}

// What a part of a file leaves on screen must not be saved over the whole of it unasked.
void ForgetFile() {
    FileMark.clear();
    DataChanged = True;
}

// The occurrences of a block that a fault cut short stay, as every value before the fault does. That they cannot be
// stored either is not worth a second message.
void KeepOpenBlock() { FaultOf(EndBlock); }

LoadResult PlaceFile(ItemInput &input) {
    Present = &input;
    RecordAt = 0;
    Counted = {};
    RememberFile();
    StartMerge();
    ForgetTitlesRead();
    ForgetChoices();
    StartBlocks();
    bool whole = false;
    const Integer fault = FaultOf([&] {
        whole = PlaceRecords(input);
        EndBlock();
    });
    if (fault != 0) {
        KeepOpenBlock();
        TellLoadError(fault);
    }
    TellCutMembers();
    if (whole && fault == 0) return LoadResult::Whole;
    ForgetFile();
    return LoadResult::Stopped;
}

} // namespace

LoadResult LoadReportFile() {
    ItemInput input;
    const Integer fault = FaultOf([&] { input = OpenItems(ReportFileDir + ReportFileName); });
    if (fault != 0) {
        TellLoadError(fault);
        return LoadResult::Refused;
    }
    return LoadReport(std::move(input));
}

LoadResult LoadReport(ItemInput input) {
    if (!ReadReportHeader(input)) {
        MsgBox("This File is not properly identified as a version 2 Quintave file!" + NL + NL +
                   "File load procedure has been CANCELLED!",
               CriticalIcon, "INVALID FILE FORMAT");
        return LoadResult::Refused;
    }
    const BusyPointer busy;
    const LoadResult result = PlaceFile(input);
    Present = nullptr;
    return result;
}

long RecordLine() { return Present == nullptr ? 1 : LineAt(Counted, Present->Bytes, RecordAt); }
