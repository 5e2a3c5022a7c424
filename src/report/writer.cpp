// Writing the entries as a report file (writer.h). The commands that save: save_command.cpp; the way back: reader.cpp.
#include "report/writer.h"

#include "groups/open_group.h"
#include "groups/store.h"
#include "main/main_window.h"
#include "main/recovery.h"
#include "model/field_model.h"
#include "model/template_reader.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"
#include "platform/items.h"
#include "report/records.h"
#include "screen/value_entry.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

// The reports that a save of this session did not complete, with the copies of their earlier versions.
std::map<std::string, std::string> IncompleteReports;

// The report being written, and the headings above the present element that had no data below them yet.
struct Writing {
    OutputFile File;
    std::vector<Integer> Headings;
};

// Not put together first: a value may be long.
void WriteQuoted(OutputFile &file, std::string_view text, std::string_view end) {
    file.Write("\"");
    file.Write(text);
    file.Write("\"");
    file.Write(end);
}

void WriteRecord(OutputFile &file, Integer level, long count, std::string_view title, std::string_view text) {
    file.Write(std::to_string(level) + "," + std::to_string(count) + ",");
    WriteQuoted(file, title, ",");
    WriteQuoted(file, text, NL);
}

void WriteLines(OutputFile &file, Integer element, std::string_view piece) {
    std::vector<std::string_view> lines;
    for (auto end = piece.find(NL); end != std::string_view::npos; end = piece.find(NL)) {
        lines.push_back(piece.substr(0, end));
        piece.remove_prefix(end + NL.size());
    }
    lines.push_back(piece);
    WriteRecord(file, LevelOf(element), static_cast<long>(lines.size()), FieldTitle[element], lines[0]);
    for (std::size_t i = 1; i < lines.size(); ++i) WriteQuoted(file, lines[i], NL);
}

// The records of one element's value, one for each instance.
void WriteFieldValue(OutputFile &file, std::string &value, Integer element) {
    value = RTrim(value);
    if (value.empty()) return;
    const bool memo = FieldInfo[element][TypeCode] == Memo;
    if (memo) std::replace(value.begin(), value.end(), '"', '\'');
    for (std::size_t first = 0; first <= value.size();) {
        const auto end = std::min(value.find('|', first), value.size());
        const std::string_view piece = std::string_view(value).substr(first, end - first);
        if (memo)
            WriteLines(file, element, piece);
        else
            WriteRecord(file, LevelOf(element), 1, FieldTitle[element], piece);
        first = end + 1;
    }
}

void WriteMembers(OutputFile &file, Integer head, Integer end, std::string_view cells) {
    std::size_t cell = 0;
    for (Integer e = ToInteger(head + 1); e < end; ++e) {
        if (IsSection(e)) WriteRecord(file, LevelOf(e), HeadingMarker, FieldTitle[e], "");
        if (!HasValue(e)) continue;
        const auto length = static_cast<std::size_t>(FieldInfo[e][KindItem]);
        std::string value(cells.substr(std::min(cell, cells.size()), length));
        WriteFieldValue(file, value, e);
        cell += length;
    }
}

void WriteGroup(OutputFile &file, Integer head, Integer end) {
    std::string occurrences;
    const GroupCounts counts = ReadStore(head, occurrences);
    const auto length = static_cast<std::size_t>(counts.Items);
    for (Integer k = 0; k < counts.Occurrences; ++k) {
        WriteRecord(file, LevelOf(head), OccurrenceMarker, FieldTitle[head],
                    std::string(OccurrenceText) + std::to_string(k + 1));
        const std::size_t first = std::min(static_cast<std::size_t>(k) * length, occurrences.size());
        WriteMembers(file, head, end, std::string_view(occurrences).substr(first, length));
    }
    WriteRecord(file, LevelOf(head), GroupEndMarker, GroupEndTitle, "");
}

