// Ctrl+Z and Ctrl+Y in the real window: whose they are in a box, the note, and how long a large step takes.
#include "window/window_test.h"

#include "platform/qt/window.h"
#include "window/templates.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool Sanitized = true;
#elif defined(__has_feature)
constexpr bool Sanitized = __has_feature(address_sanitizer);
#else
constexpr bool Sanitized = false;
#endif

std::vector<std::string> TextFields(int count) {
    std::vector<std::string> lines;
    for (int n = 1; n <= count; ++n) lines.push_back("1,40,\"TEXT\",\"Field " + std::to_string(n) + R"(","","")");
    return lines;
}

QLabel *Note() { return MainWindow()->findChild<QLabel *>("Note"); }

class UndoKeys : public WindowTest {
protected:
    static std::string Stored(int row) { return RowValue[static_cast<Integer>(row)]; }
};

TEST_F(UndoKeys, InABoxItsOwnEditComesFirstThenTheScreens) {
    Start(TextFields(3));
    DoubleClickRow(Fields(), 0);
    Type("first");
    Key(Qt::Key_Return);
    DoubleClickRow(Fields(), 1);
    Type("second");
    Ctrl('Z');
    EXPECT_EQ(Box().toPlainText(), "");
    EXPECT_EQ(FocusName(), "Text1_1");
    Ctrl('Y');
    EXPECT_EQ(Box().toPlainText(), "second");
    Ctrl('Z');
    EXPECT_EQ(Stored(0), "first");
    Ctrl('Z');
    EXPECT_EQ(Stored(0), "");
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(Fields().currentIndex().row(), 0);
    Ctrl('Y');
    EXPECT_EQ(Stored(0), "first");
}

TEST_F(UndoKeys, AnEditThatACommandHasTakenIsTheScreens) {
    Start(TextFields(3));
    DoubleClickRow(Fields(), 0);
    Type("first");
    Dialogs.Pick(folder.Path() + "a.rpx");
    Ctrl('S');
    DoubleClickRow(Fields(), 0);
    Type("!");
    Ctrl('S'); // the box keeps the focus or is put away: what it held is the report's now
    EXPECT_EQ(Stored(0), "first!");
    Ctrl('Z');
    EXPECT_EQ(Stored(0), "first");
    Ctrl('Z');
    EXPECT_EQ(Stored(0), "");
    EXPECT_NE(DataChanged, False);
    Ctrl('Y');
    Ctrl('Y');
    EXPECT_EQ(DataChanged, False);
}

TEST_F(UndoKeys, ANoteSaysWhatWasUndoneAndTakesNoFocus) {
    Start(TextFields(3));
    Ctrl('Z');
    ASSERT_NE(Note(), nullptr);
    EXPECT_EQ(Note()->text(), "There is nothing to undo.");
    DoubleClickRow(Fields(), 1);
    Type("second");
    Key(Qt::Key_Return);
    Ctrl('Z');
    ASSERT_NE(Note(), nullptr);
    EXPECT_TRUE(Note()->isVisible());
    EXPECT_EQ(Note()->text(), "Undone: value of Field 2");
    EXPECT_EQ(FocusName(), "List1_0");
    QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(Note());
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::Notification);
    EXPECT_EQ(seen->text(QAccessible::Name), "Undone: value of Field 2");
}

// Up to the painted window, in the processor's time, so that a busy machine does not count.
TEST_F(UndoKeys, AMergeOver32000FieldsIsUndoneWithin50Milliseconds) {
    if (Sanitized) GTEST_SKIP() << "what it measures is the sanitizers' time";
    constexpr int Many = 32'000;
    constexpr double Allowed = 50;
    Start(TextFields(Many));
    std::string report = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n";
    for (int n = 1; n <= Many; ++n) report += "1,1,\"Field " + std::to_string(n) + "\",\"some value\"\r\n";
    folder.Write("a.rpx", report);
    Dialogs.Pick(folder.Path() + "a.rpx");
    Ctrl('A');
    ASSERT_EQ(Stored(Many - 1), "some value");
    double best = 1e9;
    for (int round = 0; round < 5; ++round) {
        const auto begin = std::clock();
        Ctrl('Z');
        MainWindow()->repaint();
        best = std::min(best, 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
        ASSERT_EQ(Stored(Many - 1), "");
        Ctrl('Y');
        ASSERT_EQ(Stored(Many - 1), "some value");
    }
    RecordProperty("milliseconds", std::to_string(best));
    std::printf("undone and painted in %.1f ms\n", best);
    EXPECT_LE(best, Allowed);
}

} // namespace
