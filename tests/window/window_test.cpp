// The program under test with its real window (window_test.h).
#include "window/window_test.h"

#include "main/commands.h"
#include "main/layout.h"
#include "main/session.h"
#include "main/start_up.h"
#include "platform/files.h"
#include "platform/program.h"
#include "platform/qt/window.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr int LookAgainAfter = 2; // milliseconds between two looks for a dialogue

// The window that keys go to: that of a popup or dialogue, else the main window.
QWindow *KeyWindow() {
    if (QWidget *const popup = QApplication::activePopupWidget()) return popup->windowHandle();
    if (QWidget *const modal = QApplication::activeModalWidget()) return modal->windowHandle();
    return MainWindow()->windowHandle();
}

Qt::Key KeyOfCharacter(QChar c) {
    const char16_t upper = c.toUpper().unicode();
    return static_cast<Qt::Key>(upper);
}

QPoint InWindow(const QWidget &widget, const QPoint &point) { return widget.mapTo(widget.window(), point); }

QPoint PointOfRow(QListView &list, int row) {
    const QModelIndex index = list.model()->index(row, 0);
    if (!list.visualRect(index).intersects(list.viewport()->rect())) list.scrollTo(index);
    return list.viewport()->mapTo(&list, list.visualRect(index).intersected(list.viewport()->rect()).center());
}

void MouseAt(QWidget &widget, const QPoint &point, QTest::MouseAction action, Qt::MouseButton button) {
    QTest::mouseEvent(action, widget.window()->windowHandle(), button, Qt::NoModifier, InWindow(widget, point));
    Settle();
}

} // namespace

bool operator==(const SeenBox &a, const SeenBox &b) {
    return a.Title == b.Title && a.Text == b.Text && a.Icon == b.Icon && a.Buttons == b.Buttons &&
           a.Default == b.Default;
}

std::ostream &operator<<(std::ostream &out, const SeenBox &box) {
    return out << "[" << box.Title << "] " << box.Text << " icon " << box.Icon << " buttons " << box.Buttons
               << " default " << box.Default;
}

SeenBox Seen(const QMessageBox &box) {
    SeenBox seen{box.windowTitle().toStdString(), box.text().toStdString(), box.icon(), box.standardButtons(), 0};
    seen.Default = box.standardButton(box.defaultButton());
    return seen;
}

// --- Dialogues
// --------------------------------------------------------------------------------------------------------------

DialogAnswers::DialogAnswers() {
    QTimer::singleShot(LookAgainAfter, this, [this] { Look(); });
}

void DialogAnswers::Look() {
    // A dialogue may open another one while it is being answered.
    QTimer::singleShot(LookAgainAfter, this, [this] { Look(); });
    auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog == handled || !dialog->isVisible()) return;
    handled = dialog;
    Titles.push_back(dialog->windowTitle().toStdString());
    if (planned.empty() && Otherwise) return Otherwise(*dialog);
    if (planned.empty()) {
        ADD_FAILURE() << "a dialogue without an answer: " << Titles.back();
        dialog->done(0);
        return;
    }
    const auto act = planned.front();
    planned.pop_front();
    act(*dialog);
}

void DialogAnswers::Next(std::function<void(QDialog &)> act) { planned.push_back(std::move(act)); }

void DialogAnswers::Press(QMessageBox::StandardButton button) {
    Next([this, button](QDialog &dialog) {
        auto *const box = qobject_cast<QMessageBox *>(&dialog);
        if (box == nullptr || box->button(button) == nullptr) {
            ADD_FAILURE() << "no such button in " << dialog.windowTitle().toStdString();
            dialog.done(0);
            return;
        }
        Boxes.push_back(Seen(*box));
        box->button(button)->click();
    });
}

void DialogAnswers::Pick(const std::string &path) {
    Next([path](QDialog &dialog) {
        auto *const files = qobject_cast<QFileDialog *>(&dialog);
        if (files == nullptr) {
            ADD_FAILURE() << "no file dialogue: " << dialog.windowTitle().toStdString();
            dialog.done(0);
            return;
        }
        files->selectFile(QString::fromStdString(path));
        dialog.accept();
    });
}

