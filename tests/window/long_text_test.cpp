// A text of more lines than a report can count, put into a box of the real window.
#include "window/templates.h"
#include "window/window_test.h"

#include <QApplication>
#include <QClipboard>

namespace {

constexpr int MostLines = 32767;

class LongTexts : public WindowTest {};

} // namespace

TEST_F(LongTexts, APasteIsCutBehindTheLastLineAndThatIsTold) {
    Start(AllKinds());
    DoubleClickRow(Fields(), NotesRow);
    QApplication::clipboard()->setText(QString("\n").repeated(MostLines + 4) + "end");
    Dialogs.Press(QMessageBox::Ok);
    Ctrl('V');
    Settle();
    ASSERT_EQ(Dialogs.Boxes.size(), 1U);
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"Quintave", "The text was longer than its field allows and was cut. Lines left out: 5",
                       QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok}));
    EXPECT_EQ(Box("Text1_3").blockCount(), MostLines);
    EXPECT_EQ(FocusName(), "Text1_3");
    Key(Qt::Key_Return);
    EXPECT_EQ(Box("Text1_3").blockCount(), MostLines);
    Type("x");
    Key(Qt::Key_Return, Qt::ControlModifier);
    std::string stored = RowValue[NotesRow];
    EXPECT_EQ(std::count(stored.begin(), stored.end(), '\n'), MostLines - 1);
}

TEST_F(LongTexts, EnterTellsWhatItCutsOfALoadedText) {
    Start(AllKinds());
    RowValue[TitleRow] = std::string(40, 'a');
    DoubleClickRow(Fields(), TitleRow);
    ASSERT_EQ(Box().toPlainText(), QString(40, 'a'));
    Dialogs.Press(QMessageBox::Ok);
    Key(Qt::Key_Return);
    EXPECT_EQ(Dialogs.Boxes.back().Text,
              "The text was longer than its field allows and was cut. Characters left out: 10");
    EXPECT_EQ(RowValue[TitleRow], std::string(30, 'a'));
    EXPECT_EQ(FocusName(), "List1_0");
}
