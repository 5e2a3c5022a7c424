// A report given to the program, as its argument or by the resource table, and the template that it brings.
#include "main/given_report.h"

#include "main/session.h"
#include "main/start_up.h"
#include "platform/files.h"
#include "support/messages.h"
#include "support/screen_test.h"

#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

constexpr const char *Title = R"(1,30,"TEXT","Title","","")";
constexpr const char *Depth = R"(1,30,"TEXT","Depth","","")";

std::string ReportOf(const std::string &templateName, const std::string &field) {
    return "0,\"QuintaveV2.0\",\"" + templateName + "\"\r\n1,1,\"" + field + "\",\"12\"\r\n";
}

class GivenReport : public ScreenTest {
protected:
    GivenReport() {
        fs::create_directory(folder.Path() + "res");
        fs::create_directory(folder.Path() + "reports");
        folder.Write("res/SITE.FTF", TemplateText({Title}));
        folder.Write("res/quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    }

    // Starts the program with a report of this name in its header as the argument.
    void StartWith(const std::string &templateName) {
        folder.Write("reports/mine.rpx", ReportOf(templateName, "Depth"));
        StartOn(folder.Path() + "reports/mine.rpx");
    }

    void StartOn(const std::string &report) const {
        ASSERT_TRUE(LoadMainWindow({.Resources = folder.Path() + "res", .Report = report}));
        ActivateMainWindow();
    }

    // The report stands in the fields of its own template.
    static void ExpectLoaded(const std::string &caption) {
        EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(" Depth                     | 12"));
        EXPECT_EQ(Quintave.editframe.Caption, caption);
        EXPECT_EQ(FileMark, "mine.rpx");
        EXPECT_EQ(DataChanged, 0);
        EXPECT_EQ(Quintave.List1[0].ListIndex, 0);
        EXPECT_THAT(Dialogs.Messages, IsEmpty());
    }

    static void ExpectNothingToLoadInto() {
        ExpectOneMessage("ERROR LOADING mine.rpx",
                         "No Fields Template was loaded, so there is nothing to load this file into!\r\n\r\nLoad one "
                         "with 'Field Template', then open the file with 'Add/Open File'.",
                         CriticalIcon);
        EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
        EXPECT_EQ(FileMark, "FirstLoad");
    }
};

} // namespace

TEST_F(GivenReport, BringsTheTemplateThatItsHeaderNames) {
    folder.Write("res/wells.ftf", TemplateText({Depth}));
    StartWith("WELLS.FTF");
    ExpectLoaded("[Template: WELLS.FTF] - RPX File(s): mine; ");
    EXPECT_EQ(TemplateDir, folder.Path() + "res/");
    EXPECT_EQ(StartFile, "-1");
}

TEST_F(GivenReport, ItsTemplateIsLookedUpBesideItToo) {
    folder.Write("reports/wells.ftf", TemplateText({Depth}));
    StartWith("WELLS.FTF");
    ExpectLoaded("[Template: WELLS.FTF] - RPX File(s): mine; ");
    EXPECT_EQ(TemplateDir, folder.Path() + "reports/");
}

TEST_F(GivenReport, TheResourceDirectoryComesFirst) {
    folder.Write("res/wells.ftf", TemplateText({Depth}));
    folder.Write("reports/WELLS.FTF", TemplateText({Title}));
    StartWith("WELLS.FTF");
    ExpectLoaded("[Template: WELLS.FTF] - RPX File(s): mine; ");
}

TEST_F(GivenReport, ATemplateThatTurnsInstancesOffDoesSo) {
    folder.Write("res/wells.ftf", TemplateText({Depth}, "QuintaveV2-"));
    StartWith("WELLS.FTF");
    EXPECT_EQ(AllowInstances, False);
}

TEST_F(GivenReport, ANameBeyondAsciiIsFound) {
    folder.Write("res/M\xC3\xBChle.ftf", TemplateText({Depth}));
    StartWith("M\xFCHLE.FTF");
    ExpectLoaded("[Template: MüHLE.FTF] - RPX File(s): mine; ");
}

