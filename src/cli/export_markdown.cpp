// A report as Markdown to read: headings for sections, a paragraph for each field, a numbered list for
// the occurrences of a group (export_formats.h).
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

// Blocks of text, each followed by an empty line, behind the marks of the lists that they stand in.
struct Page {
    std::string Text{};
    std::string Indent{}; // of the open occurrences' lines
    std::string Mark{};   // of an occurrence in which nothing stands yet
};

void AddBlock(Page &page, const std::string &block) {
    const std::string first = page.Indent.substr(0, page.Indent.size() - page.Mark.size()) + page.Mark;
    page.Text += first + block + "\n\n";
    page.Mark.clear();
}

void AddField(Page &page, const ReportEvent &event) {
    const std::string title = "**" + Escaped(event.Title, page.Indent) + ":**";
    if (event.Values.size() == 1) {
        AddBlock(page, title + " " + Escaped(event.Values[0], page.Indent));
        return;
    }
    AddBlock(page, title);
    std::string list;
    for (const std::string &value : event.Values)
        list += (list.empty() ? "- " : "\n" + page.Indent + "- ") + Escaped(value, page.Indent + "  ");
    AddBlock(page, list);
}

// A heading stands on one line.
void AddHeading(Page &page, std::size_t depth, std::string title) {
    std::replace(title.begin(), title.end(), '\r', ' ');
    std::erase(title, '\n');
    AddBlock(page, std::string(std::min(depth, DeepestHeading), '#') + " " + Escaped(title, page.Indent));
}

struct Open {
    Part Is;
    std::size_t Indent;  // characters of it outside
    int Occurrences = 0; // that have begun in it
};

void Begin(Page &page, std::vector<Open> &around, const ReportEvent &event) {
    const std::size_t indent = page.Indent.size();
    if (event.Is == Part::Group) {
        AddBlock(page, "**" + Escaped(event.Title, page.Indent) + ":**");
    } else if (event.Is == Part::Occurrence) {
        page.Mark = std::to_string(++around.back().Occurrences) + ". ";
        page.Indent += std::string(page.Mark.size(), ' ');
    } else {
        const auto sections =
            std::count_if(around.begin(), around.end(), [](const Open &o) { return o.Is == Part::Section; });
        AddHeading(page, static_cast<std::size_t>(sections) + 1, event.Title);
    }
    around.push_back({event.Is, indent});
}

} // namespace

std::string ExportMarkdown(const ReportEvents &report) {
    Page page;
    std::vector<Open> around;
    for (const ReportEvent &event : report.Events) {
        if (event.Is == Part::Field) {
            AddField(page, event);
        } else if (event.Is == Part::End) {
            if (!page.Mark.empty()) AddBlock(page, ""); // an occurrence without anything
            page.Indent.resize(around.back().Indent);
            around.pop_back();
        } else {
            Begin(page, around, event);
        }
    }
    if (!page.Text.empty()) page.Text.pop_back();
    return page.Text;
}
