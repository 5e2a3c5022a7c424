// Finding the choice that a text means (choice_matching.h).
#include "report/choice_matching.h"

#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/items.h"

#include <climits>

bool IsOther(std::string_view choice) { return Trim(UpperCase(choice)) == "OTHER..."; }

bool IsClear(std::string_view choice) { return Trim(UpperCase(choice)) == "<RESET/CLEAR FIELD ENTRY>"; }

std::vector<std::string> ReadChoiceFile(Integer element) {
    ItemInput input = OpenItems(ResourceDir + ChoiceFileName(element));
    std::vector<std::string> choices;
    while (!AtEnd(input)) choices.push_back(ReadTextLine(input, Input::Lenient));
    return choices;
}

long ComparedLength(Integer element) { return FieldRow[element] == 0 ? FieldInfo[element][KindItem] : LONG_MAX; }

Integer ChoiceOf(const std::vector<std::string> &choices, std::string_view text, long comparedLength) {
    if (Trim(text).empty()) return -1;
    Integer other = -1;
    Integer position = 0;
    for (const std::string &whole : choices) {
        const std::string choice = Left(whole, comparedLength);
        if (choice == text || RTrim(choice) == text) return position;
        if (IsOther(whole)) other = position;
        ++position;
    }
    return other;
}

namespace {

// True where the text has a place in the element's list, or is empty; otherwise after the message.
bool HasChoice(Integer element, const std::string &text) {
    FieldInfo[element][Choice] = -1;
    FieldInfo[element][Choice] = ChoiceOf(ReadChoiceFile(element), text, ComparedLength(element));
    if (FieldInfo[element][Choice] >= 0 || Trim(text).empty()) return true;
    MsgBox("No matching list option was found for the field " + Trim(FieldTitle[element]) +
               ", and this is a closed list (i.e., no 'Other...' option)!" + NL + NL + "Your existing field data ( '" +
               text + "' ) is NOT being loaded for this field!",
           ExclamationIcon, "WARNING - Field Data Not Found in List!");
    return false;
}

} // namespace

void MatchChoiceValue(Integer element) {
    if (!IsList(element)) return;
    std::string &value = RowValue[ToInteger(FieldRow[element] - 1)];
    if (!HasChoice(element, value.substr(0, value.find('|')))) value.clear();
}

bool MatchMemberChoice(Integer member, const std::string &text) { return HasChoice(member, text); }
