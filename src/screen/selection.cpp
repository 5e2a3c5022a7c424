// The selected row (selection.h).
#include "screen/selection.h"

#include "form/main_window.h"
#include "groups/occurrence.h"
#include "model/field_model.h"
#include "model/row_text.h"
#include "report/choice_matching.h"
#include "screen/instance_text.h"

Control &ActiveRows() { return Quintave.List1.at(static_cast<std::size_t>(ActiveList)); }

Control &ActiveChoices() { return Quintave.List2.at(static_cast<std::size_t>(ActiveList)); }

Control &OtherBox(Integer list) { return Quintave.Text2.at(static_cast<std::size_t>(list) + 2); }

Control &ValueBox(Integer typeCode) { return Quintave.Text1.at(static_cast<std::size_t>(ActiveList - typeCode)); }

Integer SelectedElement() {
    return CurrentField >= 0 && CurrentField <= RowField.UpperBound() ? RowField[CurrentField] : Integer{0};
}

Integer ShownInstance() { return static_cast<Integer>(NumericValue(Quintave.FILabel[1].Caption)); }

Integer InstancesShown() { return Quintave.FIScroll.Max; }

std::string ShownText() {
    if (GroupIsOpen()) return RTrim(MemberText(CurrentField));
    if (CurrentField > RowValue.UpperBound()) return "";
    return InstanceText(RowValue[CurrentField], ShownInstance());
}

std::string SelectedChoice() { return SelectedRow(ActiveChoices()); }

Integer FindChoice(std::string_view text) {
    return ChoiceOf(ActiveChoices().Rows, text, ComparedLength(SelectedElement()));
}

void MarkChanged() {
    DataChanged = True;
    OfferMerge(true);
}

void OfferMerge(bool merges) { SetCaption(Quintave.CommandAdd, merges ? MergeCaption : OpenCaption); }

void SelectNextRow() {
    Control &rows = ActiveRows();
    if (static_cast<std::size_t>(CurrentField) + 1 < rows.Rows.size()) SetListIndex(rows, ToInteger(CurrentField + 1));
}

void ShowValueInRow(Integer row, std::string_view value) {
    Control &rows = ActiveRows();
    SetRow(rows, row, RowWithValue(rows.Rows.at(static_cast<std::size_t>(row)), value));
}
