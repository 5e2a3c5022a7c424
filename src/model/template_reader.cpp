// Reading and checking a Fields Template File (template_reader.h).
#include "model/template_reader.h"

#include "model/field_model.h"
#include "platform/checksum.h"
#include "platform/codepage.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr int HeaderItems = 6;

struct Record {
    Integer Level = 0;
    Integer Kind = 0;
    std::string Type; // upper case
    std::string Title;
    std::string Extra;
    std::string File;
};

Record ReadRecord(ItemInput &input) {
    BeginRecord(input);
    Record record;
    record.Level = ReadInteger(input, Input::Lenient);
    record.Kind = ReadInteger(input, Input::Lenient);
    record.Type = UpperCase(ReadText(input, Input::Lenient));
    record.Title = ReadText(input, Input::Lenient);
    record.Extra = ReadText(input, Input::Lenient);
    record.File = ReadText(input, Input::Lenient);
    return record;
}

bool EndsChoices(std::string_view line) { return Trim(line) == EndOfChoices; }

void SkipChoices(ItemInput &input) {
    while (!EndsChoices(ReadTextLine(input, Input::Lenient))) {
    }
}

std::vector<std::string> ReadChoices(ItemInput &input) {
    std::vector<std::string> choices;
    for (std::string line = ReadTextLine(input, Input::Lenient); !EndsChoices(line);
         line = ReadTextLine(input, Input::Lenient)) {
        // Neither character may get into a value: one divides its instances, the other ends it in a report.
        std::erase_if(line, [](char c) { return c == '|' || c == '"'; });
        ToInteger(choices.size() + 1);
        choices.push_back(std::move(line));
    }
    return choices;
}

ElementType TypeOf(std::string_view type) {
    constexpr std::array<std::pair<std::string_view, ElementType>, 5> Types{{{"TEXT", ElementType::Text},
                                                                             {"MEMO", ElementType::Memo},
                                                                             {"LIST", ElementType::List},
                                                                             {"GROUP START", ElementType::GroupStart},
                                                                             {"GROUP END", ElementType::GroupEnd}}};
    for (const auto &[text, value] : Types)
        if (type == text) return value;
    return ElementType::Unknown;
}

void SkipHeader(ItemInput &input) {
    BeginRecord(input);
    for (int item = 0; item < HeaderItems; ++item) ReadText(input, Input::Lenient);
}

// First pass: how many rows the tables must hold. A list counts as one at its ending alone once a group is open, so a
// file whose choice lists or groups are not ended is found here. The input stands where it stood before.
void CountRows(ItemInput &input, TemplateContent &content) {
    const std::size_t start = input.At;
    Integer rows = 0;
    while (!AtEnd(input)) {
        Record record = ReadRecord(input);
        if (record.Kind > 0 || record.Kind == SectionKind) rows = ToInteger(rows + 1);
        if (record.Type == "LIST") {
            SkipChoices(input);
        } else if (record.Type == "GROUP START" && record.Kind > 1) {
            Integer members = 0;
            while (record.Type != "GROUP END") {
                record = ReadRecord(input);
                if (record.Kind > 0) members = ToInteger(members + 1);
                if (record.Type.ends_with("LIST")) SkipChoices(input);
            }
            content.LargestGroup = std::max(content.LargestGroup, members);
        }
    }
    content.Rows = rows;
    input.At = start;
}

// The group that the records being read stand in.
struct GroupBeingRead {
    bool Open = false;
    std::size_t Start = 0; // among the elements
    Integer Members = 0;
};

// A member of the open group: counted, and its cells behind those before it.
void CountMember(const TemplateElement &element, GroupBeingRead &group, TemplateContent &content) {
    group.Members = ToInteger(group.Members + 1);
    content.LargestGroup = std::max(content.LargestGroup, group.Members);
    Integer &cells = content.Elements[group.Start].Cells;
    if (element.Type != ElementType::Unknown) cells = ToInteger(cells + element.Kind);
}

