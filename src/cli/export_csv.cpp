// A report as comma-separated values, a line for each (export_formats.h).
#include "cli/export_formats.h"

#include "cli/report_events.h"

namespace {

std::string Cell(const std::string &utf8) {
    if (utf8.find_first_of(",\"\n\r") == std::string::npos) return utf8;
    std::string cell = "\"";
    for (const char c : utf8) cell += c == '"' ? std::string("\"\"") : std::string(1, c);
    return cell + "\"";
}

struct Around {
    Part Is;
    std::string Title;
};

// The cells that say where a field stands: sections, group, occurrence.
std::string Where(const std::vector<Around> &around, int occurrence) {
    std::string sections;
    std::string group;
    for (const Around &part : around) {
        if (part.Is == Part::Section) sections += (sections.empty() ? "" : " / ") + part.Title;
        if (part.Is == Part::Group) group = part.Title;
    }
    return Cell(sections) + "," + Cell(group) + "," + (occurrence > 0 ? std::to_string(occurrence) : "");
}

} // namespace

std::string ExportCsv(const ReportEvents &report) {
    std::string text = "section,group,occurrence,field,instance,value\r\n";
    std::vector<Around> around;
    int occurrence = 0;
    std::string where = ",,";
    for (const ReportEvent &event : report.Events) {
        if (event.Is == Part::Field) {
            for (std::size_t i = 0; i < event.Values.size(); ++i)
                text += where + "," + Cell(ExportedText(event.Title)) + "," + std::to_string(i + 1) + "," +
                        Cell(ExportedText(event.Values[i])) + "\r\n";
            continue;
        }
        if (event.Is == Part::Occurrence) ++occurrence;
        if (event.Is == Part::End) {
            if (around.back().Is == Part::Group) occurrence = 0;
            around.pop_back();
        } else {
            around.push_back({event.Is, ExportedText(event.Title)});
        }
        where = Where(around, occurrence);
    }
    return text;
}
