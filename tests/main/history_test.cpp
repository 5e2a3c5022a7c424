// Undo and redo by their keys.
#include "main/history.h"

#include "main/session.h"
#include "model/store.h"
#include "platform/console/progress.h"
#include "support/file_limit.h"
#include "support/report_test.h"
#include "support/stores.h"

#include <filesystem>

namespace {

const std::vector<std::string> Fields{R"(1,30,"TEXT","Title","","")",
                                      R"(1,30,"LIST","Colour","","")",
                                      "Red",
                                      "Blue",
                                      "OTHER...",
                                      "XXX-1XXX",
                                      R"(1,20,"MEMO","Notes","","")",
                                      R"(1,-1,"","Samples","","")",
                                      R"(2,2,"GROUP START","Sample","","")",
                                      R"(3,5,"TEXT","Depth","","")",
                                      R"(3,5,"TEXT","Place","","")",
                                      R"(2,0,"GROUP END","","","")",
                                      R"(2,30,"TEXT","Last","","")"};
constexpr Integer TitleRow = 0;
constexpr Integer ColourRow = 1;
constexpr Integer GroupRow = 4;
constexpr Integer LastRow = 5;
constexpr Integer GroupElement = 5;

std::string StoreOf(Integer head) { return StoredCells(head); }

class LargeHistory : public ScreenTest {};

class History : public ReportTest {
protected:
    History() { Start(Fields); }

    static void Undo() { PressCtrl('Z'); }
    static void Redo() { PressCtrl('Y'); }

    // Enters the group and types so many depths, each into an occurrence of its own.
    static void EnterDepths(const std::vector<std::string> &depths) {
        Open(GroupRow);
        for (const std::string &depth : depths) {
            Enter(0, depth);
            if (&depth != &depths.back()) PressCtrl('N');
        }
    }
};

TEST_F(History, NothingLeadsBackFromTheFirstState) {
    Undo();
    EXPECT_EQ(Progress.Note, "There is nothing to undo.");
    Redo();
    EXPECT_EQ(Progress.Note, "There is nothing to redo.");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(History, AValueIsTakenBackAndComesAgain) {
    Enter(TitleRow, "Wells");
    Enter(LastRow, "End");
    Undo();
    EXPECT_EQ(RowValue[LastRow], "");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(Quintave.List1[0].ListIndex, LastRow);
    EXPECT_EQ(Progress.Note, "Undone: value of Last");
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_THAT(Row(TitleRow), testing::Not(testing::HasSubstr("Wells")));
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(Quintave.CommandAdd.Caption, OpenCaption);
    Redo();
    Redo();
    EXPECT_EQ(Progress.Note, "Redone: value of Last");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(RowValue[LastRow], "End");
    EXPECT_NE(DataChanged, False);
}

TEST_F(History, ANewChangeEndsWhatCouldBeDoneAgain) {
    Enter(TitleRow, "Wells");
    Undo();
    Enter(LastRow, "End");
    Redo();
    EXPECT_EQ(Progress.Note, "There is nothing to redo.");
    EXPECT_EQ(RowValue[TitleRow], "");
}

TEST_F(History, WhatIsTypedIsAStepOfItsOwnBeforeTheCommandThatFollows) {
    Open(TitleRow);
    Type("Wells");
    Dialogs.Answers = {NoAnswer};
    PressCtrl('R');
    EXPECT_EQ(RowValue[TitleRow], "");
    Undo();
    EXPECT_EQ(Progress.Note, "Undone: Reset/Clear");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "");
}

TEST_F(History, AnEditThatIsStillOpenIsUndoneFirst) {
    Enter(TitleRow, "Wells");
    Open(LastRow);
    Type("End");
    Undo();
    EXPECT_EQ(RowValue[LastRow], "");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(History, AnAcceptedChoiceIsTakenBack) {
    Select(ColourRow);
    DoubleClickRow(Quintave.List2[0], 1);
    ASSERT_EQ(RowValue[ColourRow], "Blue");
    Undo();
    EXPECT_EQ(RowValue[ColourRow], "");
    EXPECT_EQ(Quintave.List2[0].ListIndex, -1);
    Redo();
    EXPECT_EQ(RowValue[ColourRow], "Blue");
    EXPECT_EQ(Quintave.List2[0].ListIndex, 1);
}

TEST_F(History, AnInstanceComesBackAndIsShown) {
    Enter(TitleRow, "One");
    Select(TitleRow);
    Press(Quintave.FIAdd);
    Type("Two");
    PressEnter();
    ASSERT_EQ(RowValue[TitleRow], "One|Two");
    Select(TitleRow);
    UserScrolls(Quintave.FIScroll, 2);
    Press(Quintave.FIDel);
    ASSERT_EQ(RowValue[TitleRow], "One");
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "One|Two");
    EXPECT_EQ(Quintave.FIScroll.Value, 2);
    EXPECT_EQ(Quintave.FILabel[1].Caption, "2");
    EXPECT_EQ(Quintave.Text1[1].Text, "Two");
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "One");
}

