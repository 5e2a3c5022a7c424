// The print command: its question, the files it prepares, the panel with its options, and the ways out of it.
#include "support/print_test.h"
#include "support/template_lines.h"

#include "main/template_command.h"
#include "platform/files.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

class PrintCommand : public PrintTest {};
class PrintPanel : public PrintTest {
protected:
    void SetUp() override {
        PrintTest::SetUp();
        OpenForScreen();
    }
};

const ShownMessage NotAReportName{"Quintave", "You must select a `.RPX' file!\n\r\n\rPlease Try again.", OkOnly};

std::vector<std::string> Captions(Control &button, int presses) {
    std::vector<std::string> captions{button.Caption};
    for (int i = 0; i < presses; ++i) {
        Press(button);
        captions.push_back(button.Caption);
    }
    return captions;
}

} // namespace

// --- The question and the two sources

TEST_F(PrintCommand, AsksForTheScreenOrASavedReportAndProposesTheReport) {
    Press(Quintave.CommandPrint);
    EXPECT_EQ(Dialogs.Messages, std::vector{PrintQuestion});
}

TEST_F(PrintCommand, ThePrintKeyRunsIt) {
    SetFocus(Quintave.List1[0]);
    PressCtrl('P');
    EXPECT_EQ(Dialogs.Messages, std::vector{PrintQuestion});
}

TEST_F(PrintCommand, CancelChangesNothingAndReturnsToTheFieldList) {
    Select(1);
    ReportFileName = "before.rpx";
    Dialogs.Answers = {CancelAnswer};
    Press(Quintave.CommandPrint);
    ExpectEntryScreen();
    EXPECT_TRUE(Dialogs.Asked.empty());
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(ReportFileName, "before.rpx");
    EXPECT_TRUE(MatchingNames(folder.Path(), "*.$$$").empty());
}

TEST_F(PrintCommand, YesWritesTheEntriesToATemporaryReport) {
    Enter(0, "Wells");
    OpenForScreen();
    EXPECT_EQ(folder.Read("!quin!02.$$$"), ReportText({R"(1,1,"Title","Wells")"}));
}

TEST_F(PrintCommand, YesTakesTheFirstFreeTemporaryName) {
    folder.Write("!quin!02.$$$", "x");
    folder.Write("!quin!03.$$$", "x");
    OpenForScreen();
    EXPECT_EQ(folder.Read("!quin!04.$$$"), ReportHeader);
    EXPECT_EQ(folder.Read("!quin!02.$$$"), "x");
}

TEST_F(PrintCommand, WhateverHasTheNameOfATemporaryReportTakesIt) {
    std::filesystem::create_directory(folder.Path() + "!quin!02.$$$");
    std::filesystem::create_symlink("nowhere", folder.Path() + "!quin!03.$$$");
    OpenForScreen();
    EXPECT_EQ(folder.Read("!quin!04.$$$"), ReportHeader);
    ExpectPanelReady();
    Press(Quintave.PrintFrameCancel);
    Press(Quintave.CommandAdd);
    EXPECT_EQ(folder.Read("!quin!05.$$$"), ReportHeader);
    EXPECT_FALSE(folder.Has("nowhere"));
}

TEST_F(PrintCommand, TemporaryNamesRunTo99ThenOverTo00And01) {
    for (int n = 2; n <= 99; ++n) folder.Write("!quin!" + std::to_string(n + 100).substr(1) + ".$$$", "x");
    OpenForScreen();
    EXPECT_EQ(folder.Read("!quin!00.$$$"), ReportHeader);
    Press(Quintave.PrintFrameCancel);
    OpenForScreen();
    EXPECT_EQ(folder.Read("!quin!01.$$$"), ReportHeader);
    Press(Quintave.PrintFrameCancel);
    OpenForScreen();
    EXPECT_EQ(folder.Read("!quin!99.$$$"), ReportHeader) << "with none free the last name tried is taken";
}

