// Where the user stands (history_position.h).
#include "main/history_position.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "main/history_states.h"
#include "model/field_model.h"
#include "platform/files.h"
#include "screen/instances.h"
#include "screen/selection.h"

#include <algorithm>

namespace {

void SelectRow(Control &rows, Integer row) {
    SetListIndex(rows, std::clamp<Integer>(row, 0, ToInteger(rows.Rows.size() - 1)));
}

// The one store that has changed, and nothing else; null for none.
const StoreDifference *OnlyStore(const Change &change) {
    const EntriesDifference &values = change.Values;
    return change.Whole == nullptr && values.Rows.empty() && values.Stores.size() == 1 ? &values.Stores[0] : nullptr;
}

bool IsOnlyRow(const Change &change) {
    return change.Whole == nullptr && change.Values.Rows.size() == 1 && change.Values.Stores.empty();
}

// The cells lie in one occurrence, all of them being as long; or they are known to be one member's.
bool LieInOne(const StoreDifference &cells) {
    if (cells.Wide || cells.Member != 0) return cells.Member != 0;
    return cells.Bytes.size() == cells.Others &&
           cells.At / cells.Record == (cells.At + cells.Others - 1) / cells.Record;
}

std::size_t OccurrenceOf(const StoreDifference &cells) {
    return cells.Wide || cells.Member != 0 ? cells.Occurrence : cells.At / cells.Record;
}

Integer FieldOfRow(Integer row) {
    for (const Integer e : Elements())
        if (FieldRow[e] == row + 1) return e;
    return 0;
}

Integer MemberOf(const StoreDifference &cells) {
    if (cells.Wide || cells.Member != 0) return cells.Member;
    const std::size_t first = cells.At % cells.Record;
    for (const Member &member : Members(cells.Head))
        if (first >= member.First && first + cells.Others <= member.First + member.Cells) return member.Element;
    return 0;
}

} // namespace

Position PositionNow() {
    Position position;
    position.Row = std::max<Integer>(Quintave.List1[0].ListIndex, 0);
    if (GroupIsOpen()) {
        position.Group = GroupHead();
        position.Occurrence = GroupLoadedOccurrence;
        position.GroupRow = CurrentField;
    } else {
        position.Instance = ShownInstance();
    }
    return position;
}

void ShowPosition(const Position &position) {
    SelectRow(Quintave.List1[0], position.Row);
    if (position.Group != 0) {
        FieldInfo[position.Group][Choice] = position.Occurrence;
        OpenGroup(position.Group);
        if (GroupIsOpen()) SelectRow(ActiveRows(), position.GroupRow);
    } else if (position.Instance > 1) {
        ShowInstance(position.Instance);
    }
    SetFocus(ActiveRows());
}

Position PlaceOfChange(const Change &change, const Position &stood) {
    if (IsOnlyRow(change)) {
        const Integer row = change.Values.Rows[0].first;
        return stood.Group == 0 && stood.Row == row ? stood : Position{.Row = row};
    }
    const StoreDifference *const store = OnlyStore(change);
    if (store == nullptr || stood.Group == store->Head) return stood;
    return {.Row = ToInteger(FieldRow[store->Head] - 1),
            .Group = store->Head,
            .Occurrence = ToInteger(OccurrenceOf(*store))};
}

bool IsOneValue(const Change &change) {
    const StoreDifference *const store = OnlyStore(change);
    return IsOnlyRow(change) || (store != nullptr && LieInOne(*store));
}

Integer ElementOf(const Change &change) {
    if (!IsOneValue(change)) return 0;
    return IsOnlyRow(change) ? FieldOfRow(change.Values.Rows[0].first) : MemberOf(*OnlyStore(change));
}

bool ReportName::IsSameFile(const ReportName &other) const {
    return (Mark == other.Mark && MarkDir == other.MarkDir) || ::IsSameFile(MarkDir + Mark, other.MarkDir + other.Mark);
}

ReportName ReportNameNow() { return {FileMark, FileMarkDir, Quintave.editframe.Caption}; }

void PutReportName(const ReportName &name) {
    FileMark = name.Mark;
    FileMarkDir = name.MarkDir;
    SetCaption(Quintave.editframe, name.Caption);
}

bool MergeIsOffered() { return Quintave.CommandAdd.Caption == MergeCaption; }

bool HasFirstState() {
    constexpr Integer TemplateToLoad = -2;
    return LoadState != TemplateToLoad && !Quintave.List1[0].Rows.empty();
}

bool EntriesAreShown() { return Quintave.editframe.Visible && !Quintave.PrintFrame.Visible; }
