// The earlier version of a report that a save leaves beside it for good: where a load had left something of it out, or
// where it held more than what was saved. Copies that go when the report is whole: earlier_version_test.cpp.
#include "support/report_test.h"

namespace {

const std::vector<std::string> Fields{
    R"(1,60,"TEXT","Title","","")",
    R"(-1,60,"TEXT","Single","","")",
    R"(1,9,"LIST","Colour","","")",
    R"("Red")",
    R"("XXX-1XXX")",
    R"(1,2,"GROUP START","Samples","","")",
    R"(2,5,"TEXT","Depth","","")",
    R"(2,5,"LIST","Kind","","")",
    R"("Sand")",
    R"("XXX-1XXX")",
    R"(1,1,"GROUP END","","","")",
};

constexpr const char *Occurrence = R"(1,-9,"Samples","REPEATING GROUP, Occurrence #1")";
constexpr const char *OtherOccurrence = R"(1,-9,"Rocks","REPEATING GROUP, Occurrence #1")";
constexpr const char *End = R"(1,-99,"END REPEATING GROUP","")";
constexpr const char *Depth = R"(2,1,"Depth","a")";

class KeptVersion : public ReportTest {
protected:
    void SetUp() override { Start(Fields); }

    ShownMessage KeptMessage(const std::string &name) const {
        return {"Quintave",
                "The earlier version of this report is kept under the name" + NL + NL + folder.Path() + name + NL + NL +
                    "Not all of it had been loaded, or it held more values than the report saved now.",
                InformationIcon};
    }

    // Loads these lines into empty entries and saves them again; the messages of the save.
    std::vector<ShownMessage> SaveLoaded(const std::vector<std::string> &lines) {
        Press(Quintave.CommandReset);
        Load(lines);
        Forget();
        Press(Quintave.CommandSave);
        return Dialogs.Messages;
    }

    // The same, where the load leaves something out.
    void ExpectKept(const std::vector<std::string> &lines, const Answer overwrite = NoAnswer) {
        Forget();
        Dialogs.Answers = {overwrite};
        EXPECT_EQ(SaveLoaded(lines), std::vector{KeptMessage("A.rpx~")});
        EXPECT_EQ(folder.Read("A.rpx~"), ReportText(lines));
        Forget();
        Press(Quintave.CommandSave); // the next one replaces what this one has written
        EXPECT_TRUE(Dialogs.Messages.empty());
        EXPECT_EQ(folder.Read("A.rpx~"), ReportText(lines));
        EXPECT_FALSE(folder.Has("A.rpx~~"));
        std::filesystem::remove(folder.Path() + "A.rpx~");
    }

    void ExpectNotKept(const std::vector<std::string> &lines) {
        Forget();
        EXPECT_TRUE(SaveLoaded(lines).empty());
        EXPECT_FALSE(folder.Has("A.rpx~"));
    }
};

} // namespace

TEST_F(KeptVersion, OfAReportThatWasLoadedInFullIsNone) {
    ExpectNotKept({R"(1,1,"Title","a")", R"(1,1,"Single","b")", R"(1,1,"Colour","Red")", Occurrence, Depth,
                   R"(2,1,"Kind","Sand")", End});
    ExpectNotKept({R"(1,1,"Title","a")", R"(1,1,"Title","b")"});     // added, not overwritten
    ExpectNotKept({Occurrence, Depth, End, Occurrence, Depth, End}); // likewise
    ExpectNotKept({R"(1,-1,"Nowhere","")", R"(9,-99,"END REPEATING GROUP","")", R"(1,1,"Title","a")"}); // no values
}

TEST_F(KeptVersion, StaysWhereATitleIsUnknown) {
    Enter(0, "x");
    ExpectKept({R"(1,1,"Nowhere","n")", R"(1,1,"Title","a")"}, YesAnswer);
    ExpectKept({OtherOccurrence, Depth, End, R"(1,1,"Title","a")"}, YesAnswer);
}

TEST_F(KeptVersion, StaysWhereAValueIsRefused) {
    ExpectKept({R"(1,1,"Colour","Green")"});
    ExpectKept({Occurrence, Depth, R"(2,1,"Kind","Rock")", End});
}

TEST_F(KeptVersion, StaysWhereAValueIsCut) { ExpectKept({Occurrence, R"(2,1,"Depth","123456")", End}); }

TEST_F(KeptVersion, StaysWhereARecordIsTooDeep) { ExpectKept({R"(1,1,"Title","a")", R"(3,1,"Deep","d")"}, OkAnswer); }