TEST_F(History, ADeletedOccurrenceComesBackWhereItWas) {
    EnterDepths({"10", "20", "30"});
    PressCtrl('V');
    ASSERT_EQ(GroupLoadedOccurrence, 1);
    const std::string before = StoreOf(GroupElement);
    PressCtrl('D');
    ASSERT_EQ(StoreOf(GroupElement).size(), 20U);
    PressCtrl('E');
    Undo();
    EXPECT_EQ(Progress.Note, "Undone: Delete");
    EXPECT_EQ(StoreOf(GroupElement), before);
    EXPECT_TRUE(GroupIsOpen());
    EXPECT_EQ(GroupLoadedOccurrence, 1);
    EXPECT_EQ(Row(0), " Depth                     | 20");
    EXPECT_EQ(Focused(), &Quintave.List1[GroupList]);
}

TEST_F(History, EachValueInAGroupIsAStepAlsoBehindAnotherOccurrence) {
    EnterDepths({"10", "20"});
    Undo();
    EXPECT_EQ(Progress.Note, "Undone: value of Depth");
    EXPECT_EQ(GroupLoadedOccurrence, 1);
    EXPECT_EQ(StoreOf(GroupElement), "10                  ");
    Undo();
    EXPECT_EQ(Progress.Note, "Undone: Next");
    EXPECT_EQ(StoreOf(GroupElement), "10        ");
    Undo();
    EXPECT_EQ(StoreOf(GroupElement), "          ");
    EXPECT_EQ(DataChanged, False);
    Undo();
    EXPECT_EQ(Progress.Note, "There is nothing to undo.");
    Redo();
    Redo();
    Redo();
    EXPECT_EQ(StoreOf(GroupElement), "10        20        ");
}

TEST_F(History, AMergeIsOneStep) {
    Enter(TitleRow, "Wells");
    Enter(LastRow, "End");
    const std::string before = SaveAs("before.rpx");
    folder.Write("more.rpx", ReportText({R"(1,1,"Title","Springs")", R"(1,-1,"Samples","")", R"(2,1,"Last","Start")"}));
    Dialogs.Answers = {YesAnswer, YesAnswer};
    Dialogs.Texts.push_back(folder.Path() + "more.rpx");
    PressCtrl('A');
    ASSERT_EQ(RowValue[TitleRow], "Springs");
    ASSERT_EQ(RowValue[LastRow], "Start");
    ASSERT_EQ(FileMark, "");
    Undo();
    EXPECT_EQ(Progress.Note, "Undone: Add/Merge File");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(RowValue[LastRow], "End");
    EXPECT_EQ(FileMark, "before.rpx");
    EXPECT_EQ(DataChanged, False);
    PressCtrl('S');
    EXPECT_EQ(folder.Read("before.rpx"), before);
}

TEST_F(History, UndoGoesAcrossASave) {
    Enter(TitleRow, "Wells");
    SaveAs("saved.rpx");
    Enter(LastRow, "End");
    EXPECT_NE(DataChanged, False);
    Undo();
    EXPECT_EQ(DataChanged, False);
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_NE(DataChanged, False); // the report holds something else
    EXPECT_EQ(FileMark, "saved.rpx");
    Redo();
    EXPECT_EQ(DataChanged, False);
}