TEST_F(GivenReport, TheTablesTemplateKeepsTheNameItIsKnownBy) {
    folder.Write("res/SITE.FTF", TemplateText({Depth}));
    StartWith("site.ftf");
    ExpectLoaded("[Template: SITE.FTF] - RPX File(s): mine; ");
}

TEST_F(GivenReport, WithoutItsTemplateItIsLoadedIntoTheTables) {
    for (const std::string name : {"GONE.FTF", "", "../SITE.FTF"}) {
        folder.Write("res/SITE.FTF", TemplateText({Depth}));
        StartWith(name);
        ExpectLoaded("[Template: SITE.FTF] - RPX File(s): mine; ");
        UnlockDirectory();
        FileMark = "FirstLoad";
    }
}

TEST_F(GivenReport, ATemplateOfItsThatCannotBeReadIsToldAndTheTablesTakesIt) {
    folder.Write("res/SITE.FTF", TemplateText({Depth}));
    folder.Write("res/WELLS.FTF", TemplateText({R"(1,30,"LIST","Kind","","")", "Maps"}));
    StartWith("WELLS.FTF");
    ExpectUnreadableTemplate("WELLS.FTF", "62 - Input past end of file", 2);
    ExpectLoaded("[Template: SITE.FTF] - RPX File(s): mine; ");
}

TEST_F(GivenReport, ItsTemplateMakesUpForTheTables) {
    folder.Write("res/WELLS.FTF", TemplateText({Depth}));
    folder.Write("res/SITE.FTF", "no template");
    StartWith("WELLS.FTF");
    EXPECT_FALSE(ProgramEnded());
    ExpectLoaded("[Template: WELLS.FTF] - RPX File(s): mine; ");
}

TEST_F(GivenReport, ByTheTableBringsItsTemplateToo) {
    folder.Write("res/wells.ftf", TemplateText({Depth}));
    folder.Write("res/Mine.rpx", ReportOf("WELLS.FTF", "Depth"));
    folder.Write("res/quintave.tbl", "\"\",\"site.ftf\",\"mine.rpx\"\r\n");
    StartOn("");
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(" Depth                     | 12"));
    EXPECT_EQ(FileMark, "Mine.rpx");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(GivenReport, WithoutAnyTemplateItIsToldThatThereIsNothingToLoadItInto) {
    fs::remove(folder.Path() + "res/SITE.FTF");
    StartWith("GONE.FTF");
    ExpectNothingToLoadInto();
}

TEST_F(GivenReport, WithABrokenTemplateAloneItIsTold) {
    folder.Write("res/SITE.FTF", TemplateText({R"(1,30,"LIST","Kind","","")", "Maps"}));
    StartWith("SITE.FTF");
    ASSERT_EQ(Dialogs.Messages.size(), 2U);
    EXPECT_EQ(Dialogs.Messages[0].Title, "ERROR LOADING SITE.FTF");
    Dialogs.Messages.erase(Dialogs.Messages.begin());
    ExpectNothingToLoadInto();
}

TEST_F(GivenReport, IntoAnEmptyTemplateItIsLoadedAsByAdd) {
    folder.Write("res/SITE.FTF", TemplateText({}));
    StartWith("SITE.FTF");
    EXPECT_EQ(Dialogs.Messages.size(), 1U); // that the template has no such field
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): mine; ");
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
}