TEST_F(PrintCommand, ATemporaryReportLiesInTheResourceDirectoryWhateverIsCurrent) {
    std::filesystem::create_directory(folder.Path() + "elsewhere");
    std::filesystem::current_path(folder.Path() + "elsewhere");
    OpenForScreen();
    EXPECT_TRUE(folder.Has("!quin!02.$$$"));
}

TEST_F(PrintCommand, YesShowsThePanelInPlaceOfTheEntryScreen) {
    OpenForScreen();
    ExpectPanelReady();
    EXPECT_EQ(Quintave.PrintFrame.Caption, "Printing Screen Information...");
    EXPECT_EQ(Focused(), &Quintave.PrintFrameIndent);
}

TEST_F(PrintCommand, NoOpensTheReportDialog) {
    ReportFileDir = "/reports/";
    OpenFor("A.rpx");
    ASSERT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(Dialogs.Asked[0].Title, "Pick a Quintave report (*.RPX) file to print...");
    EXPECT_EQ(Dialogs.Asked[0].Text, "Quintave Files(*.rpx)|*.rpx|All files(*.*)|*.*");
    EXPECT_EQ(Dialogs.Asked[0].Directory, "/reports/");
    EXPECT_EQ(Dialogs.Asked[0].Proposal, "");
}

TEST_F(PrintCommand, APickedReportShowsThePanelWithTheSameCaption) {
    OpenFor("A.Rpx");
    ExpectPanelReady();
    EXPECT_EQ(Quintave.PrintFrame.Caption, "Printing Screen Information...");
    EXPECT_EQ(Focused(), &Quintave.PrintFrameIndent);
    EXPECT_TRUE(MatchingNames(folder.Path(), "*.$$$").empty());
}

TEST_F(PrintCommand, CancellingTheDialogReturnsToTheFieldList) {
    Select(1);
    Dialogs.Answers = {NoAnswer};
    Press(Quintave.CommandPrint);
    ExpectEntryScreen();
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(MessageCount(), 1U);
}

TEST_F(PrintCommand, APickedFileThatIsNoReportIsRefused) {
    OpenFor("A.txt");
    EXPECT_EQ(LastMessage(), NotAReportName);
    ExpectEntryScreen();
    EXPECT_TRUE(Printer.Jobs.empty());
}

TEST_F(PrintCommand, ADialogThatFailsIsToldAndReturnsToTheFieldList) {
    Dialogs.DialogErrors = {76};
    OpenFor("A.rpx");
    EXPECT_EQ(LastMessage(), (ShownMessage{"Quintave", "Error: 76 - Path not found", CriticalIcon}));
    ExpectEntryScreen();
}

TEST_F(PrintCommand, StoresTheEditInABoxFirst) {
    Open(0);
    Type("Wells");
    PressCtrl('P');
    EXPECT_EQ(Row(0), RowOf("Title", "Wells"));
}

TEST_F(PrintCommand, LeavesAnOpenGroupFirst) {
    folder.Write("SITE.FTF", TemplateText({Element(1, 2, "GROUP START", "Samples"), Element(2, 20, "TEXT", "Depth"),
                                           Element(1, 1, "GROUP END", "")}));
    ASSERT_TRUE(LoadTemplateFile());
    Open(0);
    ASSERT_EQ(ActiveList, GroupList);
    Enter(0, "12 ft");
    OpenForScreen();
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_EQ(folder.Read("!quin!02.$$$"), ReportText({R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")",
                                                       R"(2,1,"Depth","12 ft")", R"(1,-99,"END REPEATING GROUP","")"}));
    Press(Quintave.PrintFrameCancel);
    ExpectEntryScreen();
}

TEST_F(PrintCommand, APrintOfTheScreenLeavesEntriesUnsavedAndTheRememberedReport) {
    SaveAs("mine.rpx");
    Enter(0, "Wells");
    OpenForScreen();
    PressPrinter();
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(FileMark, "mine.rpx");
}

