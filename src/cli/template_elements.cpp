// What is wrong with single records and their choices (template_elements.h).
#include "cli/template_elements.h"

#include "cli/template_lines.h"
#include "cli/template_walk.h"
#include "model/field_model.h"
#include "model/row_text.h"
#include "model/template_reader.h"
#include "platform/characters.h"
#include "report/choice_matching.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>

void Tell(Walk &walk, long line, const std::string &text) { walk.Found.Faults.push_back({line, text}); }

void TellAstray(Walk &walk, long line, const std::string &text) { walk.Found.Faults.push_back({line, text, 0, true}); }

void Refuse(Walk &walk, long line, Integer error, const std::string &text) {
    walk.Found.Faults.push_back({line, text, error});
}

namespace {

constexpr long LargestLevel = INT16_MAX - 2; // the level table has two rows more

// A title of this many characters, with the longest separator, reaches the margin of an A4 page; what is printed behind
// it runs off. Letter paper is wider.
constexpr std::size_t PageColumns = 75;
constexpr std::size_t LongestSeparator = 3;
constexpr std::size_t IndentPerLevel = 4;

// An item as a number, as a load reads it: nothing where it goes past 16 bits.
std::optional<Integer> NumberOf(Walk &walk, long line, const LineItem &item, const std::string &name) {
    ItemInput alone{item.Quoted || item.Text.empty() ? Quoted(item.Text) : item.Text};
    std::optional<Integer> number;
    const Integer fault = FaultOf([&] { number = ReadInteger(alone, Input::Strict); });
    if (fault == Overflow) Refuse(walk, line, Overflow, "the " + name + " goes past 16 bits");
    if (fault != TypeMismatch) return number;
    Tell(walk, line, "The " + name + " is no number and counts as 0");
    return Integer{0};
}

} // namespace

Record RecordOf(Walk &walk, const TemplateLine &line) {
    Record record{line.Number};
    const std::size_t told = walk.Found.Faults.size();
    record.Level = NumberOf(walk, line.Number, line.Items[0], "level").value_or(0);
    record.LevelKnown = walk.Found.Faults.size() == told;
    const std::optional<Integer> kind = NumberOf(walk, line.Number, line.Items[1], "kind");
    record.KindKnown = kind.has_value();
    record.Kind = kind.value_or(0);
    record.Type = UpperCase(line.Items[2].Text);
    record.Title = line.Items[3].Text;
    record.Help = line.Items[5].Text;
    return record;
}

namespace {

// What a choice seems to be meant for but is not; "" for nothing.
std::string MeantFor(const std::string &choice) {
    const std::string text = UpperCase(Trim(choice));
    if (text.starts_with("<RESET") || text.starts_with("<CLEAR"))
        return "the one that empties the field reads <RESET/CLEAR FIELD ENTRY>";
    constexpr std::string_view Open = "OTHER";
    const bool mayBeAny = text == Open && Trim(choice) != text; // Other is a word like any other
    const bool isOpen = text.starts_with(Open) && text.find_first_not_of(". \u2026", Open.size()) == std::string::npos;
    return isOpen && !mayBeAny ? "the one that opens a box reads OTHER..." : "";
}

void CheckChoice(Walk &walk, const Record &record, long line, std::string choice) {
    if (choice.find_first_of("\"|") != std::string::npos)
        Tell(walk, line, "The choice holds a double quote or a '|', which are taken out: " + choice);
    std::erase_if(choice, [](char c) { return c == '|' || c == '"'; });
    if (IsOther(choice) || IsClear(choice)) return;
    if (const std::string meant = MeantFor(choice); !meant.empty()) {
        Tell(walk, line, "This is a choice like any other: " + meant);
        return;
    }
    if (record.Kind > 1 && Length(choice) > static_cast<std::size_t>(record.Kind))
        Tell(walk, line,
             "The choice is longer than the " + std::to_string(record.Kind) + " characters of its field: " + choice);
    if (choice.empty() || choice[0] == ' ' || UpperCase(FirstCharacters(choice, 1)) != FirstCharacters(choice, 1))
        Tell(walk, line, "No letter reaches the choice, because it does not begin with a capital: " + choice);
}

// A choice that is the end of the list but for its spelling, with nothing more of the list behind it.
bool IsMisspeltEnd(Walk &walk, const std::string &choice) {
    const std::string text = UpperCase(choice);
    if (text.size() < 5 || !text.starts_with("XX") || !text.ends_with("XX")) return false;
    if (text.find_first_not_of("XIL1-_ ") != std::string::npos) return false;
    TemplateLine next;
    return !PeekLine(walk.Lines, next) || LooksLikeRecord(next);
}

struct ChoiceList {
    const Record &Of;
    long Count = 0;
    std::map<std::string, long> Seen{}; // each choice with its line
};

// The choices of a line; false where the list ends with it.
bool WalkChoiceLine(Walk &walk, ChoiceList &list, const TemplateLine &line) {
    const std::string slip = SlipOfChoices(line);
    if (!slip.empty()) TellAstray(walk, line.Number, slip);
    for (const LineItem &item : line.Items) {
        if (IsBehindLastComma(item, line) && line.Items.size() == 2) break; // which does no harm
        const bool isEnd = Trim(item.Text) == EndOfChoices;
        if (isEnd && slip.empty() && line.Items.size() > 1 && &item != &line.Items.back())
            TellAstray(walk, line.Number, "the end of a list stands on a line of its own");
        if (isEnd) return false;
        if (++list.Count == INT16_MAX + 1L)
            Refuse(walk, list.Of.Line, Overflow, "the field has more than 32767 choices");
        if (!slip.empty()) continue;
        if (IsMisspeltEnd(walk, item.Text)) {
            TellAstray(walk, line.Number, "the end of a list reads XXX-1XXX, and not " + item.Text);
            return false;
        }
        CheckChoice(walk, list.Of, line.Number, item.Text);
        const auto [first, isNew] = list.Seen.try_emplace(RTrim(item.Text), line.Number);
        if (!isNew && !first->first.empty())
            Tell(walk, line.Number, "The choice is that of line " + std::to_string(first->second) + ", too");
    }
    return true;
}

} // namespace