TEST_F(GivenReport, ThatIsNoneByItsNameIsIgnored) {
    fs::remove(folder.Path() + "res/SITE.FTF");
    StartOn(folder.Path() + "reports/mine.txt");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

// --- Handed over by another program
// -------------------------------------------------------------------------------------

namespace {

// The program at work, past its start-up frame, and reports on another template.
class HandedOver : public GivenReport {
protected:
    HandedOver() {
        folder.Write("res/WELLS.FTF", TemplateText({Depth}));
        StartOn("");
        Press(Quintave.LogoOff);
    }

    void HandOverReport(const std::string &templateName, const std::string &field) const {
        folder.Write("reports/mine.rpx", ReportOf(templateName, field));
        ReceiveReport(folder.Path() + "reports/mine.rpx");
    }
};

} // namespace

TEST_F(HandedOver, BringsItsTemplateToAnEmptyScreen) {
    HandOverReport("WELLS.FTF", "Depth");
    EXPECT_EQ(RowValue[0], "");
    UserTicks(Quintave.GivenTimer);
    ExpectLoaded("[Template: WELLS.FTF] - RPX File(s): mine; ");
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
    EXPECT_EQ(Quintave.CommandAdd.Caption, "^Add/Merge File");
    EXPECT_FALSE(Quintave.GivenTimer.Enabled);
}

TEST_F(HandedOver, IsAddedToWhatIsOnTheScreen) {
    Open(0);
    Type("Wells"); // not yet taken over from the box
    HandOverReport("WELLS.FTF", "Title");
    Dialogs.Answers = {NoAnswer};
    UserTicks(Quintave.GivenTimer);
    EXPECT_EQ(RowValue[0], "Wells|12");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): mine; ");
    EXPECT_EQ(Dialogs.Messages.size(), 1U); // overwrite, or add to it
    EXPECT_TRUE(folder.Has("res/!quin!02.$$$"));
}

TEST_F(HandedOver, WaitsForTheEndOfTheCommandAndForThePrintPanel) {
    HandOverReport("SITE.FTF", "Title");
    RunAsEvent([] { UserTicks(Quintave.GivenTimer); });
    EXPECT_EQ(RowValue[0], "");
    SetVisible(Quintave.PrintFrame, true);
    UserTicks(Quintave.GivenTimer);
    EXPECT_EQ(RowValue[0], "");
    SetVisible(Quintave.PrintFrame, false);
    EXPECT_TRUE(Quintave.GivenTimer.Enabled);
    UserTicks(Quintave.GivenTimer);
    EXPECT_EQ(RowValue[0], "12");
}

TEST_F(HandedOver, OneAfterTheOther) {
    HandOverReport("SITE.FTF", "Title");
    folder.Write("reports/other.rpx", ReportOf("SITE.FTF", "Title"));
    ReceiveReport(folder.Path() + "reports/other.rpx");
    UserTicks(Quintave.GivenTimer);
    EXPECT_TRUE(Quintave.GivenTimer.Enabled);
    Dialogs.Answers = {NoAnswer};
    UserTicks(Quintave.GivenTimer);
    EXPECT_FALSE(Quintave.GivenTimer.Enabled);
    EXPECT_EQ(RowValue[0], "12|12");
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): mine; other; ");
}

TEST_F(HandedOver, LeavesAnOpenGroupFirst) {
    folder.Write("res/GROUP.FTF", TemplateText({Title, R"(1,2,"GROUP START","Samples","","")",
                                                R"(2,5,"TEXT","Place","","")", R"(1,0,"GROUP END","","","")"}));
    HandOverReport("GROUP.FTF", "Title");
    UserTicks(Quintave.GivenTimer);
    Open(1);
    ASSERT_EQ(ActiveList, GroupList);
    Enter(0, "here");
    ReceiveReport(folder.Path() + "reports/mine.rpx");
    Dialogs.Answers = {NoAnswer};
    UserTicks(Quintave.GivenTimer);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(RowValue[0], "12|12");
}

TEST_F(HandedOver, NoReportOpensNone) {
    ReceiveReport("");
    EXPECT_FALSE(Quintave.GivenTimer.Enabled);
    ReceiveReport(folder.Path() + "reports/mine.txt");
    UserTicks(Quintave.GivenTimer);
    EXPECT_FALSE(Quintave.GivenTimer.Enabled);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(FileMark, "FirstLoad");
}