TEST_F(PrintCommand, ATemporaryReportThatCannotBeWrittenIsToldAndNoPanelIsShown) {
    for (int n = 0; n <= 99; ++n)
        std::filesystem::create_directory(folder.Path() + "!quin!" + std::to_string(n + 100).substr(1) + ".$$$");
    ReportFileName = "before.rpx";
    OpenForScreen();
    EXPECT_EQ(LastMessage(),
              (ShownMessage{"Quintave",
                            "Error: 75 - Path/File access error\r\nError writing to this file! (read only file or "
                            "drive? full drive? file locked? wrong privileges?). Correct the problem and try again, or "
                            "'SaveAs' to a different file name or location.",
                            CriticalIcon}));
    ExpectEntryScreen();
    EXPECT_EQ(ReportFileName, "before.rpx");
}

// --- Captions

TEST_F(PrintPanel, LabelsNameTheOptions) {
    EXPECT_EQ(Quintave.Label3[0].Caption, "Toggle Titles/Data Layout Options:");
    EXPECT_EQ(Quintave.Label3[1].Caption, "Spaces to Indent Data:");
    EXPECT_EQ(Quintave.Label3[2].Caption, "Title/Data Separator:");
    EXPECT_EQ(Quintave.Label4[0].Caption, "Copies to Print:");
    EXPECT_EQ(Quintave.Label4[1].Caption, "Status:");
}

TEST_F(PrintPanel, ButtonsSayWhatTheyDo) {
    EXPECT_EQ(Quintave.PrintFramePrint[0].Caption, "PRINT (to default printer)");
    EXPECT_EQ(Quintave.PrintFramePrint[1].Caption, "PRINT (one copy to a file)");
    EXPECT_EQ(Quintave.PrintFrameCancel.Caption, "Cancel ");
}

TEST_F(PrintPanel, FirstShowsOneCopyASeparatorOfABarAndNoIndent) {
    EXPECT_EQ(Quintave.Combo1.Rows, (std::vector<std::string>{"1", "2", "3", "4", "5", "6", "7", "8", "9"}));
    EXPECT_EQ(Quintave.Combo1.ListIndex, 0);
    EXPECT_EQ(Quintave.Combo2.Rows, (std::vector<std::string>{"' '", "'| '", "': '", "'> '", "' - '", "' = '"}));
    EXPECT_EQ(Quintave.Combo2.ListIndex, 1);
    EXPECT_EQ(Quintave.PrintIndent.Text, "");
}

TEST_F(PrintPanel, TheIndentButtonGoesThroughItsFourModesAndBack) {
    EXPECT_EQ(Captions(Quintave.PrintFrameIndent, 4),
              (std::vector<std::string>{"NO Section/Field Indent", "Section/Field Nested Indents",
                                        "Section/Field && Data Nested Indents", "Raw Sect/Field/Data Nested Indents",
                                        "NO Section/Field Indent"}));
}

TEST_F(PrintPanel, ADoubledAmpersandShowsAsOne) {
    Press(Quintave.PrintFrameIndent);
    Press(Quintave.PrintFrameIndent);
    EXPECT_EQ(AccessibleName(Quintave.PrintFrameIndent), "Section/Field & Data Nested Indents");
}

TEST_F(PrintPanel, TheDataIndentIsDisabledWhereTheLevelSetsTheDataColumn) {
    for (const bool enabled : {true, false, false, true}) {
        Press(Quintave.PrintFrameIndent);
        EXPECT_EQ(Quintave.PrintIndent.Enabled, enabled) << Quintave.PrintFrameIndent.Caption;
    }
}

TEST_F(PrintPanel, TheLayoutButtonGoesToAndFro) {
    EXPECT_EQ(Captions(Quintave.PrintFrameToggler, 2),
              (std::vector<std::string>{"Data Starts on Field Title Line", "Data Start on Line Below Title",
                                        "Data Starts on Field Title Line"}));
}

// --- The data indent

TEST_F(PrintPanel, TheDataIndentTakesDigitsAndBackspaceOnly) {
    UserEnters(Quintave.PrintIndent);
    Type("a1-b.2 c3\b");
    EXPECT_EQ(Quintave.PrintIndent.Text, "12");
}

