// Printing from the real window: the question, the panel, its options and its file dialogue. What is printed: the tests
// of the print room; a print server: the desktop tests.
#include "window/window_test.h"

#include "window/templates.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <set>

namespace {

constexpr int YesNoOrCancel = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
const SeenBox Question{
    "PRINT CURRENT SCREEN FIELDS?",
    "YES: Print active screen display.\n\nNO: Print an existing (previously saved) Quintave report file.",
    QMessageBox::Question, YesNoOrCancel, QMessageBox::No};

class Printing : public WindowTest {
protected:
    void SetUp() override {
        folder.Write("old.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"A\",\"Wells\"\r\n");
        Start(TextRows({"A", "B"}));
    }

    void OpenFor(QMessageBox::StandardButton answer) {
        Dialogs.Press(answer);
        Click(Named("CommandPrint"));
    }

    void OpenForOldReport() {
        Dialogs.Press(QMessageBox::No);
        Dialogs.Pick(folder.Path() + "old.rpx");
        Click(Named("CommandPrint"));
    }

    // Prints to a file that is there, after the dialogue's question.
    void Replace(const std::string &name) {
        Dialogs.Pick(folder.Path() + name);
        Dialogs.Press(QMessageBox::Yes);
        Click(Named("PrintFramePrint_1"));
    }

    static void ExpectPanel() {
        EXPECT_FALSE(Named("editframe").isVisible());
        EXPECT_TRUE(Named("PrintFrame").isVisible());
        EXPECT_EQ(The<QGroupBox>("PrintFrame").title(), "Printing Screen Information...");
        EXPECT_EQ(The<QLabel>("printLabel").text(), "Waiting for PRINT command");
        for (const char *name : {"PrintFramePrint_0", "PrintFramePrint_1", "PrintFrameCancel"})
            EXPECT_TRUE(Named(name).isEnabled()) << name;
    }

    static void ExpectEntryScreen() {
        EXPECT_TRUE(Named("editframe").isVisible());
        EXPECT_FALSE(Named("PrintFrame").isVisible());
        EXPECT_EQ(FocusName(), "List1_0");
    }
};

// Notes what can be seen whenever the status is painted while a print runs.
class PrintWatch : public QObject {
public:
    PrintWatch() { time.start(); }

    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() != QEvent::Paint) return false;
        const QCursor *const shape = QApplication::overrideCursor();
        if (shape == nullptr) return false;
        Shapes.push_back(shape->shape());
        Times.push_back(time.elapsed());
        EXPECT_EQ(The<QLabel>("printLabel").text().toStdString(), Quintave.printLabel.Caption);
        Captions.push_back(The<QLabel>("printLabel").text().toStdString());
        for (const char *name : {"PrintFramePrint_0", "PrintFramePrint_1", "PrintFrameCancel"})
            Enabled.push_back(Named(name).isEnabled());
        return false;
    }

    std::vector<Qt::CursorShape> Shapes;
    std::vector<std::string> Captions;
    std::vector<bool> Enabled; // of the panel's three commands
    std::vector<qint64> Times; // milliseconds

private:
    QElapsedTimer time;
};

} // namespace

TEST_F(Printing, TheQuestionProposesTheSavedReportAndCancelChangesNothing) {
    OpenFor(QMessageBox::Cancel);
    EXPECT_EQ(Dialogs.Boxes.back(), Question);
    ExpectEntryScreen();
    EXPECT_EQ(Dialogs.Titles.size(), 1U);
}

TEST_F(Printing, TheScreenAndASavedReportShowThePanel) {
    OpenFor(QMessageBox::Yes);
    ExpectPanel();
    EXPECT_EQ(FocusName(), "PrintFrameIndent");
    Click(Named("PrintFrameCancel"));
    ExpectEntryScreen();
    OpenForOldReport();
    ExpectPanel();
    EXPECT_EQ(FocusName(), "PrintFrameIndent");
    EXPECT_EQ(Dialogs.Titles.back(), "Pick a Quintave report (*.RPX) file to print...");
}

TEST_F(Printing, WithoutAReportPickedTheEntryScreenStays) {
    Dialogs.Press(QMessageBox::No);
    Dialogs.Next([](QDialog &dialog) {
        const auto &files = dynamic_cast<QFileDialog &>(dialog);
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(files.nameFilters(), QStringList({"Quintave Files(*.rpx) (*.rpx)", "All files(*.*) (*)"}));
        dialog.reject();
    });
    Click(Named("CommandPrint"));
    ExpectEntryScreen();
    EXPECT_EQ(Dialogs.Titles.size(), 2U);
}

TEST_F(Printing, AFileThatIsNoReportIsRefused) {
    folder.Write("notes.txt", "x");
    Dialogs.Press(QMessageBox::No);
    Dialogs.Pick(folder.Path() + "notes.txt");
    Dialogs.Press(QMessageBox::Ok);
    Click(Named("CommandPrint"));
    EXPECT_EQ(Dialogs.Boxes.back(), (SeenBox{"Quintave", "You must select a `.RPX' file!\n\nPlease Try again.",
                                             QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok}));
    ExpectEntryScreen();
}