// What the element's type means where it stands; a choice list follows its record.
void Settle(TemplateElement &element, ItemInput &input, GroupBeingRead &group, TemplateContent &content) {
    const bool isField = element.Kind > 1;
    const bool isHeading = element.Kind == SectionKind;
    if (element.Type == ElementType::List) {
        element.Choices = ReadChoices(input);
        if (!isField) element.Type = ElementType::Unknown;
    }
    if (element.Type == ElementType::GroupStart) {
        if (group.Open || !isField) {
            element.Type = ElementType::Unknown;
            if (group.Open && !isHeading) element.Kind = 0;
        } else {
            group = {true, content.Elements.size(), 0};
        }
    } else if (element.Type == ElementType::GroupEnd) {
        if (!group.Open || isField)
            element.Type = ElementType::Unknown;
        else
            group.Open = false;
    } else if (group.Open && isField) {
        CountMember(element, group, content);
    }
}

// Second pass: the elements as they are.
void ReadElements(ItemInput &input, TemplateContent &content) {
    GroupBeingRead group;
    int deepest = 0;
    Integer rows = 0;
    while (!AtEnd(input)) {
        Record record = ReadRecord(input);
        TemplateElement element{record.Level, record.Kind,  TypeOf(record.Type), group.Open,
                                record.Title, record.Extra, record.File};
        // A double quote cannot be written into a report's title.
        std::replace(element.Title.begin(), element.Title.end(), '"', '\'');
        ToInteger(content.Elements.size() + 1);
        deepest = std::max(deepest, std::abs(static_cast<int>(record.Level)));
        Settle(element, input, group, content);
        if (!element.InGroup && (record.Kind > 1 || record.Kind == SectionKind)) rows = ToInteger(rows + 1);
        content.Elements.push_back(std::move(element));
    }
    if (group.Open) throw RuntimeError{InputPastEnd};
    // The level table has two rows more than the deepest level.
    content.DeepestLevel = static_cast<Integer>(ToInteger(deepest + 2) - 2);
    content.Rows = std::max({content.Rows, rows, content.LargestGroup});
}

} // namespace

std::string UnreadableText(Integer error) {
    return "Error: " + ErrorText(error) + NL +
           "Error reading this Fields Template File! (file damaged? choice list or group not ended? file locked? "
           "wrong privileges?). Correct the problem and try again, or pick another Fields Template File.";
}

bool TurnsInstancesOff(std::string_view suffix) { return suffix.starts_with('-'); }

bool ReadTemplateHeader(const std::string &path, std::string &suffix) {
    ItemInput input = OpenItems(path);
    return ReadTemplateHeader(input, suffix);
}

bool ReadTemplateHeader(ItemInput &input, std::string &suffix) {
    try {
        BeginRecord(input);
        const std::string identifier = ReadText(input, Input::Lenient);
        const std::string version = ReadText(input, Input::Lenient);
        for (int item = 2; item < HeaderItems; ++item) ReadText(input, Input::Lenient);
        if (identifier != TemplateIdentifier || !version.starts_with(VersionIdentifier)) return false;
        suffix = version.substr(VersionIdentifier.size());
        return true;
    } catch (const RuntimeError &) { // the file ends inside its header
        return false;
    }
}

TemplateContent ReadTemplate(ItemInput input) {
    SkipHeader(input);
    TemplateContent content;
    CountRows(input, content);
    ReadElements(input, content);
    return content;
}

std::uint64_t MarkOf(const TemplateContent &content) {
    Checksum sum;
    for (const TemplateElement &e : content.Elements) {
        const std::array<long long, 5> numbers{e.Level, e.Kind, static_cast<int>(e.Type), e.InGroup,
                                               static_cast<long long>(e.Title.size())};
        sum.Add({reinterpret_cast<const char *>(numbers.data()), sizeof(numbers)}).Add(e.Title);
    }
    return sum.Value();
}
