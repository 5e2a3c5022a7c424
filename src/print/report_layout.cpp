// The layout of a report (report_layout.h).
#include "print/report_layout.h"

#include "model/field_model.h"
#include "platform/characters.h"
#include "platform/clock.h"
#include "platform/codepage.h"
#include "report/records.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr Integer CentredMarker = -3;
constexpr Integer SubtitleMarker = -2;
constexpr int IndentPerLevel = 4;
constexpr double WidthFallback =
    80; // added where a title leaves its value no room, so that some of it stands on its line

// A copy being laid out.
struct Layout {
    const PrintOptions &Options;
    const PrintSink &Sink;
    double DataStart; // column of values
};

std::string Blanks(int levels) {
    return std::string(static_cast<std::size_t>(std::max(levels, 0) * IndentPerLevel), ' ');
}

// Of a title.
std::string Indent(const Layout &layout, Integer level) {
    return layout.Options.Indent == Indents::None ? "" : Blanks(level - 1);
}

bool DataGoByLevel(const PrintOptions &options) {
    return options.Indent == Indents::TitlesAndData || options.Indent == Indents::Raw;
}

// A title stands on one line, also one that holds line breaks.
void MakeOneLine(std::string &title) {
    std::replace_if(
        title.begin(), title.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
}

void PrintTitleLine(const Layout &layout, const std::string &text) {
    layout.Sink.PrintTitle(text + layout.Options.Separator, layout.Sink.Left);
    layout.Sink.EndLine();
}

void PlaceValue(const Layout &layout, const ReportRecord &record, double titleEnd) {
    const PrintSink &sink = layout.Sink;
    const double width = sink.RightLimit - layout.DataStart;
    double firstColumn = layout.DataStart;
    double firstWidth = width;
    if (layout.Options.Below) {
        sink.EndLine();
    } else if (titleEnd > layout.DataStart) {
        firstColumn = titleEnd;
        firstWidth = sink.RightLimit - titleEnd;
        if (firstWidth == 0 && !record.Text.empty()) { // the title fills its line to the last column
            sink.EndLine();
            firstColumn = layout.DataStart;
            firstWidth = width;
        }
    }
    if (!layout.Options.Below && firstWidth < 0) firstWidth += WidthFallback;
    WrapValue(record.Text, firstColumn, firstWidth, layout.DataStart, width, sink, record.Title);
}

void PlaceTitleAndValue(Layout &layout, const ReportRecord &record) {
    const PrintOptions &options = layout.Options;
    const std::string title = Indent(layout, record.Level) + record.Title + options.Separator;
    const double titleEnd = layout.Sink.PrintTitle(title, layout.Sink.Left);
    if (DataGoByLevel(options)) layout.DataStart = layout.Sink.Left + record.Level * IndentPerLevel;
    if (options.Indent == Indents::Raw && record.Count == OccurrenceMarker)
        layout.Sink.EndLine();
    else
        PlaceValue(layout, record, titleEnd);
}

void PlaceRecord(Layout &layout, const ReportRecord &record) {
    const Indents mode = layout.Options.Indent;
    const std::string indent = Indent(layout, record.Level);
    const int baseLevel = mode == Indents::None ? 2 : 1; // of a subtitle that stands at the margin
    switch (record.Count) {
    case GroupEndMarker:
        if (mode != Indents::Raw) PrintTitleLine(layout, indent + "*** " + record.Title + "***");
        return;
    case CentredMarker: layout.Sink.PrintCentred(record.Title, PlainStyle); return;
    case SubtitleMarker: PrintTitleLine(layout, Blanks(record.Level - baseLevel) + record.Title); return;
    case HeadingMarker:
        if (mode == Indents::None)
            layout.Sink.PrintCentred(record.Title, HeadingStyle);
        else
            PrintTitleLine(layout, indent + record.Title);
        return;
    default: PlaceTitleAndValue(layout, record);
    }
}

} // namespace

std::string ReportLabel(const std::string &fileName) {
    return fileName.ends_with("$$$") ? "ON-SCREEN INFORMATION" : UpperCase(NameText(fileName));
}

std::string ReportHeading(const std::string &templateName, const std::string &label) {
    return PrintDate() + " [" + NameText(templateName) + "]; Quintave Report for " + label;
}

void PlaceReport(ItemInput &input, const PrintOptions &options, const PrintSink &sink) {
    Layout layout{options, sink, sink.Left + options.DataIndent};
    const auto progress = [&](int number) {
        if (options.Progress != nullptr) options.Progress(number);
    };
    progress(1);
    ReportRecord record;
    for (int number = 2; !AtEnd(input); ++number) {
        progress(number);
        ReadReportRecord(input, record);
        MakeOneLine(record.Title);
        sink.BeginRecord();
        PlaceRecord(layout, record);
    }
}

namespace {

// Where a line that begins at a place of a value has all its columns; npos where the value ends before. A wide
// character that would begin in the last column does not stand there any more.
std::size_t FullAt(std::string_view value, bool plain, std::size_t from, double width) {
    const auto columns = static_cast<std::size_t>(std::max(std::ceil(width), 0.0));
    if (plain) return from + columns <= value.size() ? from + columns : std::string_view::npos;
    std::size_t used = 0;
    while (used < columns && from < value.size()) {
        const std::string_view character = value.substr(from, CharacterLength(value, from));
        const std::size_t more = Columns(character);
        if (more > 1 && used > 0 && used + more > columns) return from;
        used += more;
        from += character.size();
    }
    return used < columns ? std::string_view::npos : from;
}

// Behind the last blank of a line, or where it has none at its end.
std::size_t BreakIn(std::string_view value, std::size_t from, std::size_t end) {
    const std::size_t blank = value.substr(from, end - from).rfind(' ');
    return blank == std::string_view::npos ? end : from + blank + 1;
}

} // namespace

void WrapValue(std::string_view value, double firstColumn, double firstWidth, double column, double width,
               const PrintSink &sink, std::string_view title) {
    const bool plain = IsAscii(value);
    std::size_t lineStart = 0;
    std::size_t lookedAt = 0; // characters up to here are in lines or fit into the present one
    double lineColumn = firstColumn;
    double lineWidth = firstWidth;
    const auto endLine = [&](std::size_t end, std::size_t next) {
        sink.PrintPiece(value.substr(lineStart, end - lineStart), lineColumn, false, title);
        lineStart = next;
        lineColumn = column;
        lineWidth = width;
    };
    std::size_t hardEnd = value.find(NL); // the next one
    while (lookedAt < value.size()) {
        const std::size_t step = plain ? 1 : CharacterLength(value, lookedAt);
        const std::size_t full = std::max(FullAt(value, plain, lineStart, lineWidth), lookedAt + step);
        if (hardEnd < full && hardEnd != std::string_view::npos) {
            endLine(hardEnd, hardEnd + NL.size());
            lookedAt = hardEnd + 1;
            hardEnd = value.find(NL, lookedAt);
        } else if (full <= value.size()) {
            const std::size_t end = BreakIn(value, lineStart, full);
            endLine(end, end);
            lookedAt = full;
        } else {
            break;
        }
    }
    sink.PrintPiece(value.substr(std::min(lineStart, value.size())), lineColumn, true, title);
}
