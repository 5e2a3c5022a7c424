// A print that fails: the message, the panel, the pointer, and what is left of the print and of the report's name.
#include "support/file_limit.h"
#include "support/open_files.h"
#include "support/print_test.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <new>
#include <stdexcept>
#include <sys/resource.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;

class PrintFailure : public PrintTest {
protected:
    void SetUp() override {
        PrintTest::SetUp();
        SaveAs("mine.rpx");
        folder.Write("A.rpx", ReportText({ValueRecord(1, "Title", "value of A")}));
    }

    // The failure was told, the panel takes the next command, and nothing was mixed up: the next print prints the same
    // report, and Save then writes to the report that the user saved.
    void ExpectToldAndUsable(const std::string &error) {
        EXPECT_EQ(Dialogs.Messages.size(), 2U); // the question and the failure
        EXPECT_EQ(LastMessage(), PrintMessage(error));
        ExpectPanelReady();
        EXPECT_NE(Focused(), nullptr);
    }

    void ExpectNamesIntact() {
        PressFile("next.txt");
        EXPECT_THAT(folder.Read("next.txt"), HasSubstr("value of A"));
        ExpectEntryScreen();
        Press(Quintave.CommandSave);
        EXPECT_EQ(folder.Read("mine.rpx"), ReportHeader);
        EXPECT_EQ(ReportFileName, "mine.rpx");
    }
};

// Records enough for a little more than so many pages of 47 lines.
std::vector<std::string> Pages(std::size_t count) {
    return std::vector<std::string>(count * 47 + 1, ValueRecord(1, "Title", "x"));
}

} // namespace

// --- The printer

TEST_F(PrintFailure, WithoutADefaultPrinter) {
    Printer.Exists = false;
    OpenFor("A.rpx");
    PressPrinter();
    ExpectToldAndUsable("482 - Printer error");
    EXPECT_EQ(Focused(), &Quintave.PrintFramePrint[ToPrinter]);
    ExpectNamesIntact();
}

TEST_F(PrintFailure, MemoryRunsOutOnAPage) {
    OpenFor("A.rpx");
    Progress.OnRepaint = [](const Control &) { throw std::bad_alloc(); };
    PressPrinter();
    Progress.OnRepaint = nullptr;
    ExpectToldAndUsable("7 - Out of memory");
    ExpectNamesIntact();
}

TEST_F(PrintFailure, MemoryRunsOutInATextFile) {
    OpenFor("A.rpx");
    Progress.OnRepaint = [](const Control &) { throw std::length_error("too long"); };
    PressFile("out.txt");
    Progress.OnRepaint = nullptr;
    ExpectToldAndUsable("7 - Out of memory");
    ExpectNamesIntact();
}

TEST_F(PrintFailure, ThePrinterFailsAtItsFirstPage) {
    Printer.FailsAtPage = 1;
    OpenFor("A.rpx");
    PressPrinter();
    ExpectToldAndUsable("482 - Printer error");
    ExpectNamesIntact();
}

TEST_F(PrintFailure, ThePrinterFailsInTheMiddle) {
    folder.Write("B.rpx", ReportText(Pages(3)));
    Printer.FailsAtPage = 3;
    OpenFor("B.rpx");
    Set({.Copies = 2});
    PressPrinter();
    ExpectToldAndUsable("482 - Printer error");
    EXPECT_EQ(Printer.Jobs.size(), 1U) << "no further copy is begun";
    EXPECT_EQ(Printer.Closed, 0);
    Printer.FailsAtPage = 0;
    PressPrinter();
    EXPECT_EQ(Printer.Jobs.back().back().Page, 4);
    ExpectEntryScreen();
}

TEST_F(PrintFailure, AfterAFailedScreenPrintTheScreenIsPrintedStill) {
    Enter(0, "Wells");
    Printer.Exists = false;
    OpenForScreen();
    PressPrinter();
    ExpectToldAndUsable("482 - Printer error");
    Printer.Exists = true;
    PressPrinter();
    EXPECT_EQ(Printer.Jobs.at(0).back().Text, "Wells");
    EXPECT_THAT(Printer.Jobs.at(0).front().Text, HasSubstr("ON-SCREEN INFORMATION"));
}

