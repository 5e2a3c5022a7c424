// Reading the records of a report file (records.h).
#include "report/records.h"

#include "model/field_model.h"
#include "model/store.h"
#include "model/text_files.h"
#include "platform/characters.h"
#include "platform/codepage.h"
#include "platform/files.h"

namespace {

bool HasLineBreak(const std::string &text) {
    return text.find('\r') != std::string::npos || text.find('\n') != std::string::npos;
}

} // namespace

bool IsReportName(const std::string &name) {
    return name.size() >= 3 && UpperCase(name.substr(name.size() - 3)) == "RPX";
}

std::string CaptionName(const std::string &name) {
    return NameText(name.substr(0, name.size() < 5 ? 0 : name.size() - 4));
}

ItemInput OpenReportText(const std::string &path) { return ReportText(ReadFile(path)); }

bool ReadReportHeader(ItemInput &input, std::string *templateName) {
    try {
        BeginRecord(input);
        const Integer format = ReadInteger(input, Input::Lenient);
        const bool identified = ReadItem(input, Input::Lenient).starts_with(VersionIdentifier);
        const std::string_view name = ReadItem(input, Input::Lenient); // any name will do
        if (templateName != nullptr) *templateName = name;
        return format == 0 && identified;
    } catch (const RuntimeError &) { // the file ends inside its header
        return false;
    }
}

long CountValues(const std::string &path) {
    long values = 0;
    FaultOf([&] {
        ItemInput input = OpenReportText(path);
        ReportRecord record;
        if (!ReadReportHeader(input)) return;
        while (!AtEnd(input)) {
            ReadReportRecord(input, record);
            if (record.Count >= 0 && !IsBlank(record.Text)) ++values;
        }
    });
    return values;
}

void ReadReportRecord(ItemInput &input, ReportRecord &record) {
    BeginRecord(input);
    const Integer level = ReadInteger(input, Input::Strict);
    record.Level = ToInteger(level < 0 ? -level : level);
    record.Count = ReadInteger(input, Input::Strict);
    record.Title = ReadItem(input, Input::Strict);
    record.Text = ReadItem(input, Input::Strict);
    for (Integer line = 1; line < record.Count; ++line) {
        BeginRecord(input);
        record.Text += NL;
        record.Text += ReadItem(input, Input::Strict);
    }
    if (HasLineBreak(record.Text)) record.Text = WithWholeLineBreaks(record.Text);
}
