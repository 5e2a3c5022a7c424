// Finding the choice that a text means (choice_matching.h).
#include "report/choice_matching.h"

#include "model/field_model.h"
#include "model/text_files.h"
#include "model/work_files.h"
#include "platform/characters.h"
#include "platform/items.h"
#include "report/notices.h"

#include <algorithm>
#include <climits>
#include <unordered_map>

namespace {

// The choices of one element, for many texts: by what a text must be to mean one, its position.
struct ChoiceIndex {
    std::unordered_map<std::string, Integer> Positions;
    Integer Open = -1; // position of the open option
};

// The lists looked up since ForgetChoices(), by element.
std::unordered_map<Integer, ChoiceIndex> Known;

// A whole choice comes before one that is cut to the cells of a member, as its group's store holds it.
ChoiceIndex IndexOf(const std::vector<std::string> &choices, long comparedLength) {
    ChoiceIndex index;
    for (const std::string &choice : choices) {
        const auto position = ToInteger(&choice - choices.data());
        index.Positions.try_emplace(RTrim(choice), position);
        index.Positions.try_emplace(choice, position);
        if (IsOther(choice)) index.Open = position;
    }
    for (const std::string &choice : choices)
        index.Positions.try_emplace(RTrim(FirstCharacters(choice, static_cast<std::size_t>(comparedLength))),
                                    ToInteger(&choice - choices.data()));
    return index;
}

// In any letter case, with or without blanks around. Asked of every choice of long lists.
bool Reads(std::string_view choice, std::string_view upper) {
    const std::string text = Trim(choice);
    return text.size() == upper.size() && UpperCase(text) == upper;
}

// With or without the blanks at the end of the choice.
bool Means(std::string_view text, std::string_view choice) {
    if (!choice.starts_with(text)) return false;
    const std::string_view rest = choice.substr(text.size());
    return rest.empty() || (!text.ends_with(' ') && rest.find_first_not_of(' ') == std::string_view::npos);
}

} // namespace

bool IsOther(std::string_view choice) { return Reads(choice, "OTHER..."); }

bool IsClear(std::string_view choice) { return Reads(choice, "<RESET/CLEAR FIELD ENTRY>"); }

std::vector<std::string> ReadChoiceFile(Integer element) {
    ItemInput input = ItemsOf(FileText(ReadWorkFile(ChoiceFileName(element))));
    std::vector<std::string> choices;
    while (!AtEnd(input)) choices.push_back(ReadTextLine(input, Input::Lenient));
    return choices;
}

long ComparedLength(Integer element) { return FieldRow[element] == 0 ? LengthOf(element) : LONG_MAX; }

Integer ChoiceOf(const std::vector<std::string> &choices, std::string_view text, long comparedLength) {
    if (Trim(text).empty()) return -1;
    const auto length = static_cast<std::size_t>(comparedLength);
    const auto equal = std::find_if(choices.begin(), choices.end(), [&](std::string_view choice) {
        return Means(text, FirstCharacters(choice, length));
    });
    if (equal != choices.end()) return ToInteger(equal - choices.begin());
    const auto open = std::find_if(choices.rbegin(), choices.rend(), IsOther);
    return ToInteger(choices.rend() - open - 1);
}

void ForgetChoices() { Known.clear(); }

Integer ChoiceOf(Integer element, std::string_view text) {
    auto found = Known.find(element);
    if (found == Known.end())
        found = Known.emplace(element, IndexOf(ReadChoiceFile(element), ComparedLength(element))).first;
    if (Trim(text).empty()) return -1;
    const auto equal = found->second.Positions.find(std::string(text));
    return equal == found->second.Positions.end() ? found->second.Open : equal->second;
}

namespace {

// True where the text has a place in the element's list, or is empty; otherwise after the message.
bool HasChoice(Integer element, const std::string &text) {
    FieldInfo[element][Choice] = -1;
    FieldInfo[element][Choice] = ChoiceOf(element, text);
    if (FieldInfo[element][Choice] >= 0 || Trim(text).empty()) return true;
    TellNotInList(element, text);
    return false;
}

} // namespace

void MatchChoiceValue(Integer element) {
    if (!IsList(element)) return;
    std::string &value = ValueOf(element);
    if (!HasChoice(element, value.substr(0, value.find('|')))) value.clear();
}

bool MatchMemberChoice(Integer member, const std::string &text) { return HasChoice(member, text); }
