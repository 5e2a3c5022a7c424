// The program in its real window at work for a measurement: window-bench typing ROWS | group OCCURRENCES | load FIELDS,
// with the number of rounds as a third argument. Prints the seconds of every single act, one "name seconds" a line.
#include "workplace.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "main/commands.h"
#include "main/layout.h"
#include "main/session.h"
#include "main/start_up.h"
#include "model/field_model.h"
#include "model/work_files.h"
#include "platform/controls.h"
#include "platform/program.h"
#include "platform/qt/views.h"
#include "platform/qt/window.h"
#include "report/load_command.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// Notes that a widget is painted.
class PaintWatch : public QObject {
public:
    bool Seen = false;

protected:
    bool eventFilter(QObject * /*watched*/, QEvent *event) override {
        Seen = Seen || event->type() == QEvent::Paint;
        return false;
    }
};

[[noreturn]] void Fail(const char *what) {
    std::fprintf(stderr, "window-bench: %s\n", what);
    std::_Exit(1);
}

// From the act until the window server has what the control's widget painted because of it.
void Measure(const char *name, const Control &painted, const std::function<void()> &act) {
    constexpr double TooLong = 60;
    QWidget *const viewport = dynamic_cast<QAbstractScrollArea &>(*WidgetOf(painted)).viewport();
    QTest::qWait(0);
    PaintWatch watch;
    viewport->installEventFilter(&watch);
    const auto start = Clock::now();
    act();
    watch.Seen = false; // painted in the middle of a load
    while (!watch.Seen) {
        QCoreApplication::processEvents();
        if (SecondsSince(start) > TooLong) Fail(name);
    }
    QGuiApplication::sync();
    std::printf("%s %.6f\n", name, SecondsSince(start));
}

void Press(Qt::Key key, const QString &text = {}) {
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), key, text, Qt::NoModifier);
}

// The entry screen, with the focus on the field list.
void OpenWindow() {
    ConnectMainWindow();
    if (!LoadMainWindow({.Resources = Folder(), .Report = ""})) Fail("start");
    ShowMainWindow(MainLayout(), WindowTitle, CloseMainWindow, OfferSave, EndSession);
    ActivateMainWindow();
    dynamic_cast<QPushButton &>(*WidgetOf(Quintave.LogoOff)).click();
    if (!QTest::qWaitForWindowExposed(MainWindow())) Fail("show");
    QApplication::setActiveWindow(MainWindow());
    QTest::qWait(200);
}

// A value is typed into every row in turn, first to last, and again.
void TypeIntoRows(Control &list, Control &box, int rounds) {
    for (int round = 0; round < rounds; ++round) {
        if (static_cast<std::size_t>(list.ListIndex) + 1 == list.Rows.size()) Press(Qt::Key_Home);
        Press(Qt::Key_Return);
        Measure("key", box, [] { Press(Qt::Key_X, "x"); });
        Measure("enter", list, [] { Press(Qt::Key_Return); });
    }
}

void Typing(int rows, int rounds) {
    std::string fields;
    for (int i = 0; i < rows; ++i) fields += "1,200,\"TEXT\",\"Field " + std::to_string(i) + "\",\"\",\"\"\r\n";
    WriteTemplateIn(fields);
    OpenWindow();
    // In the middle of the list, where the most rows are on both sides.
    Report([&] { UserSelects(Quintave.List1[0], static_cast<Integer>(rows / 2)); });
    TypeIntoRows(Quintave.List1[0], Quintave.Text1[2], rounds);
}

void Group(int occurrences, int rounds) {
    std::string fields = "1,2,\"GROUP START\",\"Samples\",\"\",\"\"\r\n";
    for (const char *member : {"Depth", "Rock", "Colour", "Weight"})
        fields += "2,80,\"TEXT\",\"" + std::string(member) + "\",\"\",\"\"\r\n";
    fields += "1,0,\"GROUP END\",\"\",\"\",\"\"\r\n";
    WriteTemplateIn(fields);
    OpenWindow();
    constexpr Integer Cells = 320;
    WriteIn(GroupFileName(1), GroupStoreHeader(Cells, static_cast<Integer>(occurrences)) +
                                  std::string(static_cast<std::size_t>(occurrences) * Cells, ' '));
    Measure("open", Quintave.List1[GroupList], [] { Press(Qt::Key_Return); });
    TypeIntoRows(Quintave.List1[GroupList], Quintave.Text1[5], rounds);
    for (int round = 0; round < rounds; ++round)
        Measure("next", Quintave.List1[GroupList], [] { Report([] { UserPresses(Quintave.FldChange[Next]); }); });
}

// The one question of the load is answered No as soon as it is asked.
void AnswerNo() {
    auto *const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [] {
        if (auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
            box->button(QMessageBox::No)->click();
    });
    timer->start();
}

void Load(int fields) {
    WriteTemplateIn(ManyFields(fields));
    WriteIn("BENCH.RPX", ManyRecords(fields));
    OpenWindow();
    AnswerNo();
    Measure("load", Quintave.List1[0], [] { Report([] { LoadReport(Folder(), "BENCH.RPX"); }); });
    if (!RowValue[0].ends_with("|value number 0")) Fail("load");
}

} // namespace

int main(int argc, char **argv) {
    StartProgram(argc, argv);
    if (argc != 4) return 2;
    const std::string_view scene = argv[1];
    const int size = std::atoi(argv[2]);
    const int rounds = std::atoi(argv[3]);
    if (scene == "typing") Typing(size, rounds);
    if (scene == "group") Group(size, rounds);
    if (scene == "load") Load(size);
    DeleteWorkFiles();
    return 0;
}
