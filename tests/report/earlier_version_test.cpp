// The earlier version of a report, kept under its name and "~" until the new one is whole.
#include "support/file_limit.h"
#include "support/report_test.h"

#include "report/save_command.h"

#include <sys/stat.h>

namespace {

class EarlierVersion : public ReportTest {
protected:
    void SetUp() override {
        Start({R"(1,60,"TEXT","Title","","")"});
        ReportFileDir = folder.Path();
        ReportFileName = "a.rpx";
    }

    // The names beside the report that begin as it does.
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(folder.Path()))
            if (entry.path().filename().string().starts_with("a.rpx")) names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
};

using testing::ElementsAre;

const std::string Old = "0,\"QuintaveV2\",\"OLD.FTF\"\r\n1,1,\"Title\",\"old\"\r\n";

} // namespace

TEST_F(EarlierVersion, IsGoneAfterACompleteWrite) {
    folder.Write("a.rpx", Old);
    RowValue[0] = "new";
    EXPECT_TRUE(WriteReportFile());
    EXPECT_THAT(Names(), ElementsAre("a.rpx"));
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","new")"}));
}

TEST_F(EarlierVersion, StaysBesideAReportThatWasNotWrittenToItsEnd) {
    folder.Write("a.rpx", Old);
    RowValue[0] = std::string(60, 'n');
    const rlim_t room = Old.size() + 5;
    {
        const FileSizeLimit limit(room);
        EXPECT_FALSE(WriteReportFile());
    }
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("61 - Disk full")});
    EXPECT_THAT(Names(), ElementsAre("a.rpx", "a.rpx~"));
    EXPECT_EQ(folder.Read("a.rpx~"), Old);
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({"1,1,\"Title\",\"" + RowValue[0] + "\""}).substr(0, room));
}

TEST_F(EarlierVersion, IsNotReplacedByThePartOfTheNextAttempt) {
    folder.Write("a.rpx", Old);
    RowValue[0] = std::string(60, 'n');
    {
        const FileSizeLimit limit(Old.size() + 5);
        EXPECT_FALSE(WriteReportFile());
        EXPECT_FALSE(WriteReportFile());
    }
    EXPECT_EQ(folder.Read("a.rpx~"), Old);
    EXPECT_TRUE(WriteReportFile());
    EXPECT_THAT(Names(), ElementsAre("a.rpx"));
}

TEST_F(EarlierVersion, ThatDoesNotFitOnTheDiskRefusesTheSave) {
    folder.Write("a.rpx", Old);
    DataChanged = True;
    {
        const FileSizeLimit limit(Old.size() - 5);
        EXPECT_FALSE(WriteReportFile());
    }
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("61 - Disk full")});
    EXPECT_EQ(folder.Read("a.rpx"), Old);
    EXPECT_THAT(Names(), ElementsAre("a.rpx"));
    EXPECT_EQ(DataChanged, True);
}

TEST_F(EarlierVersion, IsDoneWithoutWhereADirectoryIsInItsWay) {
    folder.Write("a.rpx", Old);
    std::filesystem::create_directory(folder.Path() + "a.rpx~");
    RowValue[0] = "new";
    EXPECT_TRUE(WriteReportFile());
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","new")"}));
    EXPECT_THAT(Names(), ElementsAre("a.rpx", "a.rpx~"));
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(EarlierVersion, IsDoneWithoutWhereADirectoryIsInTheWayOfItsMaking) {
    folder.Write("a.rpx", Old);
    std::filesystem::create_directory(folder.Path() + "a.rpx~~");
    RowValue[0] = "new";
    EXPECT_TRUE(WriteReportFile());
    EXPECT_EQ(folder.Read("a.rpx"), ReportText({R"(1,1,"Title","new")"}));
    EXPECT_TRUE(Dialogs.Messages.empty());
}

// It may be the only whole version that a program cut short has left, or the user's own.
TEST_F(EarlierVersion, NeverTakesThePlaceOfACopyThatIsThere) {
    folder.Write("a.rpx~", "left behind");
    folder.Write("a.rpx", Old);
    RowValue[0] = std::string(60, 'n');
    {
        const FileSizeLimit limit(Old.size() + 5);
        EXPECT_FALSE(WriteReportFile());
    }
    EXPECT_EQ(folder.Read("a.rpx~"), "left behind");
    EXPECT_EQ(folder.Read("a.rpx~~"), Old);
    EXPECT_TRUE(WriteReportFile());
    EXPECT_THAT(Names(), ElementsAre("a.rpx", "a.rpx~"));
}