TEST_F(Printing, TheOptionsChangeOnThePanel) {
    OpenFor(QMessageBox::Yes);
    struct {
        const char *Caption, *Said;
        bool TakesIndent;
    } constexpr Steps[] = {
        {"Section/Field Nested Indents", "Section/Field Nested Indents", true},
        // The toolkit draws the doubled character once.
        {"Section/Field && Data Nested Indents", "Section/Field & Data Nested Indents", false},
        {"Raw Sect/Field/Data Nested Indents", "Raw Sect/Field/Data Nested Indents", false},
        {"NO Section/Field Indent", "NO Section/Field Indent", true},
    };
    for (const auto &[caption, said, takesIndent] : Steps) {
        Click(Named("PrintFrameIndent"));
        EXPECT_EQ(The<QPushButton>("PrintFrameIndent").text(), caption);
        EXPECT_EQ(Named("PrintFrameIndent").accessibleName(), said);
        EXPECT_EQ(Named("PrintIndent").isEnabled(), takesIndent) << caption;
    }
    for (const char *caption : {"Data Start on Line Below Title", "Data Starts on Field Title Line"}) {
        Click(Named("PrintFrameToggler"));
        EXPECT_EQ(The<QPushButton>("PrintFrameToggler").text(), caption);
    }
}

TEST_F(Printing, TheFileDialogueStartsEmptyAndAsksBeforeItReplaces) {
    folder.Write("out.txt", std::string(5000, 'x'));
    OpenForOldReport();
    Dialogs.Next([&](QDialog &dialog) {
        auto &files = dynamic_cast<QFileDialog &>(dialog);
        EXPECT_EQ(files.windowTitle(), "Pick an ASCII Quintave print file name...");
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(files.nameFilters(), QStringList({"ASCII Text (*.txt *.asc)", "All files (*)"}));
        EXPECT_EQ(files.findChild<QLineEdit *>("fileNameEdit")->text(), "");
        files.selectFile(QString::fromStdString(folder.Path() + "out.txt"));
        dialog.accept();
    });
    Dialogs.Press(QMessageBox::Yes);
    Click(Named("PrintFramePrint_1"));
    EXPECT_EQ(Dialogs.Boxes.back().Buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_THAT(folder.Read("out.txt"), testing::EndsWith("Quintave Report for OUT.TXT\r\n \r\nA| Wells\r\n"));
    ExpectEntryScreen();
}

TEST_F(Printing, WhileItPrintsTheStatusCountsAndNoCommandCanBeGiven) {
    folder.Write("out.txt", "");
    OpenForOldReport();
    PrintWatch watch;
    Named("printLabel").installEventFilter(&watch);
    Replace("out.txt");
    EXPECT_THAT(watch.Captions, testing::ElementsAre("   Printing To File *"));
    EXPECT_THAT(watch.Enabled, testing::ElementsAre(false, false, false));
    OpenForOldReport();
    ExpectPanel();
}

// What is painted is the newest caption, as often as a screen can show one, and stands at the left.
TEST_F(Printing, EveryMomentOfALongPrintIsSeen) {
    constexpr int Records = 600000;
    std::string report = "0,\"QuintaveV2\",\"SITE.FTF\"\r\n";
    for (int n = 0; n < Records; ++n) report += "1,1,\"A\",\"" + std::to_string(n) + "\"\r\n";
    folder.Write("old.rpx", report);
    folder.Write("out.txt", "");
    OpenForOldReport();
    PrintWatch watch;
    Named("printLabel").installEventFilter(&watch);
    Replace("out.txt");
    std::vector<qint64> gaps(watch.Times);
    std::adjacent_difference(gaps.begin(), gaps.end(), gaps.begin());
    ASSERT_GT(gaps.size(), 2U);
    const auto middle = gaps.begin() + static_cast<std::ptrdiff_t>(gaps.size() / 2);
    std::nth_element(gaps.begin() + 1, middle, gaps.end()); // the first is no gap
    EXPECT_LT(*middle, 45);
    std::set<std::string> seen(watch.Captions.begin(), watch.Captions.end());
    EXPECT_GT(seen.size(), 2U);
    for (const std::string &caption : seen) EXPECT_THAT(caption, testing::MatchesRegex("   Printing To File \\*+"));
    EXPECT_EQ(The<QLabel>("printLabel").alignment() & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
}

TEST_F(Printing, ThePointerIsTheHourglassWhileItPrintsAndNormalAfterwards) {
    folder.Write("out.txt", "");
    std::filesystem::create_symlink("/dev/full", folder.Path() + "full.txt");
    OpenForOldReport();
    PrintWatch watch;
    Named("printLabel").installEventFilter(&watch);
    Replace("out.txt");
    EXPECT_THAT(watch.Shapes, testing::ElementsAre(Qt::WaitCursor));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    OpenForOldReport();
    Dialogs.Pick(folder.Path() + "full.txt");
    Dialogs.Press(QMessageBox::Yes);
    Dialogs.Press(QMessageBox::Ok); // the disk is full
    Click(Named("PrintFramePrint_1"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    ExpectPanel();
    EXPECT_EQ(FocusName(), "PrintFramePrint_1");
}
