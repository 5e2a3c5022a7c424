// The program with its real window, at work on a folder of the test's own. Keys and clicks go the way of the window
// system; dialogues are answered as planned in advance.
#pragma once

#include "form/main_window.h"
#include "model/field_model.h"
#include "support/folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QListView>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

// What a message box showed.
struct SeenBox {
    std::string Title;
    std::string Text; // line breaks as LF
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
    int Buttons = QMessageBox::NoButton;
    int Default = QMessageBox::NoButton;
};

bool operator==(const SeenBox &a, const SeenBox &b);
std::ostream &operator<<(std::ostream &out, const SeenBox &box);

// Answers to the dialogues to come, first to last. One that comes without an answer is put away and fails the test.
class DialogAnswers : public QObject {
public:
    DialogAnswers();

    // The next box is recorded in Boxes and its button is clicked.
    void Press(QMessageBox::StandardButton button);

    // The next dialogue is handed to the act, which must end it.
    void Next(std::function<void(QDialog &)> act);

    // The next dialogue is a file dialogue: a file (full path) is picked, or it is cancelled.
    void Pick(const std::string &path);
    void CancelFile();

    // What ends the dialogues that come without an answer instead of a failure.
    std::function<void(QDialog &)> Otherwise;

    bool AllGiven() const { return planned.empty(); }

    std::vector<SeenBox> Boxes;
    std::vector<std::string> Titles; // of every dialogue

private:
    void Look();

    std::deque<std::function<void(QDialog &)>> planned;
    QPointer<QDialog> handled;
};

SeenBox Seen(const QMessageBox &box);

class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    void TearDown() override;

    // Starts the program in the folder with this template as SITE.FTF, past the start-up frame.
    void Start(const std::vector<std::string> &templateLines, const std::string &version = "QuintaveV2");

    // The same up to the start-up frame, with files that the test has written itself.
    void StartUp();

    // The template file that Start writes.
    void WriteTemplate(const std::vector<std::string> &lines, const std::string &version = "QuintaveV2");

    Folder folder;
    DialogAnswers Dialogs;

private:
    std::string formerDirectory;
};

// A widget of the main window by its object name; the test ends where there is none.
QWidget &Named(const char *name);
template <class Widget> Widget &The(const char *name) { return dynamic_cast<Widget &>(Named(name)); }

inline QListView &Fields() { return The<QListView>("List1_0"); }
inline QListView &Choices() { return The<QListView>("List2_0"); }
inline QPlainTextEdit &Box(const char *name = "Text1_1") { return The<QPlainTextEdit>(name); }

// The object name of the widget with the focus; "" for none.
std::string FocusName();

// Pending events are handled, and the main window is the active one where no dialogue is open.
void Settle();

// A key with what it types, to whatever has the focus.
void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = {});
void Ctrl(char letter, Qt::KeyboardModifiers more = Qt::NoModifier);
void Type(const QString &text);

// Mouse clicks.
void Click(QWidget &widget, Qt::MouseButton button = Qt::LeftButton);
void ClickRow(QListView &list, int row, Qt::MouseButton button = Qt::LeftButton);
void DoubleClickRow(QListView &list, int row);

// The text of a row as drawn.
std::string RowText(const QListView &list, int row);
int SelectedRow(const QListView &list);

// Ratio of the contrast of two colours, 1 to 21.
double Contrast(const QColor &a, const QColor &b);
