// A report as Markdown to read: headings for sections and occurrences, a paragraph for each field (export_formats.h).
#include "cli/export_formats.h"

#include "cli/report_events.h"

#include <algorithm>

namespace {

constexpr std::size_t DeepestHeading = 6;

// Characters that would be taken for marks, wherever they stand.
constexpr std::string_view Marks = "\\`*_[]<>#|~&";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// How many characters at the start of a line would make it an item of a list or a rule: up to and with the mark.
std::size_t LineMark(std::string_view line) {
    if (line.empty()) return 0;
    if (line[0] == '-' || line[0] == '+' || line[0] == '=') return 1;
    std::size_t digits = 0;
    while (digits < line.size() && IsDigit(line[digits])) ++digits;
    return digits > 0 && digits < line.size() && (line[digits] == '.' || line[digits] == ')') ? digits + 1 : 0;
}

std::string EscapedLine(std::string_view line) {
    const auto first = std::min(line.find_first_not_of(' '), line.size());
    line.remove_prefix(first); // blanks there could make it a block of code
    const std::size_t mark = LineMark(line);
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (i + 1 == mark || Marks.find(line[i]) != std::string_view::npos) text += '\\';
        text += line[i] == '\t' ? ' ' : line[i];
    }
    return text;
}

// A text of several lines stays one paragraph, with line breaks, also where a line is empty.
std::string Escaped(std::string_view text, const std::string &indent) {
    const std::string utf8 = ExportedText(text);
    std::string escaped;
    for (std::size_t first = 0; first <= utf8.size();) {
        const auto end = std::min(utf8.find('\n', first), utf8.size());
        if (first > 0) escaped += "\\\n" + indent;
        const std::string line = EscapedLine(std::string_view(utf8).substr(first, end - first));
        escaped += line.empty() && utf8.find('\n') != std::string::npos ? "&nbsp;" : line;
        first = end + 1;
    }
    return escaped;
}

std::string Field(const ReportEvent &event) {
    const std::string title = "**" + Escaped(event.Title, "") + ":**";
    if (event.Values.size() == 1) return title + " " + Escaped(event.Values[0], "") + "\n\n";
    std::string text = title + "\n\n";
    for (const std::string &value : event.Values) text += "- " + Escaped(value, "  ") + "\n";
    return text + "\n";
}

// A heading stands on one line.
std::string Heading(std::size_t depth, std::string title) {
    std::replace(title.begin(), title.end(), '\r', ' ');
    std::erase(title, '\n');
    return std::string(std::min(depth, DeepestHeading), '#') + " " + Escaped(title, "");
}

} // namespace

std::string ExportMarkdown(const ReportEvents &report) {
    std::string text;
    std::vector<Part> around;
    std::size_t depth = 0; // headings around; a group has none of its own
    int occurrence = 0;
    for (const ReportEvent &event : report.Events) {
        switch (event.Is) {
        case Part::Field: text += Field(event); break;
        case Part::End:
            if (around.back() != Part::Group) --depth;
            around.pop_back();
            break;
        default:
            around.push_back(event.Is);
            if (event.Is == Part::Group) {
                occurrence = 0;
                break;
            }
            text += Heading(++depth, event.Title);
            if (event.Is == Part::Occurrence) text += " " + std::to_string(++occurrence);
            text += "\n\n";
        }
    }
    if (text.ends_with("\n\n")) text.pop_back();
    return text;
}
