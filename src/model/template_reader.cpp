// Reading and checking a Fields Template File (template_reader.h).
#include "model/template_reader.h"

#include "model/field_model.h"
#include "model/text_files.h"
#include "platform/characters.h"
#include "platform/checksum.h"
#include "platform/codepage.h"
#include "platform/files.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
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

// The file being read, and what of it to look at where it cannot be read to its end.
struct Reading {
    ItemInput Input;
    std::size_t Record = 0;              // the record being read, with its choices
    std::optional<std::size_t> Group{};  // the start of the open group
    std::optional<std::size_t> Astray{}; // the first record that takes a part of the next line or leaves one of its own
};

bool StandsBehindALine(const ItemInput &input) {
    constexpr std::string_view LineEnds = "\r\n";
    const std::size_t next = std::min(input.Bytes.find_first_not_of(" \t", input.At), input.Bytes.size());
    return next == input.Bytes.size() || LineEnds.find(input.Bytes[next]) != std::string_view::npos ||
           LineEnds.find(input.Bytes[input.At - 1]) != std::string_view::npos;
}

void NoteWhereItEnds(Reading &reading) {
    if (!reading.Astray && !StandsBehindALine(reading.Input)) reading.Astray = reading.Record;
}

Record ReadRecord(Reading &reading) {
    ItemInput &input = reading.Input;
    const bool missing = AtEnd(input); // of a group, its end
    BeginRecord(input);
    reading.Record = missing ? reading.Group.value_or(input.At) : input.At;
    Record record;
    record.Level = ReadInteger(input, Input::Lenient);
    record.Kind = ReadInteger(input, Input::Lenient);
    record.Type = UpperCase(ReadText(input, Input::Lenient));
    record.Title = ReadText(input, Input::Lenient);
    record.Extra = ReadText(input, Input::Lenient);
    record.File = ReadText(input, Input::Lenient);
    NoteWhereItEnds(reading);
    return record;
}

bool EndsChoices(std::string_view line) { return Trim(line) == EndOfChoices; }

std::string ReadChoice(Reading &reading) {
    std::string choice = ReadTextLine(reading.Input, Input::Lenient);
    // A level that is read as a choice: the list is not ended. Other choices may be divided by a comma.
    if (!choice.empty() && choice.find_first_not_of("-0123456789") == std::string::npos) NoteWhereItEnds(reading);
    return choice;
}

void SkipChoices(Reading &reading) {
    while (!EndsChoices(ReadChoice(reading))) {
    }
}

std::vector<std::string> ReadChoices(Reading &reading) {
    std::vector<std::string> choices;
    for (std::string line = ReadChoice(reading); !EndsChoices(line); line = ReadChoice(reading)) {
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
void CountRows(Reading &reading, TemplateContent &content) {
    const std::size_t start = reading.Input.At;
    Integer rows = 0;
    while (!AtEnd(reading.Input)) {
        Record record = ReadRecord(reading);
        if (record.Kind > 0 || record.Kind == SectionKind) rows = ToInteger(rows + 1);
        if (record.Type == "LIST") {
            SkipChoices(reading);
        } else if (record.Type == "GROUP START" && record.Kind > 1) {
            Integer members = 0;
            reading.Group = reading.Record;
            while (record.Type != "GROUP END") {
                record = ReadRecord(reading);
                if (record.Kind > 0) members = ToInteger(members + 1);
                if (record.Type.ends_with("LIST")) SkipChoices(reading);
            }
            reading.Group.reset();
            content.LargestGroup = std::max(content.LargestGroup, members);
        }
    }
    content.Rows = rows;
    reading.Input.At = start;
}

// The group that the records being read stand in; Reading knows its place in the file.
struct GroupBeingRead {
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
void Settle(TemplateElement &element, Reading &reading, GroupBeingRead &group, TemplateContent &content) {
    const bool isField = element.Kind > 1;
    const bool isHeading = element.Kind == SectionKind;
    if (element.Type == ElementType::List) {
        element.Choices = ReadChoices(reading);
        if (!isField) element.Type = ElementType::Unknown;
    }
    if (element.Type == ElementType::GroupStart) {
        if (reading.Group || !isField) {
            element.Type = ElementType::Unknown;
            if (reading.Group && !isHeading) element.Kind = 0;
        } else {
            group = {content.Elements.size(), 0};
            reading.Group = reading.Record;
        }
    } else if (element.Type == ElementType::GroupEnd) {
        if (!reading.Group || isField)
            element.Type = ElementType::Unknown;
        else
            reading.Group.reset();
    } else if (reading.Group && isField) {
        CountMember(element, group, content);
    }
}

// Second pass: the elements as they are.
void ReadElements(Reading &reading, TemplateContent &content) {
    GroupBeingRead group;
    Integer rows = 0;
    while (!AtEnd(reading.Input)) {
        Record record = ReadRecord(reading);
        TemplateElement element{record.Level, record.Kind,  TypeOf(record.Type), reading.Group.has_value(),
                                record.Title, record.Extra, record.File};
        // A double quote cannot be written into a report's title.
        std::replace(element.Title.begin(), element.Title.end(), '"', '\'');
        ToInteger(content.Elements.size() + 1);
        // The level table has two rows more than the deepest level.
        const int level = std::abs(static_cast<int>(record.Level));
        content.DeepestLevel = std::max(content.DeepestLevel, static_cast<Integer>(ToInteger(level + 2) - 2));
        Settle(element, reading, group, content);
        if (!element.InGroup && (record.Kind > 1 || record.Kind == SectionKind)) rows = ToInteger(rows + 1);
        content.Elements.push_back(std::move(element));
    }
    if (reading.Group) {
        reading.Record = *reading.Group;
        throw RuntimeError{InputPastEnd};
    }
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
    ItemInput input = TemplateText(ReadFile(path));
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
        if (suffix.ends_with(Utf8Mark)) suffix.resize(suffix.size() - Utf8Mark.size());
        return true;
    } catch (const RuntimeError &) { // the file ends inside its header
        return false;
    }
}

TemplateContent ReadTemplate(ItemInput input, long *faultLine) {
    SkipHeader(input);
    TemplateContent content;
    Reading reading{std::move(input)};
    try {
        CountRows(reading, content);
        ReadElements(reading, content);
    } catch (const RuntimeError &) {
        LinePlace counted;
        if (faultLine != nullptr)
            *faultLine = LineAt(counted, reading.Input.Bytes, reading.Astray.value_or(reading.Record));
        throw;
    }
    return content;
}

std::uint64_t MarkOf(const TemplateContent &content) {
    Checksum sum;
    for (const TemplateElement &e : content.Elements) {
        // What lies on disks was made with titles of the code page.
        const std::string title = FitsCodePage(e.Title) ? FromUtf8(e.Title) : e.Title;
        const std::array<long long, 5> numbers{e.Level, e.Kind, static_cast<int>(e.Type), e.InGroup,
                                               static_cast<long long>(title.size())};
        sum.Add({reinterpret_cast<const char *>(numbers.data()), sizeof(numbers)}).Add(title);
    }
    return sum.Value();
}