TEST_F(KeptVersion, StaysWhereValuesOfTheReportOverwriteEachOther) {
    ExpectKept({R"(1,1,"Title","a")", R"(1,1,"Title","b")"}, YesAnswer);
    ExpectKept({R"(1,1,"Single","a")", R"(1,1,"Single","b")"});
    ExpectKept({Occurrence, Depth, R"(2,1,"Depth","b")", End});
    ExpectKept({Occurrence, Depth, End, Occurrence, R"(2,1,"Depth","b")", End}, YesAnswer);
}

TEST_F(KeptVersion, IsNoneWhereTheReportOverwritesWhatWasOnTheScreen) {
    RowValue[0] = "old";
    RowValue[1] = "old";
    Dialogs.Answers = {YesAnswer};
    Load({R"(1,1,"Title","a")", R"(1,1,"Single","b")"});
    Forget();
    Press(Quintave.CommandSave);
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_FALSE(folder.Has("A.rpx~"));
}

TEST_F(KeptVersion, StaysWhereItHeldMoreValues) {
    const std::vector<std::string> lines{R"(1,1,"Title","a")", R"(1,1,"Single","b")"};
    Load(lines);
    RowValue[1].clear();
    Press(Quintave.CommandSave);
    EXPECT_EQ(Dialogs.Messages, std::vector{KeptMessage("A.rpx~")});
    EXPECT_EQ(folder.Read("A.rpx~"), ReportText(lines));
    const std::string second = folder.Read("A.rpx");
    EXPECT_THAT(second, testing::StartsWith(ReportText({R"(1,1,"Title","a")"})));
    RowValue[0].clear(); // what is kept is never in the way of the next
    Press(Quintave.CommandSave);
    EXPECT_EQ(LastMessage(), KeptMessage("A.rpx~~"));
    EXPECT_EQ(folder.Read("A.rpx~"), ReportText(lines));
    EXPECT_EQ(folder.Read("A.rpx~~"), second);
}

TEST_F(KeptVersion, InstancesAndMembersAreValuesAndEmptyOnesAreNone) {
    folder.Write("a.rpx", ReportText({R"(1,1,"Title","a")", R"(1,1,"Title","")", R"(1,1,"Single","  ")", Occurrence,
                                      R"(2,2,"Depth","b")", R"("")", End}));
    RowValue[0] = "x|y";
    SaveAs("a.rpx");
    EXPECT_TRUE(Dialogs.Messages.empty());
    RowValue[0] = "x|";
    SaveAs("a.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{KeptMessage("a.rpx~")});
}

TEST_F(KeptVersion, ValuesOfRecordsThatCountNoLineAreValuesToo) {
    const std::vector<std::string> lines{R"(1,0,"Title","a")", R"(1,1,"Title","b")"};
    folder.Write("a.rpx", ReportText(lines));
    RowValue[0] = "x";
    SaveAs("a.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{KeptMessage("a.rpx~")});
    EXPECT_EQ(folder.Read("a.rpx~"), ReportText(lines));
}

TEST_F(KeptVersion, OfADamagedReportCountsUpToItsFault) {
    folder.Write("a.rpx", ReportText({R"(1,1,"Title","a")", "broken", R"(1,1,"Title","a")"}));
    RowValue[0] = "x";
    SaveAs("a.rpx");
    EXPECT_TRUE(Dialogs.Messages.empty());
    folder.Write("a.rpx", ReportText({R"(1,1,"Title","a")", R"(1,1,"Title","a")", "broken"}));
    SaveAs("a.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{KeptMessage("a.rpx~")});
}

TEST_F(KeptVersion, StaysAfterALoadThatWasStopped) {
    Dialogs.Answers = {NoAnswer};
    const std::vector<std::string> lines{R"(1,1,"Nowhere","n")", R"(1,1,"Title","a")"};
    Load(lines);
    Forget();
    RowValue[0] = "x|y|z";
    SaveAs("A.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{KeptMessage("A.rpx~")});
    EXPECT_EQ(folder.Read("A.rpx~"), ReportText(lines));
}

TEST_F(KeptVersion, StaysWhereTheFirstTryToSaveFailed) {
    const std::vector<std::string> lines{R"(1,1,"Colour","Green")", R"(1,1,"Title","a")"};
    Load(lines);
    Forget();
    const std::string store = folder.Read("GRP00004.XXX");
    std::filesystem::remove(folder.Path() + "GRP00004.XXX");
    Press(Quintave.CommandSave);
    EXPECT_EQ(Dialogs.Messages, std::vector{WriteMessage("53 - File not found")});
    folder.Write("GRP00004.XXX", store);
    Forget();
    Press(Quintave.CommandSave);
    EXPECT_EQ(Dialogs.Messages, std::vector{KeptMessage("A.rpx~")});
    EXPECT_EQ(folder.Read("A.rpx~"), ReportText(lines));
    EXPECT_FALSE(folder.Has("A.rpx~~"));
}
