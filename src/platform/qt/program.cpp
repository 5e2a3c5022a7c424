// The program's frame with a window: start, event loop, end (platform/program.h).
#include "platform/program.h"

#include "platform/controls.h"
#include "platform/hand_over.h"
#include "platform/qt/icon.h"
#include "platform/qt/views.h"
#include "platform/qt/window.h"

#include "platform/front.h"

#include <QApplication>
#include <QEvent>
#include <QSessionManager>
#include <QSettings>
#include <QSocketNotifier>
#include <QWidget>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// Both ends of the pipe that carries a signal's number into the event loop; -1 before there is one.
int SignalPipe[2] = {-1, -1};

// EndProgram was called.
bool Ending = false;

extern "C" void PassSignal(int number) {
    const char byte = static_cast<char>(number);
    // A full pipe holds a signal already.
    if (write(SignalPipe[0], &byte, 1) < 0) return;
}

// Runs `end` when the program is told to go. The program ends right there: it may be in the middle of a dialogue, and
// what would run after that must not bring work files back. So it does at the session's end.
void EndOnSignals(void (*end)()) {
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, SignalPipe) != 0) return;
    auto *notifier = new QSocketNotifier(SignalPipe[1], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [end] {
        constexpr int SignalStatus = 128;
        char number = 0;
        if (read(SignalPipe[1], &number, 1) != 1) return;
        end();
        std::_Exit(SignalStatus + number);
    });
    for (const int number : {SIGTERM, SIGHUP, SIGINT}) std::signal(number, PassSignal);
}

// The desktop's session is about to end: asked as on closing where asking is allowed, never held up otherwise. Another
// program may still hold the session, so this one goes on until it is told to end.
void AskBeforeSessionEnd(bool (*maySave)()) {
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp, [maySave](QSessionManager &manager) {
        if (!manager.allowsInteraction()) return;
        // An open dialogue waits for its answer, as it does when the window is closed.
        bool goesOn = !IsWaitingForAnswer();
        if (goesOn) Report([&] { RunAsEvent([&] { goesOn = maySave(); }); });
        // A release would let the session go on: no refusal is heard after it.
        goesOn ? manager.release() : manager.cancel();
    });
}

// The session has ended. All that could be asked has been asked by then.
class SessionEnd : public QObject {
public:
    explicit SessionEnd(void (*way)()) : QObject(qApp), end(way) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject *object, QEvent *event) override {
        if (object != qApp || event->type() != QEvent::Quit) return false;
        end();
        std::_Exit(0);
    }

private:
    void (*end)();
};

// Without a display the toolkit would end the program with advice on how to install it anew.
void NeedDisplay(int argc, char **argv) {
    for (int i = 1; i < argc; ++i)
        if (std::string_view(argv[i]) == "-platform") return;
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (std::getenv(name) != nullptr) return;
    std::fputs("quintave: there is no display to open a window on\n", stderr);
    std::exit(1);
}

// A dialogue that waits for its answer comes with the window.
void BringToFront(const std::string &activation) {
    if (!activation.empty()) qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activation));
    QWidget *const window = MainWindow();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    QWidget *const dialogue = QApplication::activeModalWidget();
    if (dialogue != nullptr) dialogue->raise();
    (dialogue == nullptr ? window : dialogue)->activateWindow();
}

} // namespace

void StartProgram(int &argc, char **argv) {
    NeedDisplay(argc, argv);
    std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow is told like a full disk
    // The toolkit's file dialog would write down where the user has been; nothing is kept between runs but his files.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
    // Those of other desktops cut the stated labels of file types, and tell small letters from capital ones.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    auto *application = new QApplication(argc, argv); // lives as long as the process
    application->setApplicationName("quintave");
    application->setDesktopFileName("io.github.quintave.quintave"); // the desktop's entry, packaging/, is named so
    application->setQuitOnLastWindowClosed(false);
    application->setWindowIcon(ProgramIcon());
    KeepSelectionsReadable();
}

void ShowMainWindow(const Place &layout, std::string (*title)(), bool (*mayClose)(), bool (*maySave)(), void (*end)()) {
    QWidget *const window = BuildMainWindow(layout, title, mayClose);
    EndOnSignals(end);
    AskBeforeSessionEnd(maySave);
    new SessionEnd(end);
    ShowChanges();
    window->show();
}

void ServeRequests(int listener, void (*take)(const std::string &report)) {
    if (listener < 0) return;
    auto *notifier = new QSocketNotifier(listener, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [=] {
        const std::optional<Request> request = TakeRequest(listener);
        if (!request || Ending) return;
        BringToFront(request->Activation);
        Report([&] { take(request->Report); });
    });
}

int RunProgram() {
    ShowChanges();
    return Ending ? 0 : QApplication::exec();
}

void EndProgram() {
    Ending = true;
    CloseForGood();
    if (MainWindow() != nullptr) MainWindow()->hide();
    QCoreApplication::exit(0);
}
