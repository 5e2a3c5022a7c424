// Writing the entries as a report (writer.h). The commands that save: save_command.cpp; the way back: reader.cpp.
#include "report/writer.h"

#include "model/cells.h"
#include "model/field_model.h"
#include "model/store.h"
#include "model/text_files.h"
#include "platform/characters.h"
#include "platform/codepage.h"
#include "platform/files.h"
#include "platform/items.h"
#include "report/records.h"

#include <algorithm>
#include <vector>

namespace {

// A report being written, or only looked at for what it holds.
struct ReportFile {
    OutputFile *Output = nullptr; // null: nothing is written
    bool Utf8 = false;
    bool Foreign = false; // a character was not in the code page
    long Values = 0;      // written so far; an empty text is none

    std::string Held{}; // some records, whose encoding is looked after together

    void Write(std::string_view text) {
        constexpr std::size_t Most = 4096;
        if (Held.size() + text.size() > Most) Flush();
        if (text.size() > Most)
            Put(text); // not put together first: a value may be long
        else
            Held += text;
    }

    void Flush() {
        Put(Held);
        Held.clear();
    }

    void Put(std::string_view text) {
        if (Output == nullptr)
            Foreign = Foreign || !FitsCodePage(text);
        else if (Utf8 || IsAscii(text))
            Output->Write(text);
        else
            Output->Write(FromUtf8(text));
    }
};

void WriteQuoted(ReportFile &file, std::string_view text, std::string_view end) {
    file.Write("\"");
    file.Write(text);
    file.Write("\"");
    file.Write(end);
}

void WriteRecord(ReportFile &file, Integer level, Integer count, std::string_view title, std::string_view text) {
    file.Write(std::to_string(level) + "," + std::to_string(count) + ",\"");
    file.Write(title);
    file.Write("\",");
    WriteQuoted(file, text, NL);
}

void WriteLines(ReportFile &file, Integer element, std::string_view piece) {
    std::vector<std::string_view> lines;
    for (auto end = piece.find(NL); end != std::string_view::npos; end = piece.find(NL)) {
        lines.push_back(piece.substr(0, end));
        piece.remove_prefix(end + NL.size());
    }
    lines.push_back(piece);
    WriteRecord(file, LevelOf(element), ToInteger(lines.size()), FieldTitle[element], lines[0]);
    for (std::size_t i = 1; i < lines.size(); ++i) WriteQuoted(file, lines[i], NL);
}

bool HasQuotesToReplace(Integer element, std::string_view value) {
    return FieldInfo[element][TypeCode] == Memo && value.find('"') != std::string_view::npos;
}

// The records of one element's value, one for each instance.
void WriteFieldValue(ReportFile &file, Integer element, std::string_view value) {
    std::string written;
    if (value.ends_with(' ') || HasQuotesToReplace(element, value)) value = written = WrittenText(element, value);
    if (value.empty()) return;
    for (std::size_t first = 0; first <= value.size();) {
        const auto end = std::min(value.find('|', first), value.size());
        const std::string_view piece = value.substr(first, end - first);
        if (!piece.empty()) ++file.Values;
        if (FieldInfo[element][TypeCode] == Memo)
            WriteLines(file, element, piece);
        else
            WriteRecord(file, LevelOf(element), 1, FieldTitle[element], piece);
        first = end + 1;
    }
}

void WriteMembers(ReportFile &file, Integer head, const Cells &occurrences, std::size_t occurrence) {
    const GroupMembers &members = Members(head);
    std::size_t member = 0;
    std::string room;
    for (Integer e = ToInteger(head + 1); e < GroupEnd(head); ++e) {
        if (IsSection(e)) WriteRecord(file, LevelOf(e), HeadingMarker, FieldTitle[e], "");
        if (member == members.size() || members[member].Element != e) continue;
        WriteFieldValue(file, e, MemberIn(occurrences, members, occurrence, member, room));
        ++member;
    }
}

void WriteGroup(ReportFile &file, Integer head) {
    Cells occurrences;
    const Integer count = ReadStore(head, occurrences).Occurrences;
    for (Integer k = 0; k < count; ++k) {
        WriteRecord(file, LevelOf(head), OccurrenceMarker, FieldTitle[head],
                    std::string(OccurrenceText) + std::to_string(k + 1));
        WriteMembers(file, head, occurrences, static_cast<std::size_t>(k));
    }
    WriteRecord(file, LevelOf(head), GroupEndMarker, GroupEndTitle, "");
}

// The headings above the present element that had no data below them yet.
using Headings = std::vector<Integer>;

// Headings at the element's level or deeper end here; they had nothing below them and are left out.
void EndHeadings(Headings &headings, Integer level) {
    while (!headings.empty() && LevelOf(headings.back()) >= level) headings.pop_back();
}

void WriteHeadings(ReportFile &file, Headings &headings) {
    for (const Integer heading : headings) WriteRecord(file, LevelOf(heading), HeadingMarker, FieldTitle[heading], "");
    headings.clear();
}

void WriteElements(ReportFile &file) {
    Headings headings;
    for (int next = 1; next <= NumFields; ++next) {
        const Integer e = ToInteger(next);
        EndHeadings(headings, LevelOf(e));
        if (IsSection(e)) {
            headings.push_back(e);
        } else if (IsGroupStart(e)) {
            WriteHeadings(file, headings);
            WriteGroup(file, e);
            next = GroupEnd(e);
        } else if (HasRow(e)) {
            const std::string &value = ValueOf(e);
            if (!IsBlank(value)) WriteHeadings(file, headings);
            WriteFieldValue(file, e, value);
        }
    }
}

// Each instance of a MEMO has as many lines as a report can count.
void CheckLines(std::string_view value) {
    if (value.size() <= NL.size() * INT16_MAX) return; // too short for so many
    std::size_t lines = 1;
    for (const char c : value) {
        if (c == '|') lines = 1;
        if (c == '\n') ToInteger(++lines);
    }
}

// The template's name as the header can hold it: a double quote would end the item.
std::string HeaderName(std::string_view templateName) {
    std::string name = NameText(templateName);
    std::replace(name.begin(), name.end(), '"', '\'');
    return name;
}

bool StoreIsWide(Integer head) {
    bool wide = false;
    FaultOf([&] { wide = LayoutOf(head).Wide; }); // one that cannot be read is the write's own fault
    return wide;
}

// Some character of the entries is not in the code page, or of the titles, which are written only with what stands
// below them.
bool HoldForeign() {
    for (const Integer e : Elements())
        if (!FitsCodePage(FieldTitle[e]) || (HasRow(e) && !FitsCodePage(ValueOf(e)))) return true;
    return std::any_of(WrittenStores().begin(), WrittenStores().end(), StoreIsWide);
}

bool NeedsUtf8(const std::string &name) {
    if (!FitsCodePage(name)) return true;
    if (!HoldForeign()) return false;
    ReportFile looked;
    FaultOf([&] { WriteElements(looked); }); // the same again when it is written
    looked.Flush();
    return looked.Foreign;
}

} // namespace

