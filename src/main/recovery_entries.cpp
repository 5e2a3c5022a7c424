// Entries to items and back (recovery_entries.h).
#include "main/recovery_entries.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "model/field_model.h"
#include "model/store.h"
#include "report/records.h"
#include "screen/selection.h"
#include "screen/value_entry.h"

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

void AddOrigin(std::string &items, const EntriesState &entries) {
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
    if (GroupIsOpen()) AddItem(items, OpenKind, GroupHead(), std::string_view(entries.GroupItems).substr(1));
}

void Need(bool condition) {
    if (!condition) throw RuntimeError{SubscriptOutOfRange};
}

void PlaceValue(Integer row, std::string_view value) {
    Need(row >= 0 && row < NumRows && HasValue(RowField[row]));
    RowValue[row] = value;
    ShowValueInRow(row, value);
}

void PlaceChoice(Integer element, std::string_view digits) {
    Integer choice = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), choice);
    Need(element >= 1 && choice >= (IsList(element) ? -1 : 0) && (IsList(element) || IsGroupStart(element)));
    FieldInfo[element][Choice] = choice;
}

void PlaceOccurrences(Integer head, std::string_view occurrences) {
    Need(head >= 1 && IsGroupStart(head));
    const auto length = static_cast<std::size_t>(LengthOf(head));
    Need(length > 0 && !occurrences.empty() && occurrences.size() % length == 0);
    ReplaceStore(head, occurrences);
}

void PlaceOpenOccurrence(Integer head, std::string_view cells) {
    Need(head >= 1 && IsGroupStart(head));
    std::string occurrences;
    const GroupCounts counts = ReadStore(head, occurrences);
    const auto length = static_cast<std::size_t>(counts.Items);
    const std::size_t first = static_cast<std::size_t>(FieldInfo[head][Choice]) * length;
    Need(first < occurrences.size() && cells.size() == length);
    occurrences.replace(first, length, cells);
    ReplaceStore(head, occurrences);
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
    std::string occurrences;
    for (const Integer head : WrittenStores()) {
        ReadStore(head, occurrences);
        if (occurrences.empty()) continue; // a store that somebody cut short to its counts
        file.Write(ItemLine(GroupKind, head, occurrences.size()));
        file.Write(occurrences);
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

void PlaceEntries(const std::vector<RecoveryItem> &items) {
    const EntriesOrigin origin = OriginOf(items);
    Need(origin.Report.empty() || origin.Report == FirstLoad || IsReportName(origin.Report));
    for (const RecoveryItem &item : items) {
        if (item.Kind == ValueKind) PlaceValue(item.Number, item.Bytes);
        if (item.Kind == ChoiceKind) PlaceChoice(item.Number, item.Bytes);
        if (item.Kind == GroupKind) PlaceOccurrences(item.Number, item.Bytes);
    }
    for (const RecoveryItem &item : items)
        if (item.Kind == OpenKind) PlaceOpenOccurrence(item.Number, item.Bytes);
    FileMark = origin.Report;
    FileMarkDir = origin.ReportDir;
    SetCaption(Quintave.editframe, origin.Caption);
    MarkChanged();
}