TEST_F(EarlierVersion, StaysWholeWhenAnotherReportWasSavedBetweenTwoFailures) {
    folder.Write("a.rpx", Old);
    RowValue[0] = std::string(60, 'n');
    const auto failToSave = [&] {
        ReportFileName = "a.rpx";
        const FileSizeLimit limit(Old.size() + 5);
        EXPECT_FALSE(WriteReportFile());
    };
    failToSave();
    ReportFileName = "b.rpx";
    EXPECT_TRUE(WriteReportFile());
    failToSave();
    EXPECT_EQ(folder.Read("a.rpx~"), Old);
}

TEST_F(EarlierVersion, OfAnEmptyFileIsNotKept) {
    folder.Write("a.rpx", "");
    RowValue[0] = std::string(60, 'n');
    {
        const FileSizeLimit limit(30);
        EXPECT_FALSE(WriteReportFile());
    }
    EXPECT_THAT(Names(), ElementsAre("a.rpx"));
}

TEST_F(EarlierVersion, OfATemporaryReportIsNotKept) {
    ReportFileName = "a.rpx.$$$";
    folder.Write(ReportFileName, Old);
    RowValue[0] = std::string(60, 'n');
    {
        const FileSizeLimit limit(Old.size() + 5);
        EXPECT_FALSE(WriteReportFile());
    }
    EXPECT_THAT(Names(), ElementsAre("a.rpx.$$$"));
}

TEST_F(EarlierVersion, CanBeReadByThoseWhoCouldReadTheReport) {
    folder.Write("a.rpx", Old);
    ASSERT_EQ(chmod((folder.Path() + "a.rpx").c_str(), 0640), 0);
    RowValue[0] = std::string(60, 'n');
    {
        const FileSizeLimit limit(Old.size() + 5);
        EXPECT_FALSE(WriteReportFile());
    }
    struct stat status {};
    ASSERT_EQ(stat((folder.Path() + "a.rpx~").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(EarlierVersion, StaysWhenAGroupsStoreIsGoneInTheMiddleOfTheWrite) {
    folder.Write("GROUP.FTF", TemplateText({R"(1,2,"GROUP START","Samples","","")", R"(2,5,"TEXT","Depth","","")",
                                            R"(1,1,"GROUP END","","","")"}));
    Dialogs.Texts = {folder.Path() + "GROUP.FTF"};
    Press(Quintave.CommandTemplate);
    folder.Write("a.rpx", Old);
    std::filesystem::remove(folder.Path() + "GRP00001.XXX");
    ReportFileDir = folder.Path();
    ReportFileName = "a.rpx";
    EXPECT_FALSE(WriteReportFile());
    EXPECT_EQ(LastMessage(), WriteMessage("53 - File not found"));
    EXPECT_EQ(folder.Read("a.rpx~"), Old);
    EXPECT_EQ(folder.Read("a.rpx"), "0,\"QuintaveV2\",\"GROUP.FTF\"\r\n"); // what came before the group
}

TEST_F(EarlierVersion, OfAReportThatWasPutBackAfterAFailureIsKeptToo) {
    folder.Write("a.rpx", Old);
    const std::string putBack = Old + "1,1,\"Title\",\"from elsewhere\"\r\n";
    RowValue[0] = std::string(100, 'n');
    const auto failToSave = [&] {
        const FileSizeLimit limit(putBack.size() + 5);
        EXPECT_FALSE(WriteReportFile());
    };
    failToSave();
    folder.Write("a.rpx", putBack);
    failToSave();
    EXPECT_EQ(folder.Read("a.rpx~"), Old);
    EXPECT_EQ(folder.Read("a.rpx~~"), putBack);
    failToSave();
    EXPECT_THAT(Names(), ElementsAre("a.rpx", "a.rpx~", "a.rpx~~"));
    RowValue[0] = "a|b";
    EXPECT_TRUE(WriteReportFile());
    EXPECT_THAT(Names(), ElementsAre("a.rpx"));
}

TEST_F(EarlierVersion, StaysWhereTheNextSaveCannotEvenOpenTheReport) {
    folder.Write("a.rpx", Old);
    RowValue[0] = std::string(60, 'n');
    {
        const FileSizeLimit limit(Old.size() + 5);
        EXPECT_FALSE(WriteReportFile());
    }
    std::filesystem::remove(folder.Path() + "a.rpx");
    std::filesystem::create_symlink("nowhere/a.rpx", folder.Path() + "a.rpx");
    EXPECT_FALSE(WriteReportFile());
    EXPECT_EQ(folder.Read("a.rpx~"), Old);
}

TEST_F(EarlierVersion, IsStillThereForTheNextSaveWhereThePartThatWasWrittenHasGone) {
    folder.Write("a.rpx", Old);
    RowValue[0] = std::string(60, 'n');
    {
        const FileSizeLimit limit(Old.size() + 5);
        EXPECT_FALSE(WriteReportFile());
    }
    std::filesystem::remove(folder.Path() + "a.rpx");
    EXPECT_TRUE(WriteReportFile());
    EXPECT_THAT(Names(), ElementsAre("a.rpx"));
}
