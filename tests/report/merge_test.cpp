// A report on top of entries: the one question of a load, and what each answer does to fields.
#include "support/report_test.h"
#include "support/template_lines.h"

namespace {

class Merge : public ReportTest {};

const std::vector<std::string> Fields{R"(1,60,"TEXT","Title","","")", R"(-1,60,"TEXT","Single","","")",
                                      R"(0,60,"TEXT","Zero","","")", R"(1,60,"TEXT","Place","","")"};

} // namespace

TEST_F(Merge, AValueForAFilledFieldAsksOncePerLoad) {
    Start(Fields);
    Dialogs.Answers = {YesAnswer};
    Load(
        {R"(1,1,"Title","a")", R"(1,1,"Title","b")", R"(1,1,"Title","c")", R"(1,1,"Place","d")", R"(1,1,"Place","e")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
    Load({R"(1,1,"Title","b")"});
    EXPECT_EQ(Dialogs.Messages, (std::vector{FieldMergeMessage(), FieldMergeMessage()}));
}

TEST_F(Merge, AnEmptyFieldIsFilledWithoutAQuestion) {
    Start(Fields);
    Load({R"(1,1,"Title","a")", R"(1,1,"Place","b")"});
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Merge, YesReplacesEachValueByTheNextSoThatTheLastStays) {
    Start(Fields);
    RowValue[0] = "old|older";
    Dialogs.Answers = {YesAnswer};
    Load({R"(1,1,"Title","a")", R"(1,1,"Title","b")"});
    EXPECT_EQ(RowValue[0], "b");
}

TEST_F(Merge, NoAppendsEachValue) {
    Start(Fields);
    RowValue[0] = "old";
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","a")", R"(1,1,"Title","b")"});
    EXPECT_EQ(RowValue[0], "old|a|b");
}

TEST_F(Merge, EnterAtTheQuestionAppends) {
    Start(Fields);
    RowValue[0] = "old";
    Load({R"(1,1,"Title","a")", R"(1,1,"Title","b")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
    EXPECT_EQ(RowValue[0], "old|a|b");
}

TEST_F(Merge, NoAppendsToAFieldOfLevel0Too) {
    Start(Fields);
    RowValue[0] = "old";
    RowValue[2] = "zero";
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","a")", R"(0,1,"Zero","z")"});
    EXPECT_EQ(RowValue[2], "zero|z");
}

TEST_F(Merge, AFilledFieldOfLevel0IsReplacedWhileNothingWasAsked) {
    Start(Fields);
    RowValue[2] = "zero";
    Load({R"(0,1,"Zero","z")"});
    EXPECT_EQ(RowValue[2], "z");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Merge, SeveralRecordsOfOneLoadForAFieldOfLevel0AreItsInstances) {
    Start(Fields);
    RowValue[2] = "zero";
    Load({R"(0,1,"Zero","x")", R"(0,1,"Zero","")", R"(0,1,"Zero","y")"});
    EXPECT_EQ(RowValue[2], "x|y"); // an empty value adds nothing
    Load({R"(0,1,"Zero","z")"});
    EXPECT_EQ(RowValue[2], "z");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Merge, AnAnswerGivenForAnotherFieldHoldsForLevel0Too) {
    Start(Fields);
    RowValue[0] = "old";
    Dialogs.Answers = {YesAnswer};
    Load({R"(0,1,"Zero","x")", R"(0,1,"Zero","y")", R"(1,1,"Title","a")", R"(0,1,"Zero","z")"});
    EXPECT_EQ(RowValue[2], "z");
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
}

TEST_F(Merge, AFieldOfLevel0ComesBackWithAllItsInstances) {
    Start(Fields);
    RowValue[2] = "Ann|Ben|Cy";
    SaveAs("a.rpx");
    Press(Quintave.CommandReset);
    Add("a.rpx");
    EXPECT_EQ(RowValue[2], "Ann|Ben|Cy");
    EXPECT_EQ(Row(2), RowOf("Zero", "Ann|Ben|Cy"));
    EXPECT_EQ(Quintave.FILabel[0].Caption, "1");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Merge, WithoutInstancesTheLastRecordForAFieldOfLevel0Stays) {
    Start(Fields, "QuintaveV2-");
    Load({R"(0,1,"Zero","x")", R"(0,1,"Zero","y")"});
    EXPECT_EQ(RowValue[2], "y");
}

TEST_F(Merge, AFieldOfNegativeLevelIsAlwaysReplacedAndNeverAskedAbout) {
    Start(Fields);
    RowValue[1] = "old";
    Load({R"(1,1,"Single","a")"});
    EXPECT_EQ(RowValue[1], "a");
    EXPECT_TRUE(Dialogs.Messages.empty());
    RowValue[0] = "old";
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","x")", R"(1,1,"Single","b")"});
    EXPECT_EQ(RowValue[0], "old|x");
    EXPECT_EQ(RowValue[1], "b");
}