TEST_F(PrintPanel, LeavingTheDataIndentBoundsIt) {
    struct Case {
        std::string Pasted;
        std::string Left;
    };
    for (const auto &[pasted, left] : std::vector<Case>{
             {"75", "60"},    {"60", "60"},    {"61", "60"},         {"-3", "0"},        {"0", "0"},
             {"", ""},        {"60.5", "60"},  {"-0.5", "0"},        {"1e2", "60"},      {"75x", "60"},
             {" 99", "60"},   {"+61", "60"},   {"12.5", "12.5"},     {"60abc", "60abc"}, {"abc", "abc"},
             {"1e999", "60"}, {"-1e999", "0"}, {"1e-999", "1e-999"}, {"inf", "inf"},     {"99999999999", "60"}}) {
        UserEnters(Quintave.PrintIndent);
        SetText(Quintave.PrintIndent, "", 0);
        Paste(Quintave.PrintIndent, pasted);
        Press(Quintave.PrintFrameToggler);
        EXPECT_EQ(Quintave.PrintIndent.Text, left) << "pasted: " << pasted;
    }
}

TEST_F(PrintPanel, TheDataIndentCountsWithItsDecimals) {
    Press(Quintave.PrintFrameCancel);
    folder.Write("A.rpx", ReportText({ValueRecord(1, "Title", "x")}));
    OpenFor("A.rpx");
    UserEnters(Quintave.PrintIndent);
    Paste(Quintave.PrintIndent, "10.5");
    PressPrinter();
    EXPECT_EQ(Printer.Jobs.at(0).back().Column, LeftColumn + 10.5);
    OpenFor("A.rpx");
    PressFile("out.txt");
    EXPECT_EQ(folder.Read("out.txt"), TextHeader + "Title|    x\r\n");
}

TEST_F(PrintPanel, EnterAndEscapeInTheDataIndentDoNothing) {
    UserEnters(Quintave.PrintIndent);
    Type("12\x1b");
    PressEnter();
    EXPECT_EQ(Quintave.PrintIndent.Text, "12");
    EXPECT_EQ(Focused(), &Quintave.PrintIndent);
    ExpectPanelReady();
}

// --- Printing from the panel

TEST_F(PrintPanel, ThePrinterPrintsAsManyCopiesAsChosenEachAJobOfItsOwn) {
    Choose(Quintave.Combo1, "3");
    PressPrinter();
    ASSERT_EQ(Printer.Jobs.size(), 3U);
    EXPECT_EQ(Printer.Closed, 3);
    for (const auto &job : Printer.Jobs) EXPECT_EQ(job.front().Page, 1);
}

TEST_F(PrintPanel, WithoutACopyChosenNothingIsPrinted) {
    ShowListIndex(Quintave.Combo1, -1);
    PressPrinter();
    EXPECT_TRUE(Printer.Jobs.empty());
    ExpectEntryScreen();
}

TEST_F(PrintPanel, TheButtonsAreDisabledWhileItPrints) {
    static std::vector<bool> enabled;
    Progress.OnRepaint = [](const Control &) {
        for (const Control &button : Quintave.PrintFramePrint) enabled.push_back(button.Enabled);
        enabled.push_back(Quintave.PrintFrameCancel.Enabled);
    };
    Press(Quintave.PrintFrameCancel);
    folder.Write("A.rpx", ReportText({ValueRecord(1, "Title", "x")}));
    OpenFor("A.rpx");
    PressPrinter();
    EXPECT_EQ(enabled, (std::vector<bool>{false, false, false}));
    OpenFor("A.rpx");
    ExpectPanelReady();
    PressFile("out.txt");
    EXPECT_EQ(enabled, std::vector<bool>(6, false));
}

TEST_F(PrintPanel, AfterPrintingTheEntryScreenIsBack) {
    PressPrinter();
    ExpectEntryScreen();
    OpenForScreen();
    PressFile("out.txt");
    ExpectEntryScreen();
    EXPECT_EQ(MessageCount(), 2U); // the two questions
}

