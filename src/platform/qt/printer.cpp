// The default printer through the toolkit (platform/printer.h).
#include "platform/printer.h"

#include "platform/characters.h"
#include "platform/qt/text.h"
#include "platform/qt/window.h"
#include "platform/runtime.h"

#include <QLibrary>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include <memory>

namespace {

constexpr int ColumnsPerInch = 12;
constexpr int LinesPerInch = 6;
constexpr int TextPoints = 10;

// The job that is running; null between jobs. The printer outlives the painter.
std::unique_ptr<QPrinter> Paper;
std::unique_ptr<QPainter> Pen;
int Page = 0;
double Column = 0;
double Line = 0;
int Ascent = 0; // from a line's top to its baseline, which texts of every font share

void NeedGood(bool good) {
    if (good && Paper->printerState() != QPrinter::Error) return;
    Pen.reset();
    Paper.reset();
    throw RuntimeError{PrinterError};
}

// The toolkit hands a job over without telling whether the print system took it: that system's own last answer tells.
bool JobWasTaken() {
    constexpr int LastGoodAnswer = 0x00FF;
    QLibrary cups("cups", 2);
    const auto lastAnswer = reinterpret_cast<int (*)()>(cups.resolve("cupsLastError"));
    if (lastAnswer == nullptr) return true; // another print system
    return lastAnswer() >= 0 && lastAnswer() <= LastGoodAnswer;
}

QFont FontFor(bool bold, int points) {
    QFont font("Courier", points);
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    font.setBold(bold);
    return font;
}

double PixelsPerColumn() { return static_cast<double>(Paper->logicalDpiX()) / ColumnsPerInch; }
double PixelsPerLine() { return static_cast<double>(Paper->logicalDpiY()) / LinesPerInch; }

} // namespace

void OpenPrinter(std::string_view document) {
    const QPrinterInfo target = QPrinterInfo::defaultPrinter();
    if (target.isNull()) throw RuntimeError{PrinterError};
    Pen.reset();
    Paper = std::make_unique<QPrinter>(target, QPrinter::HighResolution);
    if (target.defaultPageSize().isValid()) Paper->setPageSize(target.defaultPageSize());
    Paper->setFullPage(true);
    Paper->setDocName(AsLabel(document));
    Paper->setCreator("Quintave");
    Pen = std::make_unique<QPainter>();
    NeedGood(Pen->begin(Paper.get()));
    Page = 1;
    Column = 0;
    Line = 0;
    SetPrinterFont(false, TextPoints);
    Ascent = Pen->fontMetrics().ascent();
}

double PrinterWidth() { return Paper->width() / PixelsPerColumn(); }
double PrinterHeight() { return Paper->height() / PixelsPerLine(); }
double PrinterColumn() { return Column; }
double PrinterLine() { return Line; }
void SetPrinterColumn(double column) { Column = column; }
void SetPrinterLine(double line) { Line = line; }

void SetPrinterFont(bool bold, int points) { Pen->setFont(FontFor(bold, points)); }

void PrintText(std::string_view text) {
    const double baseline = Line * PixelsPerLine() + Ascent;
    if (IsAscii(text) && !text.empty())
        Pen->drawText(QPointF(Column * PixelsPerColumn(), baseline), ToOneLine(text));
    else
        PaintInColumns(*Pen, QPointF(Column * PixelsPerColumn(), baseline), PixelsPerColumn(), text);
    Column += static_cast<double>(Columns(text));
}

void EndPrinterLine() {
    Line += 1;
    Column = 0;
}

void NewPrinterPage() {
    NeedGood(Paper->newPage());
    ++Page;
    Column = 0;
    Line = 0;
}

int PrinterPage() { return Page; }

void ClosePrinter() {
    const bool handedOver = Pen->end();
    NeedGood(handedOver && JobWasTaken());
    Pen.reset();
    Paper.reset();
}