TEST_F(Merge, WithoutInstancesNothingIsAskedAndEveryValueReplacesTheOldOne) {
    Start(Fields, "QuintaveV2-");
    ASSERT_EQ(AllowInstances, False);
    RowValue[0] = "old";
    Load({R"(1,1,"Title","a")", R"(1,1,"Title","b")"});
    EXPECT_EQ(RowValue[0], "b");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(Merge, AnEmptyValueAddsNothingAndOverwritesWithNothing) {
    Start(Fields);
    RowValue[0] = "old";
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Title","")"});
    EXPECT_EQ(RowValue[0], "old");
    Dialogs.Answers = {YesAnswer};
    Load({R"(1,1,"Title","")"});
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(Row(0), " Title                     | ");
}

TEST_F(Merge, TheSameFileTwiceWithNoDoublesEveryInstanceOfLevel0OrMore) {
    Start(Fields);
    RowValue[0] = "a|b";
    RowValue[1] = "single";
    RowValue[2] = "zero";
    RowValue[3] = "here";
    SaveAs("a.rpx");
    Dialogs.Answers = {NoAnswer};
    Add("a.rpx");
    EXPECT_EQ(RowValue[0], "a|b|a|b");
    EXPECT_EQ(RowValue[1], "single");
    EXPECT_EQ(RowValue[2], "zero|zero");
    EXPECT_EQ(RowValue[3], "here|here");
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
}

TEST_F(Merge, AFieldOfLevel0InFrontOfTheQuestionIsNotDoubled) {
    Start({R"(0,60,"TEXT","Zero","","")", R"(1,60,"TEXT","Title","","")", R"(0,60,"TEXT","Last","","")"});
    RowValue[0] = "x|y";
    RowValue[1] = "a";
    RowValue[2] = "z";
    SaveAs("a.rpx");
    Dialogs.Answers = {NoAnswer};
    Add("a.rpx");
    EXPECT_EQ(RowValue[0], "x|y");
    EXPECT_EQ(RowValue[1], "a|a");
    EXPECT_EQ(RowValue[2], "z|z");
}

TEST_F(Merge, TheSameFileTwiceWithYesIsAsOnce) {
    Start(Fields);
    RowValue[0] = "a";
    RowValue[1] = "single";
    RowValue[2] = "zero";
    const std::string saved = SaveAs("a.rpx");
    Dialogs.Answers = {YesAnswer};
    Add("a.rpx");
    EXPECT_EQ(RowValue[0], "a");
    EXPECT_EQ(RowValue[1], "single");
    EXPECT_EQ(RowValue[2], "zero");
    EXPECT_EQ(SaveAs("b.rpx"), saved);
}

TEST_F(Merge, AnOpenedReportMergedIntoUnsavedEntriesKeepsThemMarked) {
    Start(Fields);
    Enter(0, "Wells");
    Load({R"(1,1,"Place","Bern")"});
    EXPECT_EQ(FileMark, "A.rpx");
    EXPECT_EQ(DataChanged, True);
}

TEST_F(Merge, ASecondReportMarksTheEntriesChangedAndForgetsTheName) {
    Start(Fields);
    Load({R"(1,1,"Title","a")"});
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(FileMark, "A.rpx");
    EXPECT_EQ(FileMarkDir, folder.Path());
    folder.Write("B.rpx", ReportText({R"(1,1,"Place","b")"}));
    Add("B.rpx");
    EXPECT_EQ(FileMark, "");
    EXPECT_EQ(DataChanged, True);
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): A; B; ");
    Press(Quintave.CommandSave);
    EXPECT_EQ(Dialogs.Asked.back().Title, "Name a Quintave report (*.RPX) output file...");
}

TEST_F(Merge, AReportAddedToASavedOneForgetsTheName) {
    Start(Fields);
    SaveAs("mine.rpx");
    Load({R"(1,1,"Title","a")"});
    EXPECT_EQ(FileMark, "");
    EXPECT_EQ(DataChanged, True);
}

TEST_F(Merge, AfterAResetTheNextReportIsTheFirstAgain) {
    Start(Fields);
    Load({R"(1,1,"Title","a")"});
    Press(Quintave.CommandReset);
    EXPECT_EQ(FileMark, FirstLoad);
    folder.Write("B.rpx", ReportText({R"(1,1,"Place","b")"}));
    Add("B.rpx");
    EXPECT_EQ(FileMark, "B.rpx");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): B; ");
}

TEST_F(Merge, AfterANewTemplateTheNextReportIsTheFirstAgain) {
    Start(Fields);
    Load({R"(1,1,"Title","a")"});
    Dialogs.Texts = {folder.Path() + "SITE.FTF"};
    Press(Quintave.CommandTemplate);
    Load({R"(1,1,"Title","b")"});
    EXPECT_EQ(FileMark, "A.rpx");
    EXPECT_EQ(RowValue[0], "b");
    EXPECT_EQ(DataChanged, False);
}
