// A report as JSON (export_formats.h). Its shape: docs/schema/report.schema.json.
#include "cli/export_formats.h"

#include "cli/report_events.h"

#include <array>
#include <cstdio>

namespace {

std::string Values(const std::vector<std::string> &values) {
    std::string text;
    for (const std::string &value : values) text += (text.empty() ? "[" : ", ") + JsonText(ExportedText(value));
    return text + "]";
}

std::string Member(std::string_view kind, const ReportEvent &event, std::string_view next) {
    return "{\"" + std::string(kind) + "\": " + JsonText(ExportedText(event.Title)) +
           ", \"level\": " + std::to_string(event.Level) + ", \"" + std::string(next) + "\": ";
}

std::string Begun(const ReportEvent &event) {
    switch (event.Is) {
    case Part::Section: return Member("section", event, "content") + "[";
    case Part::Group: return Member("group", event, "occurrences") + "[";
    case Part::Occurrence: return "[";
    default: return Member("field", event, "values") + Values(event.Values) + "}";
    }
}

} // namespace

std::string JsonText(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += std::string("\\") + c;
        } else if (c == '\n') {
            quoted += "\\n";
        } else if (static_cast<unsigned char>(c) < 32 || c == 127) {
            std::array<char, 8> code{};
            std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(c));
            quoted += code.data();
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

std::string ExportJson(const ReportEvents &report) {
    std::string text = "{\"template\": " + JsonText(ExportedText(report.Template)) + ", \"content\": [";
    std::vector<Part> around;
    bool first = true; // in what is open
    for (const ReportEvent &event : report.Events) {
        if (event.Is == Part::End) {
            const bool list = around.back() == Part::Occurrence;
            around.pop_back();
            if (!first) text += "\n" + Indented(around.size() + 1);
            text += list ? "]" : "]}";
            first = false;
            continue;
        }
        text += (first ? "\n" : ",\n") + Indented(around.size() + 1) + Begun(event);
        first = event.Is != Part::Field;
        if (first) around.push_back(event.Is);
    }
    return text + (first ? "" : "\n") + "]}\n";
}
