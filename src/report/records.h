// The records of a report file: the marks that its writer gives them, and reading them, for loading and for printing.
#pragma once

#include "platform/items.h"
#include "platform/runtime.h"

#include <string>
#include <string_view>

// Second item of a record, where it is not the number of lines of a value.
inline constexpr Integer HeadingMarker = -1;
inline constexpr Integer OccurrenceMarker = -9;
inline constexpr Integer GroupEndMarker = -99;

inline constexpr std::string_view OccurrenceText = "REPEATING GROUP, Occurrence #";
inline constexpr std::string_view GroupEndTitle = "END REPEATING GROUP";

// The last three characters of a report's file name are RPX, letters in either case.
bool IsReportName(const std::string &name);

// The name without its last four characters, as captions show it.
std::string CaptionName(const std::string &name);

struct ReportRecord {
    Integer Level = 0; // as an amount: a level below 0 counts without its sign
    Integer Count = 0; // lines of the value, or a marker
    std::string Title;
    std::string Text; // lines end in CR LF
};

// The file at a path as a report's text; the errors of ReadFile (files.h).
ItemInput OpenReportText(const std::string &path);

// The first record is that of a report; the input stands behind it. Hands out the name of the template it was made on.
bool ReadReportHeader(ItemInput &input, std::string *templateName = nullptr);

// How many values a report holds, each instance and each member of an occurrence counted and those of blanks not: those
// before its first fault; none of a file that cannot be read or is no report.
long CountValues(const std::string &path);

// The next record with its continuation lines, over what the record held. Error 13 or 62 where it is damaged.
void ReadReportRecord(ItemInput &input, ReportRecord &record);