// --- The text file

TEST_F(PrintFailure, TheOutputIsADirectory) {
    std::filesystem::create_directory(PathOf("out.txt"));
    OpenFor("A.rpx");
    PressFile("out.txt");
    ExpectToldAndUsable("75 - Path/File access error");
    EXPECT_EQ(Focused(), &Quintave.PrintFramePrint[ToFile]);
    ExpectNamesIntact();
}

TEST_F(PrintFailure, TheOutputsDirectoryIsMissing) {
    OpenFor("A.rpx");
    PressFile("missing/out.txt");
    ExpectToldAndUsable("76 - Path not found");
    ExpectNamesIntact();
}

TEST_F(PrintFailure, TheDiskIsFull) {
    std::filesystem::create_symlink("/dev/full", PathOf("out.txt"));
    OpenFor("A.rpx");
    PressFile("out.txt");
    ExpectToldAndUsable("61 - Disk full");
    ExpectNamesIntact();
}

TEST_F(PrintFailure, TheDiskFillsUpInTheMiddle) {
    folder.Write("B.rpx", ReportText(std::vector<std::string>(5000, ValueRecord(1, "Title", std::string(60, 'x')))));
    OpenFor("B.rpx");
    {
        const FileSizeLimit limit(100000);
        PressFile("out.txt");
    }
    ExpectToldAndUsable("61 - Disk full");
    EXPECT_EQ(folder.Read("out.txt").size(), 100000U) << "what was written stays";
    PressFile("out.txt");
    EXPECT_EQ(folder.Read("out.txt").size(), TextHeader.size() + 5000 * std::string("Title| \r\n").size() + 5000 * 60);
}

// A column far beyond the line's end leaves room for one character a line, each behind 131,068 blanks.
TEST_F(PrintFailure, TenKilobytesAtTheDeepestLevelAreAGigabyteOfTextThatIsNeverHeld) {
    folder.Write("A.rpx", ReportText({ValueRecord(32767, "Title", std::string(9900, 'x'))}));
    OpenFor("A.rpx");
    Set({.Mode = NestedData});
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    Dialogs.Texts = {"/dev/null"};
    Press(Quintave.PrintFramePrint[ToFile]);
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    ExpectEntryScreen();
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 50'000); // kB
}

TEST_F(PrintFailure, TheOutputIsTheReportBeingPrinted) {
    const std::string before = folder.Read("A.rpx");
    OpenFor("A.rpx");
    PressFile("A.rpx");
    ExpectToldAndUsable("55 - File already open");
    EXPECT_EQ(folder.Read("A.rpx"), before);
    ExpectNamesIntact();
}

TEST_F(PrintFailure, TheOutputIsALinkToTheReportBeingPrinted) {
    std::filesystem::create_symlink(PathOf("A.rpx"), PathOf("symbolic.txt"));
    std::filesystem::create_hard_link(PathOf("A.rpx"), PathOf("hard.txt"));
    OpenFor("A.rpx");
    for (const std::string link : {"symbolic.txt", "hard.txt", "./A.rpx"}) {
        PressFile(link);
        EXPECT_EQ(LastMessage(), PrintMessage("55 - File already open")) << link;
        ExpectPanelReady();
    }
    ExpectNamesIntact();
}

TEST_F(PrintFailure, TheOutputIsTheTemporaryReportOfTheScreen) {
    Enter(0, "Wells");
    OpenForScreen();
    PressFile("!quin!02.$$$");
    ExpectToldAndUsable("55 - File already open");
    PressFile("out.txt");
    EXPECT_THAT(folder.Read("out.txt"), EndsWith("Title| Wells\r\n"));
}

// --- The report

