// Walking through a template (template_walk.h). The loader's own way through it: model/template_reader.cpp.
#include "cli/template_walk.h"

#include "model/field_model.h"
#include "model/row_text.h"
#include "model/template_reader.h"
#include "platform/codepage.h"
#include "report/choice_matching.h"

#include <cstdlib>
#include <optional>

namespace {

constexpr std::string_view InvalidHeader = "This is not a valid Fields Template File! Please Try Again.";
constexpr long LargestLevel = INT16_MAX - 2; // the level table has two rows more

struct Walk {
    ItemInput Input;
    LinePlace Counted{};
    TemplateWalk Found{};
    long GroupLine = 0; // of the open group's start; 0 outside groups
    long GroupLength = 0;
};

struct Record {
    long Line = 0;
    Integer Level = 0;
    Integer Kind = 0;
    bool KindKnown = true; // it did not go past 16 bits
    std::string Type;      // upper case
    std::string Title;
};

void Tell(Walk &walk, long line, const std::string &text) { walk.Found.Faults.push_back({line, text}); }

void Refuse(Walk &walk, long line, Integer error, const std::string &text) {
    Tell(walk, line, "A load refuses it: Error: " + ErrorText(error) + ": " + text);
    walk.Found.Refused = true;
}

long LineHere(Walk &walk) { return LineAt(walk.Counted, walk.Input.Bytes, walk.Input.At); }

std::string ReadWord(Walk &walk) {
    const std::size_t start = walk.Input.At;
    try {
        return ReadText(walk.Input, Input::Strict);
    } catch (const RuntimeError &error) {
        if (error.Number != TypeMismatch) throw;
    }
    walk.Input.At = start;
    Tell(walk, LineHere(walk), "What stands behind the closing quote is taken for the next item");
    return ReadText(walk.Input, Input::Lenient);
}

// Nothing where it goes past 16 bits.
std::optional<Integer> ReadNumber(Walk &walk, const std::string &name) {
    const std::size_t start = walk.Input.At;
    try {
        return ReadInteger(walk.Input, Input::Strict);
    } catch (const RuntimeError &error) {
        if (error.Number == Overflow) Refuse(walk, LineHere(walk), Overflow, "the " + name + " goes past 16 bits");
        if (error.Number == Overflow) return {};
        if (error.Number != TypeMismatch) throw;
    }
    walk.Input.At = start;
    Tell(walk, LineHere(walk), "The " + name + " is no number and counts as 0");
    return ReadInteger(walk.Input, Input::Lenient);
}

// False at the end of the file, or where the record does not end.
bool ReadRecord(Walk &walk, Record &record) {
    if (AtEnd(walk.Input)) return false;
    BeginRecord(walk.Input);
    record.Line = LineHere(walk);
    try {
        record.Level = ReadNumber(walk, "level").value_or(0);
        const std::optional<Integer> kind = ReadNumber(walk, "kind");
        record.KindKnown = kind.has_value();
        record.Kind = kind.value_or(0);
        record.Type = UpperCase(ReadWord(walk));
        record.Title = ReadWord(walk);
        ReadWord(walk);
        ReadWord(walk);
        return true;
    } catch (const RuntimeError &error) {
        Refuse(walk, record.Line, error.Number, "the record has fewer than six items, or a quote is not closed");
        return false;
    }
}

void CheckChoice(Walk &walk, const Record &record, long line, std::string choice) {
    if (choice.find_first_of("\"|") != std::string::npos)
        Tell(walk, line, "The choice holds a double quote or a '|', which are taken out: " + choice);
    std::erase_if(choice, [](char c) { return c == '|' || c == '"'; });
    if (IsOther(choice) || IsClear(choice)) return;
    if (record.Kind > 1 && choice.size() > static_cast<std::size_t>(record.Kind))
        Tell(walk, line,
             "The choice is longer than the " + std::to_string(record.Kind) + " characters of its field: " + choice);
    if (choice.empty() || choice[0] == ' ' || UpperCase(choice.substr(0, 1)) != choice.substr(0, 1))
        Tell(walk, line, "No letter reaches the choice, because it does not begin with a capital: " + choice);
}

// False where the list does not end.
bool WalkChoices(Walk &walk, const Record &record) {
    long count = 0;
    try {
        while (true) {
            BeginRecord(walk.Input);
            const long line = LineHere(walk);
            const std::string choice = ReadWord(walk);
            if (Trim(choice) == EndOfChoices) break;
            if (++count == INT16_MAX + 1L) Refuse(walk, record.Line, Overflow, "the field has more than 32767 choices");
            CheckChoice(walk, record, line, choice);
        }
    } catch (const RuntimeError &error) {
        Refuse(walk, record.Line, error.Number, "the choice list is not ended by XXX-1XXX, or a quote is not closed");
        return false;
    }
    if (count == 0) Tell(walk, record.Line, "The LIST has no choices");
    return true;
}

void WalkGroupStart(Walk &walk, const Record &record) {
    if (walk.GroupLine != 0) {
        Tell(walk, record.Line, "Groups do not stand in groups: this GROUP START opens none");
    } else if (record.Kind <= 1 && record.KindKnown) {
        Tell(walk, record.Line, "A GROUP START needs a kind of 2 or more: this one opens no group");
    } else {
        walk.GroupLine = record.Line;
        walk.GroupLength = 0;
    }
}

void WalkGroupEnd(Walk &walk, const Record &record) {
    if (walk.GroupLine == 0)
        Tell(walk, record.Line, "The GROUP END has no GROUP START");
    else if (record.Kind > 1)
        Tell(walk, record.Line, "A GROUP END needs a kind of 1 or less: this one ends no group");
    else
        walk.GroupLine = 0;
}

void CheckTitle(Walk &walk, const Record &record) {
    if (record.Title.size() > TitleLength)
        Tell(walk, record.Line, "The title has more than 26 characters and is shown as " + FitTitle(record.Title));
    if (Trim(record.Title).empty()) Tell(walk, record.Line, "The field has no title");
    if (record.Title.find('"') != std::string::npos)
        Tell(walk, record.Line, "The double quotes in the title are read as apostrophes");
}

// A field, or an element that was perhaps meant to be one.
void WalkField(Walk &walk, const Record &record) {
    const bool known = record.Type == "TEXT" || record.Type == "MEMO" || record.Type == "LIST";
    if (!record.KindKnown) return; // all else depends on it
    const bool isField = record.Kind > 1;
    if (isField && !known)
        Tell(walk, record.Line, "The type '" + record.Type + "' is not known: the field takes no value");
    if (!isField && known && record.Kind != SectionKind)
        Tell(walk, record.Line, "A kind of 1 or less gives the " + record.Type + " no value and no row");
    if (record.Kind < SectionKind) Tell(walk, record.Line, "A kind below -1 means nothing");
    if (walk.GroupLine != 0 && record.Type.ends_with("LIST") && record.Type != "LIST")
        Tell(walk, record.Line,
             "A type in a group that ends in LIST is counted with choices up to XXX-1XXX, but has none");
    if (!isField || !known || walk.GroupLine == 0) return;
    const long before = walk.GroupLength;
    walk.GroupLength += record.Kind;
    if (before <= INT16_MAX && walk.GroupLength > INT16_MAX)
        Refuse(walk, record.Line, Overflow,
               "the lengths in the group from line " + std::to_string(walk.GroupLine) +
                   " on add up to more than 32767 characters");
}

bool WalkElement(Walk &walk, const Record &record) {
    walk.Found.Lines.push_back(record.Line);
    if (walk.Found.Lines.size() == INT16_MAX + 1UL)
        Refuse(walk, record.Line, Overflow, "the template has more than 32767 elements");
    if (std::abs(static_cast<long>(record.Level)) > LargestLevel)
        Refuse(walk, record.Line, Overflow, "the level goes past 16 bits");
    if (record.Kind > 1) CheckTitle(walk, record);
    if (record.Type == "GROUP START")
        WalkGroupStart(walk, record);
    else if (record.Type == "GROUP END")
        WalkGroupEnd(walk, record);
    else
        WalkField(walk, record);
    return record.Type != "LIST" || WalkChoices(walk, record);
}

} // namespace

TemplateWalk WalkTemplate(ItemInput input) {
    Walk walk{std::move(input)};
    std::string suffix;
    if (!ReadTemplateHeader(walk.Input, suffix)) {
        Tell(walk, 1, "A load refuses it: " + std::string(InvalidHeader));
        walk.Found.Refused = true;
        return walk.Found;
    }
    Record record;
    while (ReadRecord(walk, record) && WalkElement(walk, record)) {
    }
    if (walk.GroupLine != 0) Refuse(walk, walk.GroupLine, InputPastEnd, "the group is not ended by GROUP END");
    return walk.Found;
}
