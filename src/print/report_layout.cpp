// The layout of a report (report_layout.h).
#include "print/report_layout.h"

#include "main/main_window.h"
#include "model/field_model.h"
#include "platform/clock.h"
#include "platform/codepage.h"
#include "platform/front.h"
#include "print/print_panel.h"
#include "report/records.h"

#include <algorithm>

namespace {

constexpr Integer CentredMarker = -3;
constexpr Integer SubtitleMarker = -2;
constexpr int IndentPerLevel = 4;
constexpr double WidthFallback = 80; // added where a title leaves no room, so that some of the value stands on its line
constexpr int StarsPerRow = 25;

// A copy being laid out.
struct Layout {
    const PrintOptions &Options;
    const PrintSink &Sink;
    double DataStart; // column of values
};

std::string Blanks(int levels) {
    return std::string(static_cast<std::size_t>(std::max(levels, 0) * IndentPerLevel), ' ');
}

std::string Indent(Integer level) { return Blanks(level - 1); }

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
    if (Quintave.PrintFrameToggler.Caption == LineBelowTitle) {
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
    if (firstWidth < 0) firstWidth += WidthFallback;
    WrapValue(record.Text, firstColumn, firstWidth, layout.DataStart, width, sink, record.Title);
}

void PlaceTitleAndValue(Layout &layout, const ReportRecord &record) {
    const PrintOptions &options = layout.Options;
    const std::string indent = options.Mode == 0 ? "" : Indent(record.Level);
    const double titleEnd = layout.Sink.PrintTitle(indent + record.Title + options.Separator, layout.Sink.Left);
    if (options.Mode == 2) layout.DataStart = layout.Sink.Left + record.Level * IndentPerLevel;
    if (options.Raw && record.Count == OccurrenceMarker)
        layout.Sink.EndLine();
    else
        PlaceValue(layout, record, titleEnd);
}

void PlaceRecord(Layout &layout, const ReportRecord &record) {
    const PrintOptions &options = layout.Options;
    const std::string indent = options.Mode == 0 ? "" : Indent(record.Level);
    switch (record.Count) {
    case GroupEndMarker:
        if (!options.Raw) PrintTitleLine(layout, indent + "*** " + record.Title + "***");
        return;
    case CentredMarker: layout.Sink.PrintCentred(record.Title, PlainStyle); return;
    case SubtitleMarker:
        PrintTitleLine(layout, Blanks(std::max(record.Level, options.BaseLevel) - options.BaseLevel) + record.Title);
        return;
    case HeadingMarker:
        if (options.Mode == 0)
            layout.Sink.PrintCentred(record.Title, HeadingStyle);
        else
            PrintTitleLine(layout, indent + record.Title);
        return;
    default: PlaceTitleAndValue(layout, record);
    }
}

void ShowProgress(int counter, const std::string &progress) {
    const std::string shown = counter % StarsPerRow == 0 ? progress : Quintave.printLabel.Caption;
    SetCaption(Quintave.printLabel, shown + "*");
    RepaintNow(Quintave.printLabel);
}

} // namespace

PrintOptions ReadPrintOptions() {
    PrintOptions options;
    const std::string &mode = Quintave.PrintFrameIndent.Caption;
    if (mode != NoIndent) {
        options.Mode = mode == TitlesIndented ? Integer{1} : Integer{2};
        options.BaseLevel = 1;
        options.Raw = mode == RawIndents;
    }
    options.DataIndent = NumericValue(Quintave.PrintIndent.Text);
    const Control &separators = Quintave.Combo2;
    const std::string shown =
        separators.ListIndex < 0 ? "" : separators.Rows[static_cast<std::size_t>(separators.ListIndex)];
    if (shown.size() >= 2) options.Separator = shown.substr(1, shown.size() - 2);
    return options;
}

void PlaceReport(ItemInput &input, const PrintOptions &options, const PrintSink &sink, const std::string &progress) {
    Layout layout{options, sink, sink.Left + options.DataIndent};
    SetCaption(Quintave.printLabel, progress);
    ReportRecord record;
    for (int counter = 2; !AtEnd(input); ++counter) {
        ShowProgress(counter, progress);
        ReadReportRecord(input, record);
        MakeOneLine(record.Title);
        sink.BeginRecord();
        PlaceRecord(layout, record);
    }
}

void WrapValue(std::string_view value, double firstColumn, double firstWidth, double column, double width,
               const PrintSink &sink, std::string_view title) {
    std::size_t lineStart = 0; // characters before the line
    std::size_t lastBlank = 0; // characters up to and with the last blank
    double lineColumn = firstColumn;
    double lineWidth = firstWidth;
    for (std::size_t i = 1; i <= value.size(); ++i) {
        const char c = value[i - 1];
        if (c == ' ') lastBlank = i;
        const bool hardEnd = c == '\r' && i < value.size() && value[i] == '\n';
        if (!hardEnd && static_cast<double>(i) - static_cast<double>(lineStart) < lineWidth) continue;
        std::size_t end = i;
        std::size_t next = i;
        if (hardEnd) {
            end = i - 1;
            next = i + 1;
        } else if (lastBlank > lineStart) {
            end = lastBlank;
            next = lastBlank;
        }
        sink.PrintPiece(value.substr(lineStart, end - lineStart), lineColumn, false, title);
        lineStart = next;
        lineColumn = column;
        lineWidth = width;
    }
    sink.PrintPiece(value.substr(std::min(lineStart, value.size())), lineColumn, true, title);
}

std::string ReportLabel() {
    return ReportFileName.ends_with("$$$") ? "ON-SCREEN INFORMATION" : UpperCase(NameText(ReportFileName));
}

std::string ReportHeading() {
    return PrintDate() + " [" + NameText(TemplateName) + "]; Quintave Report for " + ReportLabel();
}
