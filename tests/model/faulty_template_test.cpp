// Templates that cannot be loaded: the message, and all that stays as it was.
#include "main/session.h"
#include "platform/files.h"
#include "support/file_limit.h"
#include "support/messages.h"
#include "support/open_files.h"
#include "support/screen_test.h"

#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

constexpr const char *NoTemplate = "[No Fields Template Loaded -- Click on 'Field Template' to Load a Template!]";
constexpr const char *PastEnd = "62 - Input past end of file";
constexpr const char *TooLarge = "6 - Overflow";

const std::vector<std::string> OldTemplate{R"(1,30,"TEXT","Old title","","")",
                                           R"(1,30,"LIST","Old list","","")",
                                           "Red",
                                           "XXX-1XXX",
                                           R"(1,2,"GROUP START","Old group","","")",
                                           R"(2,5,"TEXT","Depth","","")",
                                           R"(1,0,"GROUP END","","","")"};

class FaultyTemplate : public ScreenTest {
protected:
    void WriteTable() const { folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n"); }

    // Picks a file of the folder as the new template.
    void Pick(const std::string &name) const {
        Dialogs.Texts.push_back(folder.Path() + name);
        Press(Quintave.CommandTemplate);
    }

    void PickText(const std::string &bytes) const {
        folder.Write("new.ftf", bytes);
        Pick("new.ftf");
    }

    void StartWithOld() {
        Start(OldTemplate);
        oldFiles = Files();
    }

    // Names and bytes of all work files.
    std::vector<std::string> Files() const {
        std::vector<std::string> files;
        for (const auto &entry : fs::directory_iterator(folder.Path())) {
            const std::string name = entry.path().filename().string();
            if (name.ends_with(".XXX") || name.ends_with(".$$$"))
                files.push_back(name + ":" + (entry.is_regular_file() ? folder.Read(name) : "no file"));
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    // The old template is on the screen, its work files are the same, and it can be worked with.
    void ExpectOldTemplateUsable() {
        EXPECT_EQ(Files(), oldFiles);
        EXPECT_THAT(Quintave.List1[0].Rows,
                    ElementsAre(" Old title                 | ", " Old list                  | ",
                                " Old group                 | -- REPEATABLE GROUP --"));
        EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
        EXPECT_EQ(TemplateName, "SITE.FTF");
        EXPECT_EQ(TemplateDir, folder.Path());
        EXPECT_EQ(AllowInstances, -1);
        EXPECT_EQ(QuitSave, 0);
        EXPECT_EQ(Focused(), &Quintave.List1[0]);
        Enter(0, "still here");
        Open(1);
        Type("R");
        Open(2);
        Enter(0, "12");
        Press(Quintave.GrpExit);
        EXPECT_EQ(RowValue[0], "still here");
        EXPECT_EQ(RowValue[1], "Red");
        EXPECT_EQ(folder.Read("GRP00003.XXX"), std::string("\5\0\1\0", 4) + "12   ");
        EXPECT_THAT(Dialogs.Messages, IsEmpty());
    }

    std::vector<std::string> oldFiles;
};

struct Fault {
    const char *Name;
    std::vector<std::string> Lines;
    const char *Error;
    int Line;
};

std::vector<std::string> Group(const std::vector<std::string> &members) {
    std::vector<std::string> lines{R"(1,2,"GROUP START","G","","")"};
    lines.insert(lines.end(), members.begin(), members.end());
    lines.push_back(R"(1,0,"GROUP END","","","")");
    return lines;
}

std::vector<Fault> Faults() {
    return {
        {"ChoiceListNotEnded", {R"(1,30,"LIST","L","","")", "Red", "Blue"}, PastEnd, 2},
        {"ChoiceListOfNoFieldNotEnded", {R"(1,0,"LIST","L","","")", "Red"}, PastEnd, 2},
        {"GroupNotEnded", {R"(1,2,"GROUP START","G","","")", R"(2,5,"TEXT","a","","")"}, PastEnd, 2},
        {"GroupEndOfKindTwoEndsNoGroup",
         {R"(1,2,"GROUP START","G","","")", R"(2,5,"TEXT","a","","")", R"(1,2,"GROUP END","","","")"},
         PastEnd,
         2},
        {"GroupNotEndedBehindAListInIt",
         {R"(1,2,"GROUP START","G","","")", R"(2,5,"LIST","a","","")", "Red", R"(1,0,"GROUP END","","","")"},
         PastEnd,
         3},
        {"CutRecord", {R"(1,30,"TEXT","a","","")", R"(1,30,"TEXT","b")"}, PastEnd, 3},
        {"QuoteNotClosed", {R"(1,30,"TEXT","a,"",)", R"(1,30,"TEXT","b","","")"}, PastEnd, 2},
        // The counting pass takes it for a list, whose end it does not find.
        {"WordThatEndsInListWithoutChoicesInAGroup", Group({R"(2,10,"PICKLIST","Pick","","")"}), PastEnd, 3},
        {"LevelTooLarge", {R"(32768,30,"TEXT","a","","")"}, TooLarge, 2},
        {"KindTooSmall", {R"(1,-32769,"TEXT","a","","")"}, TooLarge, 2},
        {"LevelTableTooLarge", {R"(32766,30,"TEXT","a","","")", R"(1,30,"TEXT","b","","")"}, TooLarge, 2},
        {"MissingItem",
         {R"(1,30,"TEXT","a","","")", R"(1,30,"TEXT","b","")", R"(1,30,"TEXT","c","","")", R"(1,30,"TEXT","d","","")"},
         PastEnd,
         3},
        {"SurplusItem",
         {R"(1,30,"TEXT","a","","",)", R"(1,30,"TEXT","b","","",,"")", R"(1,30,"TEXT","c","","")"},
         PastEnd,
         3},
        {"CommentLine", {R"(1,30,"TEXT","a","","")", "# more", R"(1,30,"TEXT","c","","")"}, PastEnd, 3},
        {"ChoiceListNotEndedBeforeAnother",
         Group({R"(2,9,"LIST","a","","")", "Red", R"(2,9,"LIST","b","","")", "7, or 8", "XXX-1XXX",
                R"(2,9,"LIST","c","","")", "Blue"}),
         PastEnd, 3},
        {"SmallestLevelTooDeep", {R"(-32768,30,"TEXT","a","","")"}, TooLarge, 2},
        {"GroupTooLong", Group({R"(2,32767,"MEMO","a","","")", R"(2,2,"TEXT","b","","")"}), TooLarge, 4},
        {"ListTooLongForItsGroup", Group({R"(2,32767,"MEMO","a","","")", R"(2,2,"LIST","b","","")", "Red", "XXX-1XXX"}),
         TooLarge, 4},
    };
}

class RefusedTemplate : public FaultyTemplate, public testing::WithParamInterface<Fault> {};

} // namespace

TEST_P(RefusedTemplate, LeavesTheOldOneUsable) {
    StartWithOld();
    PickText(TemplateText(GetParam().Lines, "QuintaveV2--"));
    ExpectUnreadableTemplate("new.ftf", GetParam().Error, GetParam().Line);
    ExpectOldTemplateUsable();
}

TEST_P(RefusedTemplate, AtTheStartLeavesTheWindowWithoutATemplate) {
    Start(GetParam().Lines, "QuintaveV2--");
    ExpectUnreadableTemplate("SITE.FTF", GetParam().Error, GetParam().Line);
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
    EXPECT_EQ(Quintave.editframe.Caption, NoTemplate);
    EXPECT_EQ(TemplateName, "");
    EXPECT_EQ(NumFields, 0);
    EXPECT_EQ(Quintave.List1[0].ListIndex, 0);
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_FALSE(ProgramEnded());
}

INSTANTIATE_TEST_SUITE_P(Fault, RefusedTemplate, testing::ValuesIn(Faults()),
                         [](const auto &fault) { return std::string(fault.param.Name); });

TEST_F(FaultyTemplate, TheDeepestLevelAndTheLongestGroupAreStillAccepted) {
    std::vector<std::string> lines = Group({R"(2,32765,"MEMO","a","","")", R"(2,2,"TEXT","b","","")"});
    lines.push_back(R"(-32765,30,"TEXT","c","","")");
    Start(lines);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(LevelTableRows, 32767);
    EXPECT_EQ(folder.Read("GRP00001.XXX"), std::string("\xFF\x7F\1\0", 4) + std::string(32767, ' '));
}

// --- Counts
// -------------------------------------------------------------------------------------------------------------

TEST_F(FaultyTemplate, AsManyElementsAsSixteenBitsCountAreLoaded) {
    Start(std::vector<std::string>(32767, R"(1,30,"TEXT","a","","")"));
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(NumFields, 32767);
    EXPECT_EQ(NumRows, 32767);
    EXPECT_EQ(FieldRow[32767], 32767);
    EXPECT_EQ(RowField[32766], 32767);
    EXPECT_EQ(Quintave.SectionLabel.Tag, "-1|32768");
    Enter(32766, "last");
    EXPECT_EQ(RowValue[32766], "last");
    CommandReset_Click();
    EXPECT_EQ(RowValue[32766], "");
}

TEST_F(FaultyTemplate, OneElementMoreIsAnOverflow) {
    StartWithOld();
    PickText(TemplateText(std::vector<std::string>(32768, R"(1,30,"TEXT","a","","")")));
    ExpectUnreadableTemplate("new.ftf", TooLarge, 32769);
    ExpectOldTemplateUsable();
}

TEST_F(FaultyTemplate, OneElementWithoutARowMoreIsAnOverflowToo) {
    StartWithOld();
    PickText(TemplateText(std::vector<std::string>(32768, R"(1,0,"","a","","")")));
    ExpectUnreadableTemplate("new.ftf", TooLarge, 32769);
    ExpectOldTemplateUsable();
}

TEST_F(FaultyTemplate, ChoicesAreCountedInSixteenBits) {
    std::vector<std::string> lines(32767, "x");
    lines.insert(lines.begin(), R"(1,30,"LIST","L","","")");
    lines.emplace_back("XXX-1XXX");
    Start(lines);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(folder.Read("LST00001.XXX").size(), 32767U * 5);
    lines.insert(lines.begin() + 1, "x");
    PickText(TemplateText(lines));
    ExpectUnreadableTemplate("new.ftf", TooLarge, 2);
}

// --- Header
// -------------------------------------------------------------------------------------------------------------

namespace {

// Files whose header is no template's.
std::vector<std::string> WrongHeaders() {
    return {"",
            "\r\n\r\n",
            "\"QUINTAVE FIELDS TEMPLATE FILE\"",
            "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\"",
            "\"Quintave Fields Template File\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n",
            "\"QUINTAVE FIELDS TEMPLATE FILE \",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n",
            "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV1\",\"\",\"\",\"\",\"\"\r\n",
            "\"QUINTAVE FIELDS TEMPLATE FILE\",\"quintavev2\",\"\",\"\",\"\",\"\"\r\n",
            "\"QUINTAVE FIELDS TEMPLATE FILE\",\"Quintave\",\"\",\"\",\"\",\"\"\r\n",
            "\"QuintaveV2\",\"QUINTAVE FIELDS TEMPLATE FILE\",\"\",\"\",\"\",\"\"\r\n",
            "\xEF\xBB\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n",
            "\"QUINTAVE FIELDS TEMPLATE FILE",
            "\x1A\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n"};
}

class WrongHeader : public FaultyTemplate, public testing::WithParamInterface<std::string> {};

} // namespace

TEST_P(WrongHeader, OnTheFirstActivationEndsTheProgramAfterItsMessage) {
    WriteTable();
    folder.Write("SITE.FTF", GetParam());
    folder.Write("LST00001.XXX", "left behind by a crash");
    StartUp();
    ExpectWrongHeader();
    EXPECT_TRUE(ProgramEnded());
    EXPECT_THAT(Files(), IsEmpty());
    EXPECT_TRUE(folder.Has("SITE.FTF"));
}

TEST_P(WrongHeader, ThroughTheTemplateCommandLeavesTheOldTemplateUsable) {
    StartWithOld();
    PickText(GetParam());
    ExpectWrongHeader();
    EXPECT_FALSE(ProgramEnded());
    ExpectOldTemplateUsable();
}

INSTANTIATE_TEST_SUITE_P(Header, WrongHeader, testing::ValuesIn(WrongHeaders()),
                         [](const auto &header) { return "Number" + std::to_string(header.index); });

// --- Files that cannot be read
// ------------------------------------------------------------------------------------------

TEST_F(FaultyTemplate, WithoutItsFileTheWindowOpensWithoutATemplate) {
    for (const std::string named : {"none.ftf", "", "*.ftf"}) {
        folder.Write("quintave.tbl", "\"\",\"" + named + "\",\"-1\"\r\n");
        folder.Write("LST00001.XXX", "old");
        fs::create_directory(folder.Path() + "DIR.FTF");
        StartUp();
        EXPECT_EQ(Quintave.editframe.Caption, NoTemplate);
        EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
        EXPECT_EQ(Quintave.List1[0].ListIndex, 0);
        EXPECT_EQ(LoadState, 0);
        EXPECT_FALSE(folder.Has("LST00001.XXX"));
        EXPECT_THAT(Dialogs.Messages, IsEmpty());
        EXPECT_FALSE(ProgramEnded());
        LoadState = -2; // as before the first activation
        UnlockDirectory();
    }
}

TEST_F(FaultyTemplate, ADirectoryOfThatNameIsNoTemplate) {
    WriteTable();
    fs::create_directory(folder.Path() + "SITE.FTF");
    StartUp();
    EXPECT_EQ(Quintave.editframe.Caption, NoTemplate);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(FaultyTemplate, TheCaptionWithoutATemplateStaysAfterReset) {
    folder.Write("quintave.tbl", "\"\",\"none.ftf\",\"-1\"\r\n");
    StartUp();
    Press(Quintave.LogoOff);
    Press(Quintave.CommandReset);
    EXPECT_EQ(Quintave.editframe.Caption, NoTemplate);
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
}

TEST_F(FaultyTemplate, AFileThatCannotBeReadIsToldAtTheStart) {
    WriteTable();
    fs::create_symlink("/proc/self/mem", folder.Path() + "SITE.FTF"); // reading it fails
    StartUp();
    ExpectUnreadableTemplate("SITE.FTF", "57 - Device I/O error", 0);
    EXPECT_EQ(Quintave.editframe.Caption, NoTemplate);
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
    EXPECT_FALSE(ProgramEnded());
}

TEST_F(FaultyTemplate, AFileThatCannotBeReadIsToldByTheTemplateCommand) {
    StartWithOld();
    fs::create_directory(folder.Path() + "dir.ftf");
    Pick("dir.ftf");
    ExpectUnreadableTemplate("dir.ftf", "75 - Path/File access error", 0);
    Pick("gone.ftf");
    ExpectUnreadableTemplate("gone.ftf", "53 - File not found", 0);
    Pick("gone/new.ftf");
    ExpectUnreadableTemplate("new.ftf", "76 - Path not found", 0);
    ExpectOldTemplateUsable();
}

TEST_F(FaultyTemplate, NoFileStaysOpenAfterALoadOrAFailure) {
    StartWithOld();
    const auto open = OpenFileCount();
    PickText(TemplateText({R"(1,30,"LIST","L","","")", "Red"}));
    PickText("no template");
    fs::create_directory(folder.Path() + "dir.ftf");
    Pick("dir.ftf");
    fs::create_directory(folder.Path() + "GRP00003.$$$");
    PickText(TemplateText(OldTemplate));
    EXPECT_EQ(Dialogs.Messages.size(), 4U); // the reset before it has no group to empty
    EXPECT_EQ(OpenFileCount(), open);
    fs::remove(folder.Path() + "GRP00003.$$$");
    PickText(TemplateText(OldTemplate));
    EXPECT_EQ(TemplateName, "new.ftf");
    EXPECT_EQ(OpenFileCount(), open);
}

// --- Work files that cannot be written
// ----------------------------------------------------------------------------------

TEST_F(FaultyTemplate, AWorkFileThatCannotBeWrittenLeavesTheOldTemplateUsable) {
    StartWithOld();
    fs::create_directory(folder.Path() + "LST00002.$$$");
    folder.Write("new.ftf", TemplateText({R"(1,30,"LIST","A","","")", "x", "XXX-1XXX", R"(1,30,"LIST","B","","")", "y",
                                          "XXX-1XXX"}));
    Pick("new.ftf");
    ExpectWorkFileError("75 - Path/File access error");
    fs::remove(folder.Path() + "LST00002.$$$");
    ExpectOldTemplateUsable();
}

TEST_F(FaultyTemplate, ADirectoryInTheWayOfAWorkFileLeavesTheOldTemplateUsable) {
    StartWithOld();
    fs::create_directory(folder.Path() + "LST00005.XXX");
    PickText(TemplateText({R"(1,30,"LIST","A","","")", "x", "XXX-1XXX", R"(1,30,"TEXT","B","","")",
                           R"(1,30,"TEXT","C","","")", R"(1,30,"TEXT","D","","")", R"(1,30,"LIST","E","","")", "y",
                           "XXX-1XXX"}));
    ExpectWorkFileError("75 - Path/File access error");
    fs::remove(folder.Path() + "LST00005.XXX");
    ExpectOldTemplateUsable();
}

TEST_F(FaultyTemplate, AFullDiskLeavesTheOldTemplateUsable) {
    StartWithOld();
    folder.Write("new.ftf", TemplateText(Group({R"(2,5000,"MEMO","a","","")"})));
    {
        const FileSizeLimit full(4000);
        Pick("new.ftf");
    }
    ExpectWorkFileError("61 - Disk full");
    ExpectOldTemplateUsable();
}

TEST_F(FaultyTemplate, AtTheStartAFullDiskLeavesTheWindowWithoutATemplate) {
    WriteTable();
    folder.Write("SITE.FTF", TemplateText(Group({R"(2,5000,"MEMO","a","","")"})));
    {
        const FileSizeLimit full(4000);
        StartUp();
    }
    ExpectWorkFileError("61 - Disk full");
    EXPECT_EQ(Quintave.editframe.Caption, NoTemplate);
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(FaultyTemplate, NoWorkFileFollowsALink) {
    WriteTable();
    folder.Write("kept", "bytes");
    fs::create_symlink(folder.Path() + "kept", folder.Path() + "LST00001.XXX");
    folder.Write("SITE.FTF", TemplateText({R"(1,30,"LIST","A","","")", "x", "XXX-1XXX"}));
    StartUp();
    EXPECT_EQ(folder.Read("kept"), "bytes");
    EXPECT_EQ(folder.Read("LST00001.XXX"), "\"x\"\r\n");
    EXPECT_FALSE(fs::is_symlink(folder.Path() + "LST00001.XXX"));
}