TEST_F(History, AStateThatWasSavedBeforeAnotherOneIsNoLongerSaved) {
    Enter(TitleRow, "Wells");
    SaveAs("saved.rpx");
    Enter(TitleRow, "!");
    PressCtrl('S');
    Undo();
    EXPECT_NE(DataChanged, False);
}

TEST_F(History, AReportWrittenOverThroughALinkIsNoLongerWhatWasSaved) {
    Enter(TitleRow, "Wells");
    SaveAs("saved.rpx");
    Load({R"(1,1,"Notes","End")"});
    EXPECT_EQ(FileMark, "");
    PressCtrl('T'); // nothing, but a look
    std::filesystem::create_symlink("saved.rpx", folder.Path() + "link.rpx");
    SaveAs("link.rpx");
    Undo();
    EXPECT_EQ(RowValue[2], "");
    EXPECT_EQ(FileMark, "saved.rpx");
    EXPECT_NE(DataChanged, False);
}

TEST_F(History, AResetAfterASaveComesBackAsSaved) {
    Enter(TitleRow, "Wells");
    Dialogs.Answers = {YesAnswer};
    Dialogs.Texts = {folder.Path() + "saved.rpx"};
    PressCtrl('R');
    ASSERT_EQ(FileMark, "FirstLoad");
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(FileMark, "saved.rpx");
    EXPECT_EQ(DataChanged, False);
    EXPECT_THAT(Quintave.editframe.Caption, testing::HasSubstr("saved; "));
    EXPECT_EQ(Progress.Note, "Undone: Reset/Clear");
    Redo();
    EXPECT_EQ(FileMark, "FirstLoad");
    EXPECT_EQ(DataChanged, False);
}

TEST_F(History, ATemplateChangeBringsTheFormerTemplateBackWithItsEntries) {
    folder.Write("OTHER.FTF", TemplateText({R"(1,30,"TEXT","Only","","")"}));
    EnterDepths({"10", "20"});
    PressCtrl('E');
    Enter(TitleRow, "Wells");
    Dialogs.Answers = {NoAnswer};
    Dialogs.Texts = {folder.Path() + "OTHER.FTF"};
    PressCtrl('F');
    ASSERT_EQ(TemplateName, "OTHER.FTF");
    Enter(0, "x");
    Undo();
    Undo();
    EXPECT_EQ(Progress.Note, "Undone: Field Template");
    EXPECT_EQ(TemplateName, "SITE.FTF");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    EXPECT_EQ(StoreOf(GroupElement), "10        20        ");
    EXPECT_NE(DataChanged, False);
    Redo();
    Redo();
    EXPECT_EQ(TemplateName, "OTHER.FTF");
    EXPECT_EQ(RowValue[0], "x");
    Undo();
    Undo();
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_EQ(StoreOf(GroupElement), "10        20        ");
}

TEST_F(History, ATemplateThatIsGoneIsToldAndEverythingStays) {
    folder.Write("OTHER.FTF", TemplateText({R"(1,30,"TEXT","Only","","")"}));
    Enter(TitleRow, "Wells");
    Dialogs.Answers = {NoAnswer};
    Dialogs.Texts = {folder.Path() + "OTHER.FTF"};
    PressCtrl('F');
    std::filesystem::remove(folder.Path() + "SITE.FTF");
    Undo();
    EXPECT_EQ(LastMessage().Text,
              "The Fields Template File SITE.FTF of these entries was not found!\r\n\r\nNothing was changed.");
    EXPECT_EQ(TemplateName, "OTHER.FTF");
    folder.Write("SITE.FTF", TemplateText({R"(1,30,"TEXT","Another","","")"}));
    Undo();
    EXPECT_THAT(LastMessage().Text, testing::HasSubstr("has changed since then!"));
    folder.Write("SITE.FTF", TemplateText(Fields));
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(History, AStoreThatVanishedIsMadeAnew) {
    EnterDepths({"10", "20"});
    PressCtrl('D');
    PressCtrl('E');
    std::filesystem::remove(folder.Path() + GroupFileName(GroupElement));
    Undo();
    EXPECT_EQ(StoreOf(GroupElement), "10        20        ");
    EXPECT_TRUE(GroupIsOpen());
}

TEST_F(History, AFullDiskIsToldAndEverythingIsAsBeforeTheKey) {
    EnterDepths({"10", "20"});
    PressCtrl('D');
    ASSERT_EQ(StoreOf(GroupElement), "10        ");
    {
        const FileSizeLimit full(15);
        Undo();
    }
    EXPECT_EQ(LastMessage().Text, WorkFileErrorText(DiskFull));
    EXPECT_EQ(StoreOf(GroupElement), "10        ");
    EXPECT_TRUE(GroupIsOpen());
    EXPECT_EQ(Row(0), " Depth                     | 10");
    EXPECT_FALSE(folder.Has(StagedName(GroupFileName(GroupElement))));
    Undo();
    EXPECT_EQ(StoreOf(GroupElement), "10        20        ");
}

TEST_F(History, NothingIsUndoneWhileThePrintPanelIsOpen) {
    Enter(TitleRow, "Wells");
    Dialogs.Answers = {YesAnswer};
    PressCtrl('P');
    ASSERT_TRUE(Quintave.PrintFrame.Visible);
    Undo();
    RunEvent(Quintave.UndoKey, Event::Click);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
    Press(Quintave.PrintFrameCancel);
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "");
}

