// Loading reports in the real window: the questions and warnings of a load, and what its answers leave in the rows.
#include "window/window_test.h"

#include <QApplication>
#include <QEvent>
#include <QGroupBox>

#include <cstdio>

namespace {

const std::string Header = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n";

class Loads : public WindowTest {
protected:
    void SetUp() override {
        Start({R"(1,30,"TEXT","Title","","")", R"(-2,30,"TEXT","Place","","")", R"(1,9,"GROUP START","Samples","","")",
               R"(2,5,"TEXT","Depth","","")", R"(2,9,"MEMO","Notes","","")", R"(1,1,"GROUP END","","","")",
               R"(1,9,"GROUP START","Nothing","","")", R"(1,1,"GROUP END","","","")", R"(1,30,"TEXT","Last","","")"});
    }

    // Adds a report of these lines; dialogues that come while it is read are answered as planned before.
    void Load(const std::string &lines, std::initializer_list<QMessageBox::StandardButton> answers) {
        folder.Write("a.rpx", Header + lines);
        Dialogs.Pick(folder.Path() + "a.rpx");
        for (const auto answer : answers) Dialogs.Press(answer);
        Click(Named("CommandAdd"));
    }

    static std::string Value(int row) { return RowText(Fields(), row).substr(29); }
};

enum Rows { TitleRow, PlaceRow, SamplesRow, NothingRow, LastRow };

const SeenBox TooDeep{"Bad Nesting Level",
                      "The nesting level (3 ) of this field (Deep ) exceeds that allowed by the Fields Template File "
                      "(2)\n\nPress OK to continue",
                      QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok};

} // namespace

TEST_F(Loads, ATooDeepRecordIsSkippedOnOkAndEndsTheLoadOnCancel) {
    const std::string lines = "1,1,\"Title\",\"x\"\r\n3,2,\"Deep\",\"a\"\r\n\"1,1,b\"\r\n1,1,\"Last\",\"z\"\r\n";
    Load(lines, {QMessageBox::Cancel});
    EXPECT_EQ(Dialogs.Boxes.back(), TooDeep);
    EXPECT_EQ(Value(TitleRow), "x");
    EXPECT_EQ(Value(LastRow), "");
    Load(lines, {QMessageBox::Yes, QMessageBox::Ok}); // the title is there already: replaced
    EXPECT_EQ(Dialogs.Boxes.back(), TooDeep);
    EXPECT_EQ(Value(LastRow), "z");
}

TEST_F(Loads, ValuesCutToTheirGroupAreToldOnce) {
    Load("1,-9,\"Samples\",\"REPEATING GROUP, Occurrence #1\"\r\n2,1,\"Depth\",\"123456\"\r\n"
         "2,1,\"Notes\",\"1234567890\"\r\n1,-99,\"END REPEATING GROUP\",\"\"\r\n",
         {QMessageBox::Ok});
    ASSERT_EQ(Dialogs.Boxes.size(), 1U);
    EXPECT_EQ(Dialogs.Boxes[0],
              (SeenBox{"WARNING - Field Data Cut!",
                       "The data of 2 field(s) did not fit into their Repeating Group and were cut to the length that "
                       "the Fields Template File allows!\n\nFirst field: Depth",
                       QMessageBox::Warning, QMessageBox::Ok, QMessageBox::Ok}));
    DoubleClickRow(Fields(), SamplesRow);
    EXPECT_EQ(RowText(The<QListView>("List1_3"), 0), " Depth                     | 12345");
}

TEST_F(Loads, AFaultInTheFileIsToldAndTheRowsBeforeItStay) {
    Load("1,1,\"Title\",\"x\"\r\n1,1,\"Last\",\"say \"hi\"\"\r\n", {QMessageBox::Ok});
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"ERROR LOADING a.rpx",
                       "Error:  13 - Type mismatch\n\n\nQuintave Data Fields may have been corrupted!\n\nYou might "
                       "want to `RESET' and start over!",
                       QMessageBox::Critical, QMessageBox::Ok, QMessageBox::Ok}));
    EXPECT_EQ(Value(TitleRow), "x");
    EXPECT_EQ(The<QGroupBox>("editframe").title(), "[Template: SITE.FTF] - RPX File(s): a; ");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Loads, AMissingChoiceFileEndsTheLoad) {
    folder.Write("LIST.FTF", "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n"
                             "1,9,\"LIST\",\"Kind\",\"\",\"\"\r\nMap\r\nXXX-1XXX\r\n");
    Dialogs.Pick(folder.Path() + "LIST.FTF");
    Click(Named("CommandTemplate"));
    ASSERT_EQ(std::remove((folder.Path() + "LST00001.XXX").c_str()), 0);
    Load("1,1,\"Kind\",\"Map\"\r\n", {QMessageBox::Ok});
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"ERROR LOADING a.rpx",
                       "Error:  53 - File not found\n\n\nQuintave Data Fields may have been corrupted!\n\nYou might "
                       "want to `RESET' and start over!",
                       QMessageBox::Critical, QMessageBox::Ok, QMessageBox::Ok}));
}

TEST_F(Loads, AfterALoadTheSelectedRowsBoxShowsItsValue) {
    ClickRow(Fields(), LastRow);
    Load("1,1,\"Title\",\"x\"\r\n1,1,\"Last\",\"z\"\r\n", {});
    EXPECT_EQ(SelectedRow(Fields()), LastRow);
    EXPECT_TRUE(Box().isVisible());
    EXPECT_EQ(Box().toPlainText(), "z");
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Merge File");
}

// A list that is painted while a long report is read shows that the program is at work.
TEST_F(Loads, TheWindowIsPaintedDuringALongLoad) {
    class PaintWatch : public QObject {
    public:
        bool eventFilter(QObject *, QEvent *event) override {
            const bool loading = QApplication::overrideCursor() != nullptr;
            if (event->type() == QEvent::Paint && loading) ++Painted;
            return false;
        }
        int Painted = 0;
    } watch;
    Fields().viewport()->installEventFilter(&watch);
    std::string lines;
    for (int n = 0; n < 1000; ++n) lines += "1,1,\"Title\",\"" + std::to_string(n) + "\"\r\n";
    Load(lines, {QMessageBox::Yes});
    EXPECT_EQ(Value(TitleRow), "999");
    EXPECT_GT(watch.Painted, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Loads, CancellingTheDialogueChangesNothing) {
    Dialogs.CancelFile();
    Click(Named("CommandAdd"));
    EXPECT_EQ(The<QGroupBox>("editframe").title(), "[Template: SITE.FTF] - RPX File(s): ");
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Open File");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Loads, AGroupWithoutMembersSaysSoAndIsNotEntered) {
    Dialogs.Press(QMessageBox::Ok);
    DoubleClickRow(Fields(), NothingRow);
    EXPECT_EQ(Dialogs.Boxes.back(), (SeenBox{"REPEATABLE GROUP", "There are no data fields in this Repeating Group!",
                                             QMessageBox::Information, QMessageBox::Ok, QMessageBox::Ok}));
    EXPECT_FALSE(Named("List1_3").isVisible());
    EXPECT_EQ(SelectedRow(Fields()), NothingRow);
}
