// The help window beside the main window.
#include "window/window_test.h"

#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QPointer>
#include <QTest>

namespace {

class HelpWindows : public WindowTest {
protected:
    void SetUp() override {
        folder.Write("A.HLP", "About A\r\nsecond line");
        folder.Write("B.HLP", "About B");
        Start({R"(1,30,"TEXT","A","","A.HLP")", R"(1,30,"TEXT","B","","B.HLP")", R"(1,30,"TEXT","C","","")"});
        Click(Named("CommandMoreHelp"));
    }

    static QWidget *Window() {
        for (QWidget *window : QApplication::topLevelWidgets())
            if (window->objectName() == "HelpForm" && window->isVisible()) return window;
        return nullptr;
    }

    static QPlainTextEdit &Text() {
        auto *const text = Window()->findChild<QPlainTextEdit *>("HelpText");
        if (text == nullptr) throw std::runtime_error("no help text");
        return *text;
    }
};

} // namespace

TEST_F(HelpWindows, MoreHelpShowsTheFileInAWindowThatOnlyShows) {
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Text().toPlainText(), "\nAbout A\nsecond line");
    EXPECT_TRUE(Text().isReadOnly());
    EXPECT_EQ(Text().accessibleName(), "Help text");
    EXPECT_FALSE(Window()->isModal());
    EXPECT_EQ(Named("helpline").property("tag").toString(), "-1");
}

TEST_F(HelpWindows, AnotherRowsHelpIsShownAndARowWithoutOneKeepsIt) {
    ClickRow(Fields(), 1);
    EXPECT_EQ(Text().toPlainText(), "\nAbout B");
    ClickRow(Fields(), 2);
    EXPECT_EQ(Text().toPlainText(), "\nAbout B");
}

TEST_F(HelpWindows, ShortcutsAreDeadInIt) {
    ASSERT_NE(Window(), nullptr);
    for (const char letter : {'A', 'F', 'P', 'Q', 'R', 'S'})
        QTest::keyClick(&Text(), static_cast<Qt::Key>(letter), Qt::ControlModifier);
    EXPECT_TRUE(Dialogs.Titles.empty());
    EXPECT_NE(Window(), nullptr);
}

TEST_F(HelpWindows, TypingInItChangesNothing) {
    Text().setFocus();
    QTest::keyClick(&Text(), 'x');
    QTest::keyClick(&Text(), Qt::Key_Return);
    QTest::keyClick(&Text(), Qt::Key_Delete);
    EXPECT_EQ(Text().toPlainText(), "\nAbout A\nsecond line");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(HelpWindows, ASecondClickReloadsNothing) {
    folder.Write("A.HLP", "Other text");
    Click(Named("CommandMoreHelp"));
    EXPECT_EQ(Text().toPlainText(), "\nAbout A\nsecond line");
}

TEST_F(HelpWindows, ClosedItCanBeOpenedAgain) {
    Window()->close();
    Settle();
    EXPECT_EQ(Named("helpline").property("tag").toString(), "0");
    EXPECT_EQ(Window(), nullptr);
    Click(Named("CommandMoreHelp"));
    EXPECT_NE(Window(), nullptr);
}

TEST_F(HelpWindows, ItClosesWithTheMainWindow) {
    EXPECT_TRUE(MainWindow()->close());
    QCoreApplication::processEvents();
    EXPECT_EQ(Window(), nullptr);
}

TEST_F(HelpWindows, CtrlF1ShowsTheKeysFromAListAndFromABox) {
    Window()->close();
    ASSERT_EQ(Window(), nullptr);
    QTest::keyClick(&Fields(), Qt::Key_F1, Qt::ControlModifier);
    ASSERT_NE(Window(), nullptr);
    EXPECT_TRUE(Text().toPlainText().contains("\n  Ctrl+S    Save the report\n"));
    Window()->close();
    DoubleClickRow(Fields(), 0);
    QTest::keyClicks(&Named("Text1_1"), "typed");
    QTest::keyClick(&Named("Text1_1"), Qt::Key_F1, Qt::ControlModifier);
    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(RowValue[0], "typed"); // a command commits the edit first
}