TEST_F(History, NothingIsUndoneInTheMiddleOfAQuestion) {
    Enter(TitleRow, "Wells");
    Dialogs.Reply = [](const ShownMessage &) {
        Undo();
        RunAsEvent([] { RunEvent(Quintave.UndoKey, Event::Click); });
        return CancelAnswer;
    };
    PressCtrl('R');
    Dialogs.Reply = nullptr;
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(History, ASaveThatOnlyChangesHowATextIsWrittenIsNoStep) {
    Enter(TitleRow, "Wells");
    RowValue[2] = "a \"note\"  "; // as a report of another program may bring it
    Select(LastRow);
    SaveAs("a.rpx");
    EXPECT_EQ(RowValue[2], "a 'note'");
    Undo();
    EXPECT_EQ(Progress.Note, "Undone: value of Notes");
    EXPECT_EQ(RowValue[2], "");
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(History, ALoadWhoseQuestionsWereAnsweredIsOneStep) {
    folder.Write("a.rpx", ReportText({R"(1,1,"Title","a")", R"(1,1,"Unknown","x")", R"(1,1,"Colour","Green")",
                                      R"(1,-1,"Samples","")", R"(2,1,"Last","z")"}));
    Dialogs.Texts = {folder.Path() + "a.rpx"};
    Dialogs.Answers = {YesAnswer};
    PressCtrl('A');
    ASSERT_EQ(RowValue[LastRow], "z");
    ASSERT_GE(MessageCount(), 1U);
    EXPECT_EQ(FileMark, "a.rpx");
    Undo();
    EXPECT_EQ(RowValue[TitleRow], "");
    EXPECT_EQ(RowValue[LastRow], "");
    EXPECT_EQ(FileMark, "FirstLoad");
    Undo();
    EXPECT_EQ(Progress.Note, "There is nothing to undo.");
    Redo();
    EXPECT_EQ(RowValue[LastRow], "z");
    EXPECT_EQ(FileMark, "a.rpx");
}

TEST_F(LargeHistory, AThousandValuesIn32000FieldsTakeLessThan5Megabytes) {
    constexpr int Many = 32'000;
    constexpr std::size_t Commits = 1'000;
    constexpr std::size_t Allowed = 5'000'000;
    std::vector<std::string> lines;
    for (int n = 1; n <= Many; ++n) lines.push_back("1,60,\"TEXT\",\"Field " + std::to_string(n) + R"(","","")");
    Start(lines);
    for (std::size_t n = 0; n < Commits; ++n) {
        Open(static_cast<Integer>(n * 31));
        Paste(*Focused(), "a value of forty characters, more or less");
        PressEnter();
    }
    std::printf("%zu bytes\n", HistoryBytes());
    EXPECT_GT(HistoryBytes(), Commits * sizeof(std::string));
    EXPECT_LE(HistoryBytes(), Allowed);
    for (std::size_t n = 0; n < Commits; ++n) PressCtrl('Z');
    for (const auto &value : RowValue) ASSERT_EQ(value, "");
}

} // namespace