TEST_F(PrintFailure, ADamagedReportIsPrintedUpToItsDamage) {
    struct Damage {
        std::string Line;
        std::string Error;
    };
    for (const auto &[line, error] : std::vector<Damage>{{R"(x,1,"Title","y")", "13 - Type mismatch"},
                                                         {R"(1,1,"Ti"tle","y")", "13 - Type mismatch"},
                                                         {R"(1,99999,"Title","y")", "6 - Overflow"},
                                                         {R"(-32768,1,"Title","y")", "6 - Overflow"},
                                                         {R"(1,1,"Title","y)", "62 - Input past end of file"},
                                                         {R"(1,1,"Title")", "62 - Input past end of file"},
                                                         {R"(1,3,"Title","y")", "62 - Input past end of file"}}) {
        std::string bytes = ReportText({ValueRecord(1, "Title", "good"), line});
        folder.Write("B.rpx", bytes);
        OpenFor("B.rpx");
        Set({});
        PressFile("out.txt");
        EXPECT_EQ(LastMessage(), PrintMessage(error)) << line;
        EXPECT_THAT(folder.Read("out.txt"), EndsWith("\r\nTitle| good\r\n")) << line;
        ExpectPanelReady();
        Printer = {};
        PressPrinter();
        EXPECT_EQ(LastMessage(), PrintMessage(error)) << line;
        EXPECT_EQ(Printer.Jobs.at(0).back().Text, "good") << line;
        EXPECT_EQ(Printer.Closed, 1) << "what was read is printed: " << line;
        ExpectPanelReady();
        Press(Quintave.PrintFrameCancel);
        EXPECT_EQ(ReportFileName, "mine.rpx");
    }
}

TEST_F(PrintFailure, TheReportIsGone) {
    folder.Write("out.txt", "as before");
    OpenFor("gone.rpx");
    PressPrinter();
    ExpectToldAndUsable("53 - File not found");
    EXPECT_TRUE(Printer.Jobs.empty());
    PressFile("out.txt");
    EXPECT_EQ(LastMessage(), PrintMessage("53 - File not found"));
    EXPECT_EQ(folder.Read("out.txt"), "as before");
    ExpectPanelReady();
    folder.Write("gone.rpx", ReportText({ValueRecord(1, "Title", "value of A")}));
    ExpectNamesIntact();
}

TEST_F(PrintFailure, ADamagedReportOnAFullDiskTellsOfTheDisk) {
    folder.Write("B.rpx", ReportText({ValueRecord(1, "Title", "good"), "x"}));
    std::filesystem::create_symlink("/dev/full", PathOf("out.txt"));
    OpenFor("B.rpx");
    PressFile("out.txt");
    ExpectToldAndUsable("61 - Disk full");
}

TEST_F(PrintFailure, NoFileStaysOpenAfterAPrintOrAFailure) {
    std::filesystem::create_symlink("/dev/full", PathOf("full.txt"));
    const auto open = OpenFileCount();
    for (const std::string &bytes :
         {ReportText(Pages(2)), ReportText({ValueRecord(1, "Title", "good"), "x"}), std::string("no report")}) {
        folder.Write("B.rpx", bytes);
        for (const std::string name : {"out.txt", "full.txt", "missing/out.txt", "B.rpx"}) {
            OpenFor("B.rpx");
            PressFile(name);
            if (Quintave.PrintFrame.Visible) PressPrinter();
            EXPECT_EQ(OpenFileCount(), open) << name;
            if (Quintave.PrintFrame.Visible) Press(Quintave.PrintFrameCancel);
        }
    }
}

TEST_F(PrintFailure, TheTextFileAfterAFailureStartsAfresh) {
    folder.Write("B.rpx", ReportText({ValueRecord(1, "Title", "good"), "x"}));
    OpenFor("B.rpx");
    PressFile("out.txt");
    folder.Write("B.rpx", ReportText({ValueRecord(1, "Title", "mended")}));
    PressFile("out.txt");
    EXPECT_EQ(folder.Read("out.txt"), TextHeader + "Title| mended\r\n");
}