TEST_F(PrintPanel, TheEntryScreenComesBackOnTheRowItWasLeftOn) {
    Press(Quintave.PrintFrameCancel);
    Select(1);
    OpenForScreen();
    PressPrinter();
    EXPECT_EQ(CurrentField, 1);
    EXPECT_EQ(Quintave.List1[0].ListIndex, 1);
    EXPECT_EQ(ShownEntryControls(), (std::vector<std::string>{"Text1_1"}));
}

TEST_F(PrintPanel, CancelPrintsNothing) {
    Press(Quintave.PrintFrameCancel);
    ExpectEntryScreen();
    EXPECT_TRUE(Printer.Jobs.empty());
}

TEST_F(PrintPanel, TheFileButtonAsksForAnEmptyNameAndBeforeOverwriting) {
    PressFile("out.txt");
    ASSERT_EQ(Dialogs.Asked.size(), 1U);
    EXPECT_EQ(Dialogs.Asked[0].Title, "Pick an ASCII Quintave print file name...");
    EXPECT_EQ(Dialogs.Asked[0].Text, "ASCII Text|*.txt; *.asc|All files|*.*");
    EXPECT_EQ(Dialogs.Asked[0].Proposal, "");
    EXPECT_EQ(Dialogs.Asked[0].Directory, "");
    EXPECT_EQ(Dialogs.Asked[0].Flags, OverwritePrompt);
}

TEST_F(PrintPanel, CancellingThatDialogKeepsThePanel) {
    Press(Quintave.PrintFramePrint[ToFile]);
    ExpectPanelReady();
    EXPECT_EQ(Focused(), &Quintave.PrintFramePrint[ToFile]);
    PressFile("out.txt");
    EXPECT_TRUE(folder.Has("out.txt")) << "the same source is printed afterwards";
}

TEST_F(PrintPanel, AnExistingTextFileIsReplaced) {
    folder.Write("out.txt", std::string(5000, 'x'));
    PressFile("out.txt");
    EXPECT_EQ(folder.Read("out.txt"), TextHeader);
}

TEST_F(PrintPanel, OptionsStayForTheNextPrint) {
    Set({.Mode = NestedTitles, .Below = true, .Separator = "' = '", .Copies = 4});
    Press(Quintave.PrintFrameCancel);
    OpenForScreen();
    EXPECT_EQ(Quintave.PrintFrameIndent.Caption, "Section/Field Nested Indents");
    EXPECT_EQ(Quintave.PrintFrameToggler.Caption, "Data Start on Line Below Title");
    EXPECT_EQ(Quintave.Combo2.ListIndex, 5);
    EXPECT_EQ(Quintave.Combo1.ListIndex, 3);
}

TEST_F(PrintPanel, LoadingATemplateLeavesTheOptions) {
    Set({.Mode = NestedTitles, .Below = true});
    Press(Quintave.PrintFrameCancel);
    ASSERT_TRUE(LoadTemplateFile());
    EXPECT_EQ(Quintave.PrintFrameIndent.Caption, "Section/Field Nested Indents");
    EXPECT_EQ(Quintave.PrintFrameToggler.Caption, "Data Start on Line Below Title");
}

// --- What is left behind

TEST_F(PrintPanel, ThePrintedScreensTemporaryFileStays) {
    PressPrinter();
    EXPECT_TRUE(folder.Has("!quin!02.$$$"));
}

TEST_F(PrintPanel, LeavingAfterASavedReportDeletesEveryTemporaryFile) {
    Press(Quintave.PrintFrameCancel);
    folder.Write("A.rpx", ReportHeader);
    folder.Write("OLD.$$$", "x");
    OpenFor("A.rpx");
    ASSERT_TRUE(folder.Has("!quin!02.$$$"));
    PressPrinter();
    EXPECT_TRUE(MatchingNames(folder.Path(), "*.$$$").empty());
}

TEST_F(PrintPanel, CancellingAfterASavedReportDeletesThemToo) {
    Press(Quintave.PrintFrameCancel);
    OpenFor("A.rpx");
    Press(Quintave.PrintFrameCancel);
    EXPECT_TRUE(MatchingNames(folder.Path(), "*.$$$").empty());
}