void DialogAnswers::CancelFile() {
    Next([](QDialog &dialog) {
        EXPECT_NE(qobject_cast<QFileDialog *>(&dialog), nullptr);
        dialog.reject();
    });
}

// --- The program
// ------------------------------------------------------------------------------------------------------------

WindowTest::WindowTest() : formerDirectory(CurrentDirectory()) {
    if (chdir(folder.Path().c_str()) != 0) throw std::runtime_error("chdir");
    ConnectMainWindow();
}

WindowTest::~WindowTest() {
    UnlockDirectory();
    if (chdir(formerDirectory.c_str()) != 0) std::abort();
}

void WindowTest::TearDown() {
    EXPECT_TRUE(Dialogs.AllGiven()) << "a dialogue that was to come did not come";
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "a dialogue was left open";
}

void WindowTest::WriteTemplate(const std::vector<std::string> &lines, const std::string &version) {
    std::string text = "\"QUINTAVE FIELDS TEMPLATE FILE\",\"" + version + "\",\"\",\"\",\"\",\"\"\r\n";
    for (const auto &line : lines) text += line + "\r\n";
    folder.Write("SITE.FTF", text);
}

void WindowTest::StartUp() {
    ASSERT_TRUE(LoadMainWindow({}));
    ShowMainWindow(MainLayout(), WindowTitle, CloseMainWindow, OfferSave, EndSession);
    ActivateMainWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(MainWindow()));
    // The banner lines of the start-up frame come by a timer.
    QTest::qWait(LookAgainAfter);
    Settle();
}

void WindowTest::Start(const std::vector<std::string> &templateLines, const std::string &version) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    WriteTemplate(templateLines, version);
    StartUp();
    Click(Named("LogoOff"));
}

QWidget &Named(const char *name) {
    auto *const widget = MainWindow()->findChild<QWidget *>(name);
    if (widget == nullptr) throw std::runtime_error(std::string("no widget ") + name);
    return *widget;
}

std::string FocusName() {
    const QWidget *const focused = QApplication::focusWidget();
    return focused == nullptr ? "" : focused->objectName().toStdString();
}

void Settle() {
    QCoreApplication::processEvents();
    // Without a window manager nobody gives the activation back when a dialogue has closed.
    if (QApplication::activeModalWidget() == nullptr && MainWindow() != nullptr && MainWindow()->isVisible() &&
        QApplication::activeWindow() != MainWindow()) {
        MainWindow()->activateWindow();
        QCoreApplication::processEvents();
    }
}

// --- Keys and mouse
// ---------------------------------------------------------------------------------------------------------

void Key(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString &text) {
    QTest::sendKeyEvent(QTest::Click, KeyWindow(), key, text, modifiers);
    Settle();
}

void Ctrl(char letter, Qt::KeyboardModifiers more) {
    // The window system hands over the control character, not the letter.
    const QString text = more & Qt::AltModifier ? QString() : QString(QChar(letter - '@'));
    Key(static_cast<Qt::Key>(letter), Qt::ControlModifier | more, text);
}

void Type(const QString &text) {
    for (const QChar c : text) {
        if (c == '\n')
            Key(Qt::Key_Return, Qt::NoModifier, "\r");
        else
            Key(KeyOfCharacter(c), c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier, c);
    }
}

void Click(QWidget &widget, Qt::MouseButton button) {
    MouseAt(widget, widget.rect().center(), QTest::MouseClick, button);
}

void ClickRow(QListView &list, int row, Qt::MouseButton button) {
    MouseAt(list, PointOfRow(list, row), QTest::MouseClick, button);
}

void DoubleClickRow(QListView &list, int row) {
    MouseAt(list, PointOfRow(list, row), QTest::MouseDClick, Qt::LeftButton);
}

std::string RowText(const QListView &list, int row) {
    return list.model()->index(row, 0).data(Qt::DisplayRole).toString().toStdString();
}

int SelectedRow(const QListView &list) {
    const QModelIndexList rows = list.selectionModel()->selectedIndexes();
    return rows.size() == 1 ? rows.front().row() : -1;
}

double Contrast(const QColor &a, const QColor &b) {
    const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    const auto luminance = [&](const QColor &c) {
        return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
    };
    const double x = luminance(a) + 0.05;
    const double y = luminance(b) + 0.05;
    return x > y ? x / y : y / x;
}
