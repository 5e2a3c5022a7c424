// What another program hands over, in the window: it comes to the front and opens the report when nothing else goes on.
#include "main/given_report.h"
#include "platform/hand_over.h"
#include "platform/program.h"
#include "platform/qt/window.h"
#include "window_test.h"

#include <QApplication>
#include <QTest>

#include <atomic>
#include <thread>

namespace {

constexpr int LongestWait = 5000; // milliseconds

class HandOverToWindow : public WindowTest {
protected:
    void Serve() {
        Start({R"(1,30,"TEXT","Title","","")"});
        folder.Write("mine.rpx", "0,\"QuintaveV2.0\",\"SITE.FTF\"\r\n1,1,\"Title\",\"12\"\r\n");
        ServeRequests(ListenForRequests(ResourceDir), ReceiveReport);
    }

    // Another program, which ends as soon as its report was taken.
    bool HandOverMeanwhile(const std::string &report) {
        std::atomic<int> taken{-1};
        std::thread other([&] { taken = HandOver(folder.Path(), report) ? 1 : 0; });
        const bool answered = QTest::qWaitFor([&] { return taken >= 0; }, LongestWait);
        other.join();
        return answered && taken == 1;
    }
};

} // namespace

TEST_F(HandOverToWindow, OpensTheReport) {
    Serve();
    EXPECT_TRUE(HandOverMeanwhile(folder.Path() + "mine.rpx"));
    EXPECT_TRUE(QTest::qWaitFor([] { return RowText(Fields(), 0) == " Title                     | 12"; }, LongestWait));
    EXPECT_EQ(MainWindow()->windowTitle(), "mine.rpx - SITE.FTF - Quintave");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(HandOverToWindow, BringsTheWindowBackFromTheTaskBar) {
    Serve();
    MainWindow()->showMinimized();
    EXPECT_TRUE(HandOverMeanwhile(""));
    EXPECT_TRUE(QTest::qWaitFor([] { return !MainWindow()->isMinimized() && MainWindow()->isActiveWindow(); }));
    EXPECT_EQ(RowText(Fields(), 0), " Title                     | ");
}

TEST_F(HandOverToWindow, AMessageBoxIsWaitedFor) {
    Serve();
    Type("Wells");
    Dialogs.Next([&](QDialog &box) {
        EXPECT_TRUE(HandOverMeanwhile(folder.Path() + "mine.rpx")); // taken at once,
        QTest::qWait(500);                                          // and not opened in the middle of the command
        EXPECT_EQ(MainWindow()->windowTitle(), "SITE.FTF - Quintave");
        dynamic_cast<QMessageBox &>(box).button(QMessageBox::Cancel)->click();
    });
    Ctrl('R');
    Dialogs.Press(QMessageBox::No);
    EXPECT_TRUE(QTest::qWaitFor([] { return RowValue[0] == "Wells|12"; }, LongestWait));
}
