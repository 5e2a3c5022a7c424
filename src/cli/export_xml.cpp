// A report as XML (export_formats.h). Its shape: docs/schema/report.xsd.
#include "cli/export_formats.h"

#include "cli/report_events.h"

namespace {

// A character that XML cannot hold, not even by its number, becomes the one that stands for such.
constexpr std::string_view NoCharacter = "\xEF\xBF\xBD";

std::string Escaped(std::string_view utf8) {
    std::string text;
    for (const char c : utf8) {
        switch (c) {
        case '&': text += "&amp;"; break;
        case '<': text += "&lt;"; break;
        case '>': text += "&gt;"; break;
        case '"': text += "&quot;"; break;
        case '\t': text += "&#9;"; break;  // in an attribute a blank would be
        case '\n': text += "&#10;"; break; // read for it
        default:
            if (static_cast<unsigned char>(c) < 32)
                text += NoCharacter;
            else
                text += c;
        }
    }
    for (const std::string_view none : {"\uFFFE", "\uFFFF"})
        for (auto at = text.find(none); at != std::string::npos; at = text.find(none, at))
            text.replace(at, none.size(), NoCharacter);
    return text;
}

std::string Attribute(std::string_view name, std::string_view utf8) {
    return " " + std::string(name) + "=\"" + Escaped(utf8) + "\"";
}

std::string TitleAndLevel(const ReportEvent &event) {
    return Attribute("title", ExportedText(event.Title)) + Attribute("level", std::to_string(event.Level));
}

std::string Field(const ReportEvent &event, const std::string &indent) {
    std::string text = indent + "<field" + TitleAndLevel(event) + ">\n";
    for (const std::string &value : event.Values)
        text += indent + "  <value>" + Escaped(ExportedText(value)) + "</value>\n";
    return text + indent + "</field>\n";
}

struct Element {
    std::string_view Name;
    int Occurrences = 0; // that have begun in it
};

std::string Begun(const ReportEvent &event, std::vector<Element> &around) {
    if (event.Is == Part::Occurrence) {
        const int number = ++around.back().Occurrences;
        around.push_back({"occurrence"});
        return "<occurrence" + Attribute("number", std::to_string(number)) + ">\n";
    }
    around.push_back({event.Is == Part::Group ? "group" : "section"});
    return "<" + std::string(around.back().Name) + TitleAndLevel(event) + ">\n";
}

} // namespace

std::string ExportXml(const ReportEvents &report) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report" +
                       Attribute("template", ExportedText(report.Template)) + ">\n";
    std::vector<Element> around;
    for (const ReportEvent &event : report.Events) {
        if (event.Is == Part::End) {
            const std::string_view name = around.back().Name;
            around.pop_back();
            text += Indented(around.size() + 1) + "</" + std::string(name) + ">\n";
        } else if (event.Is == Part::Field) {
            text += Field(event, Indented(around.size() + 1));
        } else {
            const std::string indent = Indented(around.size() + 1);
            text += indent + Begun(event, around);
        }
    }
    return text + "</report>\n";
}