TEST_F(PrintPanel, ATextPrintNamedLikeATemporaryReportStays) {
    Press(Quintave.PrintFrameCancel);
    folder.Write("A.rpx", ReportHeader);
    folder.Write("old.$$$", "x");
    OpenFor("A.rpx");
    PressFile("print.$$$");
    EXPECT_THAT(MatchingNames(folder.Path(), "*.$$$"), testing::ElementsAre("print.$$$"));
    EXPECT_EQ(folder.Read("print.$$$"), "03-03-2019 [SITE.FTF]; Quintave Report for ON-SCREEN INFORMATION\r\n \r\n");
    OpenFor("A.rpx");
    Press(Quintave.PrintFrameCancel);
    EXPECT_TRUE(MatchingNames(folder.Path(), "*.$$$").empty());
}

TEST_F(PrintPanel, SaveWritesToTheRememberedReportAfterAnyPrint) {
    Press(Quintave.PrintFrameCancel);
    SaveAs("mine.rpx");
    folder.Write("A.rpx", ReportHeader);
    const std::string caption = Quintave.editframe.Caption;
    int round = 0;
    for (const bool screen : {true, false}) {
        for (const bool toFile : {true, false}) {
            Enter(0, std::to_string(++round));
            screen ? OpenForScreen() : OpenFor("A.rpx");
            toFile ? PressFile("out.txt") : PressPrinter();
            Press(Quintave.CommandSave);
            EXPECT_THAT(folder.Read("mine.rpx"), testing::HasSubstr(std::to_string(round))) << round;
            EXPECT_EQ(folder.Read("A.rpx"), ReportHeader);
            EXPECT_THAT(folder.Read("out.txt"), testing::Not(testing::HasSubstr("QuintaveV2"))) << round;
            EXPECT_EQ(ReportFileName, "mine.rpx");
            EXPECT_EQ(ReportFileDir, folder.Path());
            EXPECT_EQ(Quintave.editframe.Caption, caption);
        }
    }
}

TEST_F(PrintPanel, TheReportNamesAreBackWhereNoReportWasPicked) {
    Press(Quintave.PrintFrameCancel);
    SaveAs("mine.rpx");
    const std::string caption = Quintave.editframe.Caption;
    std::filesystem::create_directory(PathOf("elsewhere"));
    for (const std::string picked : {"", "elsewhere/A.txt", "elsewhere/rp"}) {
        Dialogs.Answers = {NoAnswer};
        Dialogs.Texts = {picked.empty() ? "" : PathOf(picked)};
        Press(Quintave.CommandPrint);
        ExpectEntryScreen();
        EXPECT_EQ(ReportFileName, "mine.rpx") << picked;
        EXPECT_EQ(ReportFileDir, folder.Path()) << picked;
        EXPECT_EQ(Quintave.editframe.Caption, caption) << picked;
    }
}

TEST_F(PrintPanel, CancelPutsTheCaptionOfTheEntryScreenBack) {
    Press(Quintave.PrintFrameCancel);
    SaveAs("mine.rpx");
    folder.Write("A.rpx", ReportHeader);
    const std::string caption = Quintave.editframe.Caption;
    for (const bool screen : {true, false}) {
        screen ? OpenForScreen() : OpenFor("A.rpx");
        Press(Quintave.PrintFrameCancel);
        EXPECT_EQ(Quintave.editframe.Caption, caption);
        EXPECT_NE(caption.find("mine"), std::string::npos);
    }
}

TEST_F(PrintPanel, TheReportNamesAreBackOnEveryWayOut) {
    Press(Quintave.PrintFrameCancel);
    SaveAs("mine.rpx");
    folder.Write("A.rpx", ReportHeader);
    for (const bool screen : {true, false}) {
        screen ? OpenForScreen() : OpenFor("A.rpx");
        EXPECT_NE(ReportFileName, "mine.rpx");
        Press(Quintave.PrintFrameCancel);
        EXPECT_EQ(ReportFileName, "mine.rpx");
        EXPECT_EQ(ReportFileDir, folder.Path());
    }
}
