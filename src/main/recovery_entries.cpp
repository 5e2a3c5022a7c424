// Entries to items and back (recovery_entries.h).
#include "main/recovery_entries.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "model/cells.h"
#include "model/field_model.h"
#include "model/store.h"
#include "platform/codepage.h"
#include "report/records.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <charconv>

namespace {

// Kinds of items. Their number is a row, an element, or 0.
constexpr std::string_view FolderKind = "template-folder"; // relative: below the resource directory
constexpr std::string_view TemplateKind = "template";
constexpr std::string_view MarkKind = "template-mark";
constexpr std::string_view ReportFolderKind = "report-folder";
constexpr std::string_view ReportKind = "report";
constexpr std::string_view CaptionKind = "caption";
constexpr std::string_view ValueKind = "value";   // of a row
constexpr std::string_view ChoiceKind = "choice"; // chosen entry of a list, occurrence last shown of a group
constexpr std::string_view GroupKind = "group";   // all occurrences
constexpr std::string_view OpenKind = "open";     // the occurrence in hand, last shown of its group
constexpr std::string_view TextKind = "utf-8";    // in front of the others; without it they are in Windows-1252

// In the place of "group" and "open" where their characters are not all in Windows-1252: the number of bytes of an
// occurrence and a line feed stand in front of the occurrences.
constexpr std::string_view WideGroupKind = "wide-group";
constexpr std::string_view WideOpenKind = "wide-open";

std::string BelowResources(const std::string &directory) {
    return directory.starts_with(ResourceDir) ? directory.substr(ResourceDir.size()) : directory;
}

// The next start may have another current directory.
std::string FromRoot(const std::string &directory) {
    return directory.empty() || directory.starts_with('/') ? directory : CurrentDirectory() + directory;
}

// The entries with the edit that is still open.
EntriesState EnteredSoFar() {
    EntriesState entries = TheEntries;
    if (GroupIsOpen()) {
        entries.GroupItems = EditedItems();
        entries.Chosen[GroupHead()] = GroupLoadedOccurrence;
    } else if (CurrentField >= 0 && CurrentField < NumRows) {
        entries.RowValue[CurrentField] = EditedValue();
    }
    return entries;
}

// What stands in front of the bytes of occurrences.
std::string InFrontOf(const Cells &cells) { return cells.Wide ? std::to_string(cells.Record) + "\n" : ""; }

void AddOrigin(std::string &items, const EntriesState &entries) {
    AddItem(items, TextKind, 0, "");
    AddItem(items, FolderKind, 0, BelowResources(TemplateDir));
    AddItem(items, TemplateKind, 0, TemplateName);
    AddItem(items, MarkKind, 0, std::to_string(TemplateMark));
    AddItem(items, ReportFolderKind, 0, FromRoot(entries.FileMarkDir));
    AddItem(items, ReportKind, 0, entries.FileMark);
    AddItem(items, CaptionKind, 0, Quintave.editframe.Caption);
}

void AddEntries(std::string &items, const EntriesState &entries) {
    for (Integer row = 0; row < NumRows; ++row)
        if (!entries.RowValue[row].empty()) AddItem(items, ValueKind, row, entries.RowValue[row]);
    for (const Integer e : Elements()) {
        const Integer none = IsList(e) ? Integer{-1} : Integer{0};
        if (entries.Chosen[e] != none) AddItem(items, ChoiceKind, e, std::to_string(entries.Chosen[e]));
    }
    const Cells &open = entries.GroupItems;
    if (GroupIsOpen()) AddItem(items, open.Wide ? WideOpenKind : OpenKind, GroupHead(), InFrontOf(open) + open.Bytes);
}

void Need(bool condition) {
    if (!condition) throw RuntimeError{SubscriptOutOfRange};
}

void PlaceChoice(Integer element, std::string_view digits) {
    Integer choice = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), choice);
    Need(element >= 1 && choice >= (IsList(element) ? -1 : 0) && (IsList(element) || IsGroupStart(element)));
    FieldInfo[element][Choice] = choice;
}

