// Values of reports against the choices of their fields.
#include "support/report_test.h"
#include "support/stores.h"

#include "main/template_command.h"
#include "model/store.h"
#include "report/choice_matching.h"

#include <climits>

namespace {

class ChoiceMatching : public ReportTest {
protected:
    // A template of one LIST field with these choices.
    void StartList(const std::vector<std::string> &choices, const std::string &title = "Colour") {
        std::vector<std::string> lines{"1,10,\"LIST\",\"" + title + R"(","","")"};
        for (const auto &choice : choices) lines.push_back('"' + choice + '"');
        lines.emplace_back("XXX-1XXX");
        Start(lines);
    }

    // The position that a loaded value selects.
    Integer Chosen(const std::string &value) {
        FieldInfo[1][Choice] = 77;
        Load({"1,1,\"Colour\",\"" + value + "\""});
        return FieldInfo[1][Choice];
    }
};

} // namespace

TEST_F(ChoiceMatching, AValueSelectsTheChoiceThatEqualsIt) {
    StartList({"Red", "Blue"});
    EXPECT_EQ(Chosen("Red"), 0);
    EXPECT_EQ(RowValue[0], "Red");
    Dialogs.Answers = {YesAnswer};
    EXPECT_EQ(Chosen("Blue"), 1);
    EXPECT_EQ(RowValue[0], "Blue");
}

TEST_F(ChoiceMatching, AClosedListRefusesAValueWithAMessageAndEmptiesTheField) {
    StartList({"red", "Blue"});
    EXPECT_EQ(Chosen("Red"), -1);
    EXPECT_EQ(Dialogs.Messages, std::vector{ClosedListMessage("Colour", "Red")});
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(Row(0), " Colour                    | ");
}

TEST_F(ChoiceMatching, BlanksAndLettersOfAValueCount) {
    for (const char *value : {"red", "RED", " Red", "Red ", "Re d"}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(ChoiceOf({"Red", "Blue"}, value, LONG_MAX), -1);
    }
}

TEST_F(ChoiceMatching, ALoadedValueMustBeAChoiceByEveryLetterAndBlank) {
    StartList({"Red", "Blue"});
    for (const char *value : {"red", "RED", " Red", "Red ", "Re d"}) {
        SCOPED_TRACE(value);
        Forget();
        EXPECT_EQ(Chosen(value), -1);
        EXPECT_EQ(Dialogs.Messages, std::vector{ClosedListMessage("Colour", value)});
        EXPECT_EQ(RowValue[0], "");
    }
}

TEST_F(ChoiceMatching, ALoadKnowsTheOpenEntryInAnyLetterCaseAndWithBlanksAround) {
    StartList({"Red", " oTHER... ", "Blue"});
    EXPECT_EQ(Chosen("Green"), 1);
    Dialogs.Answers = {YesAnswer};
    EXPECT_EQ(Chosen("Blue"), 2);
    EXPECT_TRUE(Dialogs.Messages.size() == 1 && Dialogs.Messages[0] == FieldMergeMessage());
}

TEST_F(ChoiceMatching, ALoadedValueSelectsTheFirstOfEqualChoices) {
    StartList({"", "Red  ", "Red", "Red"});
    EXPECT_EQ(Chosen("Red"), 1);
}

// After a load the screen looks for the selected row's value once more, which would hide what the load itself found.
TEST_F(ChoiceMatching, ALoadFindsTheVeryPositionThatTheScreenFinds) {
    const std::vector<std::string> choices{"", "Red  ", "Red", "Blue", "OTHER..."};
    StartList(choices);
    const std::vector<std::pair<const char *, Integer>> positions{{"Red", 1},  {"Red  ", 1}, {"Red ", 4},
                                                                  {"Blue", 3}, {"Blue ", 4}, {" ", -1}};
    for (const auto &[value, position] : positions) {
        SCOPED_TRACE(value);
        EXPECT_EQ(ChoiceOf(Integer{1}, value), position);
        EXPECT_EQ(ChoiceOf(choices, value, LONG_MAX), position);
    }
}

