// Unsaved entries on the real window: kept by the toolkit's timer while the user types, offered in a message box.
#include "window/window_test.h"

#include "main/start_up.h"
#include "platform/files.h"
#include "window/templates.h"

#include <QTest>

namespace {

constexpr const char *Name = "quintave.rec";

class Recovery : public WindowTest {
protected:
    // Types a value, leaves its edit open, and waits for the timer.
    void TypeAndWait() {
        Start(TextRows({"A", "B"}));
        DoubleClickRow(Fields(), 0);
        Type("Wells");
        ASSERT_TRUE(QTest::qWaitFor([this] { return folder.Has(Name); }, 10000));
    }

    // The start of another session on what a killed one has left.
    void StartAgainOn(const std::string &bytes) {
        DataChanged = False;
        UnlockDirectory();
        folder.Write(Name, bytes);
        ASSERT_TRUE(LoadMainWindow({}));
        ActivateMainWindow();
        Settle();
    }

    void ExpectQuestion() {
        ASSERT_EQ(Dialogs.Boxes.size(), 1U);
        EXPECT_EQ(Dialogs.Boxes[0],
                  (SeenBox{"UNSAVED ENTRIES",
                           "The entries of your last session were not SAVED when Quintave ended.\n\n"
                           "        Fields Template File: SITE.FTF\n\n"
                           "Would you like to bring them BACK?\n\n"
                           "        YES - Bring all entries back, still to be saved.\n"
                           "        NO - Remove them for good.",
                           QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes}));
    }
};

} // namespace

TEST_F(Recovery, TheTimerKeepsAnOpenEditAndLeavesTheBoxAlone) {
    TypeAndWait();
    EXPECT_NE(folder.Read(Name).find("Wells"), std::string::npos);
    EXPECT_EQ(FocusName(), "Text1_1");
    EXPECT_EQ(Box().toPlainText(), "Wells");
    EXPECT_EQ(Box().textCursor().position(), 5);
    EXPECT_EQ(RowText(Fields(), 0), " A                         | ");
    Type("!");
    EXPECT_EQ(Box().toPlainText(), "Wells!");
}

TEST_F(Recovery, YesShowsTheEntries) {
    TypeAndWait();
    Dialogs.Press(QMessageBox::Yes);
    StartAgainOn(folder.Read(Name));
    ExpectQuestion();
    EXPECT_EQ(RowText(Fields(), 0), " A                         | Wells");
}

TEST_F(Recovery, NoStartsClean) {
    TypeAndWait();
    Dialogs.Press(QMessageBox::No);
    StartAgainOn(folder.Read(Name));
    ExpectQuestion();
    EXPECT_EQ(RowText(Fields(), 0), " A                         | ");
    EXPECT_FALSE(folder.Has(Name));
}

TEST_F(Recovery, ADamagedFileIsToldAndKeptAside) {
    TypeAndWait();
    Dialogs.Press(QMessageBox::Ok);
    StartAgainOn(folder.Read(Name) + "x");
    ASSERT_EQ(Dialogs.Boxes.size(), 1U);
    EXPECT_EQ(Dialogs.Boxes[0], (SeenBox{"UNSAVED ENTRIES",
                                         "The file with the unsaved entries of your last session is damaged!\n\n"
                                         "Your unsaved entries are NOT being loaded into Quintave!\n\n"
                                         "They are kept in the file " +
                                             folder.Path() + "quintave-kept1.rec.",
                                         QMessageBox::Critical, QMessageBox::Ok, QMessageBox::Ok}));
    EXPECT_EQ(RowText(Fields(), 0), " A                         | ");
    EXPECT_TRUE(folder.Has("quintave-kept1.rec"));
}
