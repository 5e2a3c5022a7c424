// Small services of the window system (platform/front.h, platform/clock.h). The window: window.cpp; dialogues:
// dialogs.cpp.
#include "platform/front.h"

#include "platform/clock.h"
#include "platform/qt/text.h"
#include "platform/qt/window.h"

#include <QApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QLabel>
#include <QLocale>
#include <QWidget>

#include <chrono>
#include <memory>

namespace {

constexpr long TwipsPerInch = 1440;

// The banner while it is shown; null otherwise.
std::unique_ptr<QLabel> Banner;

} // namespace

long TextWidth(const Control &control, std::string_view text) {
    const QWidget *const widget = WidgetOf(control);
    if (widget == nullptr) return 0;
    return QFontMetrics(widget->font()).horizontalAdvance(ToOneLine(text)) * TwipsPerInch / widget->logicalDpiX();
}

void ShowBanner(std::string_view text) {
    Banner = std::make_unique<QLabel>(AsLabel(text), nullptr, Qt::ToolTip);
    Banner->setAttribute(Qt::WA_ShowWithoutActivating);
    Banner->setMargin(Banner->fontMetrics().height());
    Banner->adjustSize();
    if (MainWindow() != nullptr) Banner->move(MainWindow()->geometry().center() - Banner->rect().center());
    Banner->show();
    Banner->repaint();
}

void HideBanner() { Banner.reset(); }

void ShowBusyPointer(bool busy) {
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void KeepWindowAlive() {
    constexpr qint64 LeastMilliseconds = 50; // painting all rows more often would cost more than the work itself
    static QElapsedTimer sinceLast;
    if (sinceLast.isValid() && sinceLast.elapsed() < LeastMilliseconds) return;
    ShowChanges();
    // A signal or the session's end, which come by sockets, would find the work half done.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    sinceLast.start();
}

std::string ShortDate() { return QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toStdString(); }

long long SteadyMilliseconds() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}