void CheckCounts() {
    for (const Integer e : Elements()) {
        // A store that is missing or cut short is the write's own fault: what stands before its group is written.
        if (IsGroupStart(e) && FaultOf([&] { LayoutOf(e); }) == Overflow) throw RuntimeError{Overflow};
        if (HasRow(e) && FieldInfo[e][TypeCode] == Memo) CheckLines(ValueOf(e));
    }
}

long WriteReport(OutputFile &output, std::string_view templateName) {
    const std::string name = HeaderName(templateName);
    ReportFile file{&output, NeedsUtf8(name)};
    file.Write("0," + Quoted(std::string(VersionIdentifier) + std::string(file.Utf8 ? Utf8Mark : "")) + "," +
               Quoted(name) + NL);
    const Integer fault = FaultOf([&] { WriteElements(file); });
    file.Flush(); // what could be read is written
    if (fault != 0) throw RuntimeError{fault};
    return file.Values;
}

std::string WrittenText(Integer element, std::string_view value) {
    std::string text = RTrim(value);
    if (HasQuotesToReplace(element, text)) std::replace(text.begin(), text.end(), '"', '\'');
    return text;
}

std::string WriteErrorText(Integer error) {
    return "Error: " + ErrorText(error) + NL +
           "Error writing to this file! (read only file or drive? full drive? file locked? wrong privileges?). Correct "
           "the problem and try again, or 'SaveAs' to a different file name or location.";
}