// Headings at the element's level or deeper end here; they had nothing below them and are left out.
void EndHeadings(Writing &writing, Integer level) {
    while (!writing.Headings.empty() && LevelOf(writing.Headings.back()) >= level) writing.Headings.pop_back();
}

void WriteHeadings(Writing &writing) {
    for (const Integer heading : writing.Headings)
        WriteRecord(writing.File, LevelOf(heading), HeadingMarker, FieldTitle[heading], "");
    writing.Headings.clear();
}

void WriteElements(Writing &writing) {
    for (int next = 1; next <= NumFields; ++next) {
        const Integer e = ToInteger(next);
        EndHeadings(writing, LevelOf(e));
        if (IsSection(e)) {
            writing.Headings.push_back(e);
        } else if (IsGroupStart(e)) {
            WriteHeadings(writing);
            const Integer end = GroupEnd(e);
            WriteGroup(writing.File, e, end);
            next = end;
        } else if (HasValue(e) && FieldRow[e] > 0) {
            std::string &value = RowValue[ToInteger(FieldRow[e] - 1)];
            if (!value.empty()) WriteHeadings(writing);
            WriteFieldValue(writing.File, value, e);
        }
    }
}

// The first name of a report followed by "~", "~~" ... that is free: a copy that is there already may be the only whole
// version left by a program that was cut short, or the user's own.
std::string FreeCopyName(const std::string &path) {
    std::string name = path + "~";
    while (NameTaken(name)) name += "~";
    return name;
}

// Copies a report before it is replaced; the copy's path, "" where there is nothing to keep or no room for a new file.
std::string KeepEarlierVersion(const std::string &path) {
    const auto incomplete = IncompleteReports.find(path);
    if (incomplete != IncompleteReports.end() && FileExists(incomplete->second)) return incomplete->second;
    if (FileSize(path) == 0) return "";
    std::string kept = FreeCopyName(path);
    try {
        CopyFile(path, kept);
        return kept;
    } catch (const RuntimeError &error) {
        TryToDelete(kept);
        // A directory that takes no new file cannot keep the user from saving into the old one.
        if (error.Number != PermissionDenied && error.Number != PathAccessError) throw;
        return "";
    }
}

// The template's name as the header can hold it: a double quote would end the item.
std::string HeaderName() {
    std::string name = NameText(TemplateName);
    std::replace(name.begin(), name.end(), '"', '\'');
    return name;
}

void WriteReport(const std::string &path, bool temporary) {
    const BusyPointer busy;
    const std::string kept = temporary ? "" : KeepEarlierVersion(path);
    if (!kept.empty()) IncompleteReports[path] = kept;
    Writing writing{{path, temporary ? OutputFile::Access::Own : OutputFile::Access::User}, {}};
    writing.File.Write("0," + Quoted(VersionIdentifier) + "," + Quoted(HeaderName()) + NL);
    WriteElements(writing);
    writing.File.Close(!temporary);
    if (kept.empty()) return;
    IncompleteReports.erase(path);
    TryToDelete(kept); // the report is whole, with or without it
}

} // namespace

bool WriteReportFile() {
    if (Quintave.TableFrame.Visible && !LeaveGroup()) return false;
    CommitPendingEdit();
    for (std::string &value : RowValue) value = RTrim(value);
    const bool temporary = ReportFileName.ends_with(".$$$");
    if (!temporary) {
        FileMark = ReportFileName;
        FileMarkDir = ReportFileDir;
    }
    const Integer fault = FaultOf([&] { WriteReport(ReportFileDir + ReportFileName, temporary); });
    if (fault != 0) {
        MsgBox("Error: " + ErrorText(fault) + NL +
                   "Error writing to this file! (read only file or drive? full drive? file locked? wrong privileges?). "
                   "Correct the problem and try again, or 'SaveAs' to a different file name or location.",
               CriticalIcon, "Quintave");
        return false;
    }
    if (temporary) return true;
    DataChanged = False;
    SettleRecovery();
    return true;
}