// The occurrences of an item.
Cells CellsOf(const RecoveryItem &item) {
    Need(item.Number >= 1 && IsGroupStart(item.Number));
    Cells cells = NarrowCells(static_cast<std::size_t>(LengthOf(item.Number)), std::string(item.Bytes));
    if (item.Kind == WideGroupKind || item.Kind == WideOpenKind) {
        const std::size_t line = std::min(cells.Bytes.find('\n'), cells.Bytes.size() - 1);
        cells = {static_cast<std::size_t>(NumericValue(cells.Bytes)), true, cells.Bytes.substr(line + 1)};
    }
    Need(cells.Record > 0 && !cells.Bytes.empty() && cells.Bytes.size() % cells.Record == 0);
    return cells;
}

void PlaceOpenOccurrence(Integer head, const Cells &cells) {
    Cells occurrences;
    ReadStore(head, occurrences);
    const auto shown = static_cast<std::size_t>(FieldInfo[head][Choice]);
    Need(shown < CountIn(occurrences) && CountIn(cells) == 1);
    PutOccurrence(occurrences, Members(head), shown, cells);
    ReplaceStore(head, std::move(occurrences));
}

} // namespace

std::string EntriesOnScreen() {
    const EntriesState entries = EnteredSoFar();
    std::string items;
    AddOrigin(items, entries);
    AddEntries(items, entries);
    return items;
}

void WriteEntries(const std::string &entries) {
    RecoveryWriter file;
    file.Write(entries);
    Cells occurrences;
    for (const Integer head : WrittenStores()) {
        ReadStore(head, occurrences);
        if (occurrences.Bytes.empty()) continue; // a store that somebody cut short to its counts
        const std::string front = InFrontOf(occurrences);
        file.Write(
            ItemLine(occurrences.Wide ? WideGroupKind : GroupKind, head, front.size() + occurrences.Bytes.size()));
        file.Write(front);
        file.Write(occurrences.Bytes);
        file.Write("\n");
    }
    file.Close();
}

EntriesOrigin OriginOf(const std::vector<RecoveryItem> &items) {
    EntriesOrigin origin;
    for (const RecoveryItem &item : items) {
        if (item.Kind == FolderKind) origin.TemplateDir = item.Bytes;
        if (item.Kind == TemplateKind) origin.TemplateName = item.Bytes;
        if (item.Kind == MarkKind) origin.TemplateMark = item.Bytes;
        if (item.Kind == ReportFolderKind) origin.ReportDir = item.Bytes;
        if (item.Kind == ReportKind) origin.Report = item.Bytes;
        if (item.Kind == CaptionKind) origin.Caption = item.Bytes;
    }
    if (!origin.TemplateDir.starts_with('/')) origin.TemplateDir.insert(0, ResourceDir);
    return origin;
}

void PlaceValue(Integer row, std::string_view value) {
    Need(row >= 0 && row < NumRows && HasValue(RowField[row]));
    RowValue[row] = value;
    ShowValueInRow(row, value);
}

void PlaceEntries(const std::vector<RecoveryItem> &items) {
    const EntriesOrigin origin = OriginOf(items);
    Need(origin.Report.empty() || origin.Report == FirstLoad || IsReportName(origin.Report));
    const bool isUtf8 = !items.empty() && items.front().Kind == TextKind;
    for (const RecoveryItem &item : items) {
        if (item.Kind == ValueKind) PlaceValue(item.Number, isUtf8 ? std::string(item.Bytes) : ToUtf8(item.Bytes));
        if (item.Kind == ChoiceKind) PlaceChoice(item.Number, item.Bytes);
        if (item.Kind == GroupKind || item.Kind == WideGroupKind) ReplaceStore(item.Number, CellsOf(item));
    }
    for (const RecoveryItem &item : items)
        if (item.Kind == OpenKind || item.Kind == WideOpenKind) PlaceOpenOccurrence(item.Number, CellsOf(item));
    FileMark = origin.Report;
    FileMarkDir = origin.ReportDir;
    SetCaption(Quintave.editframe, isUtf8 ? origin.Caption : ToUtf8(origin.Caption));
    MarkChanged();
}
