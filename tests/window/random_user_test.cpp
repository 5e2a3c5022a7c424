// A user who presses keys and clicks at random: after every act the window shows what the program holds, and the
// program holds what it may. RANDOM_USER_SEED and RANDOM_USER_STEPS in the environment make another user.
#include "window/window_test.h"

#include "groups/occurrence.h"
#include "groups/open_group.h"
#include "model/row_text.h"
#include "model/store.h"
#include "platform/qt/window.h"
#include "screen/selection.h"
#include "window/templates.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>
#include <random>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int StepsOfAUser = 10'000;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr int StepsOfAUser = 10'000;
#else
constexpr int StepsOfAUser = 1'000;
#endif
#else
constexpr int StepsOfAUser = 1'000;
#endif

constexpr std::size_t KeptActs = 40; // told when something is wrong

int FromEnvironment(const char *name, int otherwise) {
    const char *const text = std::getenv(name);
    return text == nullptr ? otherwise : std::atoi(text);
}

QString Shown(const std::string &text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

class RandomUser : public WindowTest, public testing::WithParamInterface<int> {
protected:
    void Begin() {
        std::vector<std::string> lines = AllKinds();
        lines.insert(lines.end(), {R"(1,60,"TEXT","Keyword","Several, one by one","")",
                                   R"(-1,40,"TEXT","Version","One alone","HELP.HLP")"});
        folder.Write("HELP.HLP", "Help.\r\n");
        Dialogs.Otherwise = [this](QDialog &dialog) { Answer(dialog); };
        Start(lines);
        random.seed(static_cast<unsigned>(FromEnvironment("RANDOM_USER_SEED", GetParam())));
    }

    // One act of the user's.
    void Act() {
        if (QApplication::activePopupWidget() != nullptr) return UsePopup();
        using Kind = void (RandomUser::*)();
        // Each kind up to its share of 1,000.
        constexpr std::array<std::pair<int, Kind>, 10> Kinds{{{420, &RandomUser::PressAnyKey},
                                                              {520, &RandomUser::PressCommandKey},
                                                              {720, &RandomUser::ClickAnyRow},
                                                              {850, &RandomUser::ClickAnyButton},
                                                              {880, &RandomUser::Paste},
                                                              {910, &RandomUser::Compose},
                                                              {940, &RandomUser::Scroll},
                                                              {960, &RandomUser::ChooseInCombo},
                                                              {980, &RandomUser::ClickAnyBox},
                                                              {1000, &RandomUser::ResizeWindow}}};
        const int kind = Below(1000);
        for (const auto &[end, act] : Kinds)
            if (kind < end) return (this->*act)();
    }

    // --- Acts
    // -----------------------------------------------------------------------------------------------------------

    void PressAnyKey() {
        struct Stroke {
            Qt::Key Code;
            Qt::KeyboardModifiers With;
            const char *Text;
        };
        static constexpr std::array<Stroke, 34> Strokes{{{Qt::Key_A, Qt::NoModifier, "a"},
                                                         {Qt::Key_R, Qt::NoModifier, "r"},
                                                         {Qt::Key_M, Qt::NoModifier, "m"},
                                                         {Qt::Key_O, Qt::NoModifier, "o"},
                                                         {Qt::Key_G, Qt::ShiftModifier, "G"},
                                                         {Qt::Key_7, Qt::NoModifier, "7"},
                                                         {Qt::Key_Space, Qt::NoModifier, " "},
                                                         {Qt::Key_Eacute, Qt::NoModifier, "é"},
                                                         {Qt::Key_unknown, Qt::NoModifier, "€"},
                                                         {Qt::Key_unknown, Qt::NoModifier, "ж"},
                                                         {Qt::Key_Bar, Qt::NoModifier, "|"},
                                                         {Qt::Key_QuoteDbl, Qt::ShiftModifier, "\""},
                                                         {Qt::Key_Comma, Qt::NoModifier, ","},
                                                         {Qt::Key_Return, Qt::NoModifier, "\r"},
                                                         {Qt::Key_Return, Qt::NoModifier, "\r"},
                                                         {Qt::Key_Enter, Qt::KeypadModifier, "\r"},
                                                         {Qt::Key_Return, Qt::ControlModifier, "\r"},
                                                         {Qt::Key_Return, Qt::ShiftModifier, "\r"},
                                                         {Qt::Key_Backspace, Qt::NoModifier, "\b"},
                                                         {Qt::Key_Delete, Qt::NoModifier, "\x7f"},
                                                         {Qt::Key_Escape, Qt::NoModifier, "\x1b"},
                                                         {Qt::Key_Tab, Qt::NoModifier, "\t"},
                                                         {Qt::Key_Backtab, Qt::ShiftModifier, ""},
                                                         {Qt::Key_Up, Qt::NoModifier, ""},
                                                         {Qt::Key_Down, Qt::NoModifier, ""},
                                                         {Qt::Key_Down, Qt::NoModifier, ""},
                                                         {Qt::Key_Left, Qt::NoModifier, ""},
                                                         {Qt::Key_Right, Qt::NoModifier, ""},
                                                         {Qt::Key_PageUp, Qt::NoModifier, ""},
                                                         {Qt::Key_PageDown, Qt::NoModifier, ""},
                                                         {Qt::Key_Home, Qt::NoModifier, ""},
                                                         {Qt::Key_End, Qt::ShiftModifier, ""},
                                                         {Qt::Key_F1, Qt::NoModifier, ""},
                                                         {Qt::Key_Insert, Qt::ShiftModifier, ""}}};
        const int which = Below(static_cast<int>(Strokes.size()));
        const Stroke &stroke = Strokes.at(static_cast<std::size_t>(which));
        // Without anything to lose, Quit asks nothing and ends the program.
        if (FocusName() == "CommandQuit" && DataChanged == False) return Key(Qt::Key_Tab);
        Note("key " + std::to_string(which) + " " + stroke.Text);
        Key(stroke.Code, stroke.With, QString::fromUtf8(stroke.Text));
    }

    void PressCommandKey() {
        constexpr std::string_view Letters = "BDEGINTVBDEGINTVBDEGINTVXCZJAFPQRS";
        const char letter = Letters[static_cast<std::size_t>(Below(static_cast<int>(Letters.size())))];
        if (letter == 'Q' && DataChanged == False) return;
        // Dialogues of files take their time.
        if (std::string_view("AFPS").find(letter) != std::string_view::npos && Below(4) != 0) return;
        Note(std::string("Ctrl+") + letter);
        Ctrl(letter);
    }

    void ClickAnyRow() {
        const auto lists = Visible<QListView>([](const QListView &list) { return list.model()->rowCount() > 0; });
        if (lists.empty()) return;
        QListView &list = *Any(lists);
        const int row = Below(list.model()->rowCount());
        const int way = Below(6);
        Note("row " + std::to_string(row) + " of " + list.objectName().toStdString() + " way " + std::to_string(way));
        if (way < 3)
            ClickRow(list, row);
        else if (way < 5)
            DoubleClickRow(list, row);
        else
            ClickRow(list, row, Below(2) == 0 ? Qt::RightButton : Qt::MiddleButton);
        ClosePopup();
    }

    void ClickAnyButton() {
        const auto buttons = Visible<QPushButton>([](const QPushButton &button) {
            return button.isEnabled() && (button.objectName() != "CommandQuit" || DataChanged != False);
        });
        if (buttons.empty()) return;
        QPushButton &button = *Any(buttons);
        const bool slow =
            button.objectName().startsWith("Command") || button.objectName().startsWith("PrintFramePrint");
        if (slow && Below(4) != 0) return;
        Note("button " + button.objectName().toStdString());
        Click(button);
    }

    void Paste() {
        constexpr std::array<const char *, 5> Texts{"two words", "one\ntwo\r\nthree", "a|b\"c", "\xD0\x96\t\x01", ""};
        QApplication::clipboard()->setText(QString::fromUtf8(Texts.at(static_cast<std::size_t>(Below(5)))));
        Note("paste");
        if (ActiveList == 0)
            Ctrl('V');
        else
            Key(Qt::Key_Insert, Qt::ShiftModifier);
    }

    void Compose() {
        constexpr std::array<const char *, 4> Texts{"ñ", "e\xCC\x81", "日本", "ok"};
        QWidget *const focused = QApplication::focusWidget();
        if (focused == nullptr) return;
        Note("compose in " + FocusName());
        QInputMethodEvent event;
        event.setCommitString(QString::fromUtf8(Texts.at(static_cast<std::size_t>(Below(4)))));
        QCoreApplication::sendEvent(focused, &event);
        Settle();
    }

    void Scroll() {
        if (Below(2) == 0 && Named("FIScroll").isVisible()) {
            auto &bar = The<QScrollBar>("FIScroll");
            Note("scroll bar");
            bar.triggerAction(Below(2) == 0 ? QScrollBar::SliderSingleStepAdd : QScrollBar::SliderSingleStepSub);
            return Settle();
        }
        const auto widgets = Visible<QWidget>([](const QWidget &widget) { return !widget.objectName().isEmpty(); });
        QWidget &widget = *Any(widgets);
        Note("wheel over " + widget.objectName().toStdString());
        const QPointF at = widget.rect().center();
        QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, Below(2) == 0 ? 120 : -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&widget, &event);
        Settle();
    }

    void ChooseInCombo() {
        const auto combos = Visible<QComboBox>([](const QComboBox &combo) { return combo.count() > 0; });
        if (combos.empty()) return;
        QComboBox &combo = *Any(combos);
        Note("combo " + combo.objectName().toStdString());
        combo.setFocus(Qt::MouseFocusReason);
        const int row = Below(combo.count());
        combo.setCurrentIndex(row);
        emit combo.activated(row);
        Settle();
    }

    void ClickAnyBox() {
        const auto boxes = Visible<QPlainTextEdit>([](const QPlainTextEdit &) { return true; });
        if (boxes.empty()) return;
        Note("click into " + Any(boxes)->objectName().toStdString());
        Click(*Any(boxes)->viewport(), Below(4) == 0 ? Qt::MiddleButton : Qt::LeftButton);
    }

    void ResizeWindow() {
        Note("resize");
        MainWindow()->resize(400 + Below(900), 300 + Below(700));
        Settle();
    }

    // --- Dialogues
    // ------------------------------------------------------------------------------------------------------

    void Answer(QDialog &dialog) {
        Note("answer to " + dialog.windowTitle().toStdString());
        if (auto *const files = qobject_cast<QFileDialog *>(&dialog)) return AnswerFile(*files);
        auto *const box = qobject_cast<QMessageBox *>(&dialog);
        if (box == nullptr) return dialog.reject();
        const auto buttons = box->buttons();
        // Ending the program would end the test.
        const bool quits = box->windowTitle() == "Quit Quintave";
        QAbstractButton *const chosen =
            quits ? box->button(QMessageBox::Cancel) : buttons.at(Below(int(buttons.size())));
        ASSERT_NE(chosen, nullptr);
        chosen->click();
    }

    void AnswerFile(QFileDialog &files) {
        const QString pattern = files.nameFilters().join(' ');
        const QString folderPath = QString::fromStdString(folder.Path());
        QString name = "user.rpx";
        if (pattern.contains("ftf", Qt::CaseInsensitive)) name = "SITE.FTF";
        if (pattern.contains("txt", Qt::CaseInsensitive)) name = "user.txt";
        const bool there = folder.Has(name.toStdString());
        if (Below(3) == 0 || (!there && files.acceptMode() == QFileDialog::AcceptOpen)) return files.reject();
        files.selectFile(folderPath + name);
        static_cast<QDialog &>(files).accept();
    }

    // The rows of a combo box are open.
    void UsePopup() {
        constexpr std::array Keys{Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Escape};
        Note("key in the rows of a combo box");
        Key(Keys.at(static_cast<std::size_t>(Below(4))));
    }

    static void ClosePopup() {
        while (QWidget *const popup = QApplication::activePopupWidget()) popup->close();
        Settle();
    }

    // --- What must hold
    // -------------------------------------------------------------------------------------------------

    void Check() {
        ASSERT_EQ(QApplication::activeModalWidget(), nullptr);
        ASSERT_TRUE(MainWindow()->isVisible());
        ASSERT_EQ(QApplication::overrideCursor(), nullptr);
        CheckRows();
        if (ActiveList == GroupList) CheckGroup();
        CheckEntryControls();
        CheckWidgets();
    }

    // The element of a row of the field list; the rows of an open group lend them to its members meanwhile.
    static Integer ElementOfRow(Integer row) {
        const bool lent =
            ActiveList == GroupList && static_cast<std::size_t>(row) < Quintave.List1[GroupList].Rows.size();
        return lent ? GroupSlot[row][0] : RowField[row];
    }

    static void CheckRows() {
        ASSERT_EQ(static_cast<int>(Quintave.List1[0].Rows.size()), NumRows);
        for (Integer row = 0; row < NumRows; ++row) {
            const Integer e = ElementOfRow(row);
            const std::string &value = RowValue[row];
            const std::string prefix = RowPrefix(FieldTitle[e]);
            const std::string expected = IsSection(e)      ? SeparatorRow()
                                         : IsGroupStart(e) ? prefix + std::string(GroupRowText)
                                                           : RowWithValue(prefix, value);
            ASSERT_EQ(Quintave.List1[0].Rows[static_cast<std::size_t>(row)], expected) << "row " << row;
            ASSERT_EQ(value.find('"'), std::string::npos) << value;
            ASSERT_EQ(RowText(Fields(), row), ShownInOneLine(expected)) << "row " << row;
        }
    }

    static std::string ShownInOneLine(const std::string &text) {
        // A row may be cut in a line break.
        return Shown(text).replace("\r\n", " ").replace('\r', ' ').toStdString();
    }

    void CheckGroup() const {
        const auto &rows = Quintave.List1[GroupList].Rows;
        for (Integer row = 0; static_cast<std::size_t>(row) < rows.size(); ++row) {
            std::string text = MemberText(row);
            text.erase(text.find_last_not_of(' ') + 1);
            ASSERT_EQ(rows[static_cast<std::size_t>(row)], RowWithValue(RowPrefix(FieldTitle[RowField[row]]), text));
            ASSERT_EQ(text.find_first_of("|\""), std::string::npos) << text;
        }
        ASSERT_EQ(Quintave.TblFldNum.ListIndex, GroupLoadedOccurrence);
        ASSERT_EQ(static_cast<int>(Quintave.TblFldNum.Rows.size()), GroupOccurrenceCount);
        const std::string store = folder.Read("GRP00007.XXX");
        const auto occurrences =
            static_cast<unsigned char>(store.at(2)) + 256 * static_cast<unsigned char>(store.at(3));
        ASSERT_EQ(occurrences, GroupOccurrenceCount);
        const StoreLayout layout = LayoutIn(store, GroupHead());
        ASSERT_GE(store.size(), layout.Bytes + layout.Record * static_cast<std::size_t>(GroupOccurrenceCount));
    }

    static void CheckEntryControls() {
        if (!Named("editframe").isVisible()) return;
        int shown = 0;
        for (const Control &box : Quintave.Text1) shown += IsShown(box);
        for (const Control &list : Quintave.List2) shown += IsShown(list);
        ASSERT_LE(shown, 1);
        for (const Integer list : {Integer{0}, GroupList})
            ASSERT_FALSE(IsShown(OtherBox(list)) && !IsShown(Quintave.List2[static_cast<std::size_t>(list)]));
        const bool field = NumRows > 0 && !IsSection(RowField[CurrentField]) && !IsGroupStart(RowField[CurrentField]);
        ASSERT_EQ(shown, field ? 1 : 0) << "row " << CurrentField;
    }

    static bool IsShown(const Control &control) {
        const QWidget *const widget = control.Name.empty() ? nullptr : WidgetOf(control);
        return widget != nullptr && widget->isVisible();
    }

    // Every widget shows its control's state.
    static void CheckWidgets() {
        for (Control *const list : {&Quintave.List1[0], &Quintave.List1[3], &Quintave.List2[0], &Quintave.List2[3]})
            if (IsShown(*list)) {
                const auto &view = dynamic_cast<const QListView &>(*WidgetOf(*list));
                ASSERT_EQ(view.model()->rowCount(), static_cast<int>(list->Rows.size())) << list->Name;
                ASSERT_EQ(SelectedRow(view), list->ListIndex) << list->Name;
            }
        for (const Control &box : Quintave.Text1) CheckBox(box);
        for (const Control &box : Quintave.Text2) CheckBox(box);
        const auto &bar = The<QScrollBar>("FIScroll");
        ASSERT_EQ(bar.maximum(), Quintave.FIScroll.Max);
        ASSERT_EQ(bar.value(), Quintave.FIScroll.Value);
        ASSERT_EQ(The<QLabel>("FILabel_0").text().toStdString(), std::to_string(Quintave.FIScroll.Max));
        const QWidget *const popup = QApplication::activePopupWidget();
        if (Focused() != nullptr && QApplication::focusWidget() != nullptr && popup == nullptr) {
            ASSERT_EQ(QApplication::focusWidget(), WidgetOf(*Focused())) << FocusName() << " and " << Focused()->Name;
        }
    }

    static void CheckBox(const Control &box) {
        if (!IsShown(box)) return;
        const auto &edit = dynamic_cast<const QPlainTextEdit &>(*WidgetOf(box));
        ASSERT_EQ(edit.toPlainText().toStdString(), Shown(box.Text).replace("\r\n", "\n").toStdString());
    }

    // --- Chance
    // ---------------------------------------------------------------------------------------------------------

    int Below(int end) { return std::uniform_int_distribution(0, end - 1)(random); }

    template <class T> T *Any(const std::vector<T *> &choices) {
        return choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))];
    }

    // The visible widgets of the main window, in an order that does not depend on where they lie in memory.
    template <class T, class Filter> static std::vector<T *> Visible(Filter fits) {
        std::vector<T *> found;
        for (T *const widget : MainWindow()->findChildren<T *>())
            if (widget->isVisible() && widget->window() == MainWindow() && fits(*widget)) found.push_back(widget);
        return found;
    }

    void Note(const std::string &act) {
        acts.push_back(act);
        if (acts.size() > KeptActs) acts.pop_front();
    }

    std::string LastActs() const {
        std::string text;
        for (const auto &act : acts) text += "\n  " + act;
        return text;
    }

    std::mt19937 random;
    std::deque<std::string> acts;
};

} // namespace

TEST_P(RandomUser, TheWindowShowsWhatTheProgramHolds) {
    Begin();
    const int steps = FromEnvironment("RANDOM_USER_STEPS", StepsOfAUser);
    for (int step = 0; step < steps; ++step) {
        Act();
        Check();
        ASSERT_FALSE(HasFailure()) << "after act " << step << "; the last of them:" << LastActs();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUser, testing::Values(1, 2, 3, 4, 5));