void WalkChoices(Walk &walk, const Record &record) {
    ChoiceList list{record};
    TemplateLine line;
    for (bool more = true; more;) {
        if (!PeekLine(walk.Lines, line)) {
            Refuse(walk, record.Line, InputPastEnd,
                   "the choice list is not ended by XXX-1XXX, or a quote is not closed");
            return;
        }
        if (LooksLikeRecord(line)) {
            TellAstray(walk, record.Line,
                       "the choice list is not ended by XXX-1XXX before line " + std::to_string(line.Number));
            return;
        }
        NextLine(walk.Lines, line);
        more = WalkChoiceLine(walk, list, line);
    }
    if (list.Count == 0) Tell(walk, record.Line, "The LIST has no choices");
}

namespace {

void WalkGroupStart(Walk &walk, const Record &record) {
    if (walk.GroupLine != 0) {
        TellAstray(walk, record.Line, "groups do not stand in groups: this GROUP START opens none");
    } else if (record.Kind <= 1 && record.KindKnown) {
        Tell(walk, record.Line, "A GROUP START needs a kind of 2 or more: this one opens no group");
    } else {
        walk.GroupLine = record.Line;
        walk.GroupLevel = std::abs(record.Level);
        walk.GroupLength = 0;
        ++walk.Found.Groups;
    }
}

void WalkGroupEnd(Walk &walk, const Record &record) {
    // Without its start the members seem to stand below the field before it.
    if (walk.GroupLine == 0 && walk.Deeper != 0)
        walk.Found.Faults.erase(walk.Found.Faults.begin() + static_cast<std::ptrdiff_t>(walk.Deeper) - 1);
    walk.Deeper = 0;
    if (walk.GroupLine == 0)
        TellAstray(walk, record.Line, "the GROUP END has no GROUP START");
    else if (record.Kind > 1)
        Tell(walk, record.Line, "A GROUP END needs a kind of 1 or less: this one ends no group");
    else
        walk.GroupLine = 0;
}

// What a title is too long for; "" for nothing.
std::string TooLongFor(const Record &record) {
    const bool isCut = Columns(record.Title) > TitleLength;
    std::string text = isCut ? "The title has more than 26 characters and is shown as " + FitTitle(record.Title) : "";
    const auto level = static_cast<std::size_t>(std::abs(record.Level));
    const std::size_t alone = Columns(record.Title) + LongestSeparator;
    const std::size_t indent = level > 0 ? (level - 1) * IndentPerLevel : 0;
    if (alone + indent <= PageColumns || level > LargestLevel) return text;
    text += isCut ? ", and too long for a page" : "The title is too long for a page";
    if (alone <= PageColumns) text += " where it is indented by its level";
    return text + ": a value printed behind it runs off the paper";
}

void CheckTitle(Walk &walk, const Record &record) {
    if (const std::string text = TooLongFor(record); !text.empty()) Tell(walk, record.Line, text);
    if (Trim(record.Title).empty()) Tell(walk, record.Line, "The field has no title");
    if (record.Title.find('"') != std::string::npos)
        Tell(walk, record.Line, "The double quotes in the title are read as apostrophes");
}

void CheckHelp(Walk &walk, const Record &record) {
    if (record.Help.empty() || walk.Beside == nullptr || !walk.Beside->Find(record.Help).empty()) return;
    Tell(walk, record.Line, "There is no help file " + record.Help + " beside the template");
}

std::string LevelText(const Record &record) { return std::to_string(std::abs(record.Level)); }

bool HoldsValue(const Record &record) {
    return record.Kind > 1 && (record.Type == "TEXT" || record.Type == "MEMO" || record.Type == "LIST");
}

// A field that stands deeper than the one above it.
void CheckBelow(Walk &walk, const Record &record) {
    if (walk.Above.Line == 0 || std::abs(record.Level) <= std::abs(walk.Above.Level)) return;
    Tell(walk, record.Line,
         "This stands at level " + LevelText(record) + " below the field of line " + std::to_string(walk.Above.Line) +
             " at level " + LevelText(walk.Above) + ", which holds no others");
    walk.Deeper = walk.Found.Faults.size();
}

// Of sections, groups and fields.
void CheckLevel(Walk &walk, const Record &record) {
    const bool isGroup = record.Type == "GROUP START";
    const bool isField = HoldsValue(record);
    const bool isSection = record.Kind == SectionKind;
    if (!isField) walk.Deeper = 0;
    if (record.LevelKnown) {
        const bool isMember = isField && walk.GroupLine != 0 && std::abs(record.Level) > walk.GroupLevel;
        if (record.Level == 0) Tell(walk, record.Line, "Levels begin at 1: titles at level 0 do not tell values apart");
        if (record.Level < 0 && isMember)
            Tell(walk, record.Line, "A negative level means nothing here: each member of a group has one value");
        if (record.Level < 0 && (isGroup || isSection))
            Tell(walk, record.Line, "A negative level means nothing here: it marks a field of one value");
        CheckBelow(walk, record);
    }
    walk.Above = isField && record.Level != 0 ? record : Record{};
}

// A heading of another kind than a section's has neither a line on the screen nor one in a report.
void CheckHeading(Walk &walk, const Record &record) {
    if (walk.Untyped.Line != 0 && std::abs(record.Level) > std::abs(walk.Untyped.Level))
        Tell(walk, walk.Untyped.Line,
             "A section needs a kind of -1: with " + std::to_string(walk.Untyped.Kind) +
                 " this one has neither line nor heading");
    const bool isHeading = (record.Kind == 0 || record.Kind == 1) && record.KindKnown && record.Type.empty();
    walk.Untyped = isHeading && !Trim(record.Title).empty() ? record : Record{};
    if (isHeading) walk.Above = {};
}

// A field, or an element that was perhaps meant to be one.
void WalkField(Walk &walk, const Record &record) {
    const bool known = record.Type == "TEXT" || record.Type == "MEMO" || record.Type == "LIST";
    if (!record.KindKnown) return; // all else depends on it
    const bool isField = record.Kind > 1;
    const bool isOddList = walk.GroupLine != 0 && record.Type.ends_with("LIST") && record.Type != "LIST";
    walk.OddType = isOddList || (isField && !known);
    if (isField && !known)
        Tell(walk, record.Line, "the type '" + record.Type + "' is not known: the field takes no value");
    if (!isField && known && record.Kind != SectionKind)
        Tell(walk, record.Line, "A kind of 1 or less gives the " + record.Type + " no value and no row");
    if (record.Kind < SectionKind) Tell(walk, record.Line, "A kind below -1 means nothing");
    if (isOddList)
        TellAstray(walk, record.Line,
                   "a type in a group that ends in LIST is counted with choices up to XXX-1XXX, but has none");
    if (!HoldsValue(record)) return;
    ++walk.Found.Fields;
    walk.Found.Lists += record.Type == "LIST" ? 1 : 0;
    if (walk.GroupLine == 0) return;
    const long before = walk.GroupLength;
    walk.GroupLength += record.Kind;
    if (before <= INT16_MAX && walk.GroupLength > INT16_MAX)
        Refuse(walk, record.Line, Overflow,
               "the lengths in the group from line " + std::to_string(walk.GroupLine) +
                   " on add up to more than 32767 characters");
}

// What the types mean for the records behind them.
void WalkType(Walk &walk, const Record &record) {
    if (record.Type == "GROUP START")
        WalkGroupStart(walk, record);
    else if (record.Type == "GROUP END")
        WalkGroupEnd(walk, record);
    else
        WalkField(walk, record);
}

} // namespace

void WalkElement(Walk &walk, const Record &record) {
    walk.OddType = walk.OrphansTold = false;
    walk.Found.Lines.push_back(record.Line);
    if (walk.Found.Lines.size() == INT16_MAX + 1UL)
        Refuse(walk, record.Line, Overflow, "the template has more than 32767 elements");
    if (std::abs(static_cast<long>(record.Level)) > LargestLevel)
        Refuse(walk, record.Line, Overflow, "the level goes past 16 bits");
    CheckHeading(walk, record);
    if (record.Kind > 1) {
        CheckTitle(walk, record);
        CheckHelp(walk, record);
    }
    if (record.Kind > 1 || record.Kind == SectionKind) CheckLevel(walk, record);
    if (record.Type == "GROUP END") walk.Above = {};
    WalkType(walk, record);
    if (record.Type == "LIST") WalkChoices(walk, record);
}
