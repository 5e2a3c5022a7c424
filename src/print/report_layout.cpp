// The layout of a report (report_layout.h).
#include "print/report_layout.h"

#include "model/field_model.h"
#include "platform/characters.h"
#include "platform/clock.h"
#include "platform/codepage.h"
#include "report/records.h"

#include <algorithm>

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

// A value being wrapped.
struct Wrapping {
    std::string_view Value;
    const PrintSink &Sink;
    std::string_view Title;
    double Column; // of the present line
    double Width;
    std::size_t LineStart = 0; // where the line begins in the value
    std::size_t LastBlank = 0; // behind the last blank
    std::size_t Columns = 0;   // that the line takes so far
};

// The line ends at a place of the value; the next one begins at another and goes on up to a third.
void EndLineAt(Wrapping &wrap, std::size_t end, std::size_t next, std::size_t upTo) {
    wrap.Sink.PrintPiece(wrap.Value.substr(wrap.LineStart, end - wrap.LineStart), wrap.Column, false, wrap.Title);
    wrap.LineStart = next;
    wrap.Columns = Columns(wrap.Value.substr(next, upTo - next));
}

// At its last blank, or where it has none right there.
void EndFullLine(Wrapping &wrap, std::size_t at) {
    const std::size_t end = wrap.LastBlank > wrap.LineStart ? wrap.LastBlank : at;
    EndLineAt(wrap, end, end, at);
}

} // namespace

void WrapValue(std::string_view value, double firstColumn, double firstWidth, double column, double width,
               const PrintSink &sink, std::string_view title) {
    Wrapping wrap{value, sink, title, firstColumn, firstWidth};
    const auto nextLines = [&] {
        wrap.Column = column;
        wrap.Width = width;
    };
    const bool plain = IsAscii(value);
    for (std::size_t i = 0; i < value.size();) {
        if (value[i] == '\r' && value.substr(i).starts_with(NL)) {
            EndLineAt(wrap, i, i + NL.size(), i + NL.size());
            nextLines();
            if (wrap.Width <= 0) EndFullLine(wrap, wrap.LineStart); // each character has a line, the line feed, too
            i = wrap.LineStart;
            continue;
        }
        const std::size_t next = plain ? i + 1 : i + CharacterLength(value, i);
        const std::size_t more = plain ? 1 : Columns(value.substr(i, next - i));
        // A wide character does not begin in the last column.
        if (more > 1 && wrap.Columns > 0 && static_cast<double>(wrap.Columns + more) >= wrap.Width + 1) {
            EndFullLine(wrap, i);
            nextLines();
        }
        wrap.Columns += more;
        if (value[i] == ' ') wrap.LastBlank = next;
        i = next;
        if (static_cast<double>(wrap.Columns) < wrap.Width) continue;
        EndFullLine(wrap, i);
        nextLines();
    }
    sink.PrintPiece(value.substr(wrap.LineStart), wrap.Column, true, title);
}