TEST_F(ChoiceMatching, OfSeveralOpenEntriesTheLastCounts) {
    StartList({"OTHER...", "Red", "Other..."});
    EXPECT_EQ(Chosen("Green"), 2);
    EXPECT_EQ(ChoiceOf({"OTHER...", "Red", "Other..."}, "Green", LONG_MAX), 2);
}

TEST_F(ChoiceMatching, ARefusalIsToldBeforeTheRowIsEmptied) {
    StartList({"Red"});
    static std::string shown;
    Dialogs.Reply = [](const ShownMessage &message) {
        shown = Quintave.List1[0].Rows[0];
        return DefaultAnswer(message.Style);
    };
    Load({R"(1,1,"Colour","Green")"});
    EXPECT_EQ(shown, " Colour                    | Green");
    EXPECT_EQ(Row(0), " Colour                    | ");
}

TEST_F(ChoiceMatching, AValueOutsideAnOpenListSelectsItsOpenEntryAndStays) {
    StartList({"Red", "OTHER..."});
    EXPECT_EQ(Chosen("Green"), 1);
    EXPECT_EQ(RowValue[0], "Green");
    EXPECT_EQ(Row(0), " Colour                    | Green");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(ChoiceMatching, TheOpenEntryIsKnownInAnyLetterCaseAndWithBlanksAround) {
    for (const char *entry : {"OTHER...", "other...", " Other... ", "   oTHER..."}) {
        SCOPED_TRACE(entry);
        EXPECT_EQ(ChoiceOf({"Red", entry, "Blue"}, "Green", LONG_MAX), 1);
    }
    for (const char *entry : {"OTHER", "OTHER ...", "Other....", ""}) {
        SCOPED_TRACE(entry);
        EXPECT_EQ(ChoiceOf({"Red", entry, "Blue"}, "Green", LONG_MAX), -1);
    }
}

TEST_F(ChoiceMatching, AnEqualChoiceWinsOverTheOpenEntryBeforeAndBehindIt) {
    const std::vector<std::string> choices{"Red", "OTHER...", "Blue"};
    EXPECT_EQ(ChoiceOf(choices, "Red", LONG_MAX), 0);
    EXPECT_EQ(ChoiceOf(choices, "Blue", LONG_MAX), 2);
}

TEST_F(ChoiceMatching, AnEmptyValueSelectsNothingAndSaysNothing) {
    StartList({"", "Red"});
    EXPECT_EQ(Chosen(""), -1);
    EXPECT_EQ(Chosen("   "), -1);
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(ChoiceMatching, OnlyTheFirstInstanceIsMatched) {
    StartList({"Red", "Blue"});
    Dialogs.Answers = {NoAnswer};
    Load({R"(1,1,"Colour","Blue")", R"(1,1,"Colour","Green")"});
    EXPECT_EQ(FieldInfo[1][Choice], 1);
    EXPECT_EQ(RowValue[0], "Blue|Green");
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
}

TEST_F(ChoiceMatching, ARefusalEmptiesTheFieldWithAllItsInstances) {
    StartList({"Red", "Blue"});
    Load({R"(1,1,"Colour","Green|Red")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{ClosedListMessage("Colour", "Green")});
    EXPECT_EQ(RowValue[0], "");
    EXPECT_EQ(FieldInfo[1][Choice], -1);
}

TEST_F(ChoiceMatching, ARefusedValueIsNotWrittenBack) {
    StartList({"Red"});
    Load({R"(1,1,"Colour","Green")"});
    EXPECT_EQ(Saved(), "");
}

TEST_F(ChoiceMatching, TheTitleInTheMessageHasNoBlanksAround) {
    StartList({"Red"}, "  Colour of rock ");
    Load({R"(1,1,"  Colour of rock ","Green")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{ClosedListMessage("Colour of rock", "Green")});
}

TEST_F(ChoiceMatching, AChoiceThatEndsInBlanksEqualsTheValueWithoutThem) {
    StartList({"Red  ", "Blue"});
    EXPECT_EQ(Chosen("Red"), 0);
    EXPECT_EQ(RowValue[0], "Red");
    EXPECT_EQ(ChoiceOf({"Red  "}, "Red  ", LONG_MAX), 0);
    EXPECT_EQ(ChoiceOf({"Red  "}, "Red ", LONG_MAX), -1);
}

TEST_F(ChoiceMatching, TheFirstOfEqualChoicesIsSelected) {
    EXPECT_EQ(ChoiceOf({"", "Red", "Red"}, "Red", LONG_MAX), 1);
}

TEST_F(ChoiceMatching, FieldsWithoutChoicesAreNotChecked) {
    Start({R"(1,9,"LIST","Colour","","")", "Red", "XXX-1XXX", R"(1,30,"TEXT","Title","","")",
           R"(1,999,"MEMO","Notes","","")", R"(1,2,"GROUP START","Samples","","")", R"(2,5,"TEXT","Depth","","")",
           R"(1,1,"GROUP END","","","")"});
    Load({R"(1,1,"Title","Green")", R"(1,1,"Notes","Green")", R"(1,-9,"Samples","")", R"(2,1,"Depth","Green")",
          R"(1,-99,"END REPEATING GROUP","")"});
    EXPECT_TRUE(Dialogs.Messages.empty());
    for (const Integer element : {Integer{2}, Integer{3}, Integer{4}, Integer{5}}) {
        MatchChoiceValue(element);
        EXPECT_EQ(FieldInfo[element][Choice], 0);
    }
    EXPECT_EQ(RowValue[1], "Green");
}

TEST_F(ChoiceMatching, AMissingChoiceFileEndsTheLoadWithError53) {
    StartList({"Red"});
    std::filesystem::remove(folder.Path() + "LST00001.XXX");
    Load({R"(1,1,"Colour","Red")"});
    EXPECT_EQ(Dialogs.Messages, std::vector{LoadMessage("A.rpx", "53 - File not found")});
}

TEST_F(ChoiceMatching, TheChoiceFileIsTheOneNumberedAsTheElement) {
    std::vector<std::string> lines(11, R"(1,30,"TEXT","Note","","")");
    lines.insert(lines.end(), {R"(1,9,"LIST","Colour","","")", "Red", "XXX-1XXX"});
    Start(lines);
    folder.Write("LST00012.XXX", "\"Blue\"\r\n\"Green\"\r\n");
    Load({R"(1,1,"Colour","Green")"});
    EXPECT_EQ(FieldInfo[12][Choice], 1);
    EXPECT_TRUE(Dialogs.Messages.empty());
}

// Choices are kept in mind while a file is loaded, and not beyond.
TEST_F(ChoiceMatching, AChoiceFileThatHasChangedSinceTheLastLoadIsReadAnew) {
    StartList({"Red", "Blue"});
    Chosen("Red");
    EXPECT_EQ(RowValue[0], "Red");
    folder.Write("LST00001.XXX", "\"Green\"\r\n");
    Dialogs.Answers = {YesAnswer, YesAnswer};
    Chosen("Green");
    EXPECT_EQ(RowValue[0], "Green");
    Chosen("Red");
    EXPECT_EQ(LastMessage(), ClosedListMessage("Colour", "Red"));
    std::filesystem::remove(folder.Path() + "LST00001.XXX");
    Chosen("Green");
    EXPECT_EQ(LastMessage(), LoadMessage("A.rpx", "53 - File not found"));
}

TEST_F(ChoiceMatching, ChoicesOfTheTemplateBeforeDoNotCount) {
    StartList({"Red", "OTHER..."});
    EXPECT_EQ(Chosen("Green"), 1);
    folder.Write("SITE.FTF", TemplateText({R"(1,10,"LIST","Colour","","")", "Blue", "Red", "XXX-1XXX"}));
    ASSERT_TRUE(LoadTemplateFile());
    FileMark = FirstLoad;
    EXPECT_EQ(Chosen("Red"), 1);
    Dialogs.Answers = {YesAnswer};
    EXPECT_EQ(Chosen("Green"), -1);
    EXPECT_EQ(LastMessage(), ClosedListMessage("Colour", "Green"));
}

// --- Members of groups

namespace {

class MemberChoice : public ReportTest {
protected:
    // A template of a group of a TEXT member (3 cells) and a LIST member (5 cells) with these choices.
    void StartRocks(const std::vector<std::string> &choices) {
        std::vector<std::string> lines{R"(1,2,"GROUP START","Rocks","","")", R"(2,3,"TEXT","No","","")",
                                       R"(2,5,"LIST","Colour","","")"};
        for (const auto &choice : choices) lines.push_back('"' + choice + '"');
        lines.insert(lines.end(), {"XXX-1XXX", R"(1,1,"GROUP END","","","")"});
        Start(lines);
    }

    // The cells of its one occurrence after a load of this value into the blank group.
    std::string CellsAfter(const std::string &value) {
        PutStore(1, std::string(8, ' '));
        Load({R"(1,-9,"Rocks","REPEATING GROUP, Occurrence #1")", R"(2,1,"No","1")", "2,1,\"Colour\",\"" + value + "\"",
              R"(1,-99,"END REPEATING GROUP","")"});
        return StoredCells(1);
    }

    std::string CellsAfter(const std::vector<std::string> &choices, const std::string &value) {
        StartRocks(choices);
        return CellsAfter(value);
    }
};

} // namespace

TEST_F(MemberChoice, ARefusedValueLeavesTheCellsBlank) {
    EXPECT_EQ(CellsAfter({"Red", "Blue"}, "Green"), "1       ");
    EXPECT_EQ(Dialogs.Messages, std::vector{ClosedListMessage("Colour", "Green")});
}

TEST_F(MemberChoice, AListedValueIsStored) {
    EXPECT_EQ(CellsAfter({"Red", "Blue"}, "Blue"), "1  Blue ");
    EXPECT_TRUE(Dialogs.Messages.empty());
}

TEST_F(MemberChoice, AnOpenListStoresAnyValue) { EXPECT_EQ(CellsAfter({"Red", "OTHER..."}, "Green"), "1  Green"); }

// Cutting or trimming it first would make a choice of what is none.
TEST_F(MemberChoice, TheTextOfTheRecordItselfMustBeAChoice) {
    StartRocks({"Green", "Red"});
    for (const char *value : {"Greenish", "Greenland", "Red ", "Re|d"}) {
        SCOPED_TRACE(value);
        Forget();
        EXPECT_EQ(CellsAfter(value), "1       ");
        EXPECT_EQ(Dialogs.Messages, std::vector{ClosedListMessage("Colour", value)}); // and nothing of a cut
    }
}

TEST_F(MemberChoice, AChoiceLongerThanTheCellsIsTakenWholeAndCut) {
    EXPECT_EQ(CellsAfter({"Yellow", "Yello"}, "Yellow"), "1  Yello");
    ASSERT_EQ(Dialogs.Messages.size(), 1U);
    EXPECT_EQ(Dialogs.Messages[0].Title, "WARNING - Field Data Cut!");
    EXPECT_EQ(FieldInfo[3][Choice], 0);
}

TEST_F(MemberChoice, AWholeChoiceWinsOverOneThatIsCut) {
    CellsAfter({"Yellow", "Yello"}, "Yello");
    EXPECT_EQ(FieldInfo[3][Choice], 1);
}

TEST_F(MemberChoice, AChoiceIsCutAndWithoutTheBlanksAtItsEndAsTheStoreHoldsIt) {
    EXPECT_EQ(CellsAfter({"Dark blue"}, "Dark"), "1  Dark ");
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(CellsAfter("Dark "), "1       ");
    EXPECT_EQ(Dialogs.Messages, std::vector{ClosedListMessage("Colour", "Dark ")});
}

TEST_F(MemberChoice, AnOpenListStoresWhatFitsOfAnyValue) {
    EXPECT_EQ(CellsAfter({"Red", "OTHER..."}, "Greenish"), "1  Green");
    ASSERT_EQ(Dialogs.Messages.size(), 1U);
    EXPECT_EQ(Dialogs.Messages[0].Title, "WARNING - Field Data Cut!");
}

TEST_F(MemberChoice, AChoiceLongerThanTheCellsEqualsWhatFitsInThem) {
    EXPECT_EQ(CellsAfter({"Yellow"}, "Yello"), "1  Yello");
    EXPECT_TRUE(Dialogs.Messages.empty());
}
