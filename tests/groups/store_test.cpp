// Group stores that vanished, are short, damaged, full or cannot be written.
#include "model/store.h"
#include "support/stores.h"

#include "support/file_limit.h"
#include "support/group_store.h"
#include "support/open_files.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

#include <cstdio>
#include <filesystem>

using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;

namespace {

constexpr auto File = "GRP00001.XXX";
constexpr std::size_t Length = 6;

// What is told about a store that cannot be used.
auto Tells(const std::string &error) {
    return ElementsAre(FieldsAre("Quintave",
                                 "Error: " + error +
                                     "\r\nError using a work file in the resource directory! (read only file or drive? "
                                     "full drive? file locked? wrong privileges?). Correct the problem and try again.",
                                 OkOnly + CriticalIcon));
}

class GroupStore : public ScreenTest {
protected:
    void SetUp() override {
        Start({Element(1, 2, "GROUP START", "Samples"), Element(2, 4, "TEXT", "Depth"), Element(2, 2, "TEXT", "No"),
               Element(1, 0, "GROUP END", ""), Element(1, 30, "TEXT", "Last")});
    }

    void OpenWith(const std::vector<std::string> &occurrences) {
        folder.Write(File, Store(Length, occurrences));
        Open(0);
        ASSERT_EQ(ActiveList, GroupList);
    }

    static void TypeDepth(const std::string &text) {
        Open(0);
        Type(text);
    }

    std::string Bytes() const { return folder.Read(File); }

    void ExpectOutside(const std::string &error) const {
        EXPECT_THAT(Dialogs.Messages, Tells(error));
        EXPECT_EQ(ActiveList, 0);
        EXPECT_EQ(CurrentField, 0);
        EXPECT_FALSE(Quintave.GrpExit.Visible);
        EXPECT_FALSE(Quintave.TableFrame.Visible);
        EXPECT_EQ(Focused(), &Quintave.List1[0]);
        EXPECT_EQ(RowField[0], 1);
    }
};

} // namespace

// Entering
// ------------------------------------------------------------------------------

TEST_F(GroupStore, AMissingStoreIsToldAndTheGroupIsNotEntered) {
    std::filesystem::remove(folder.Path() + File);
    Open(0);
    ExpectOutside("53 - File not found");
    EXPECT_FALSE(folder.Has(File));
}

TEST_F(GroupStore, ADirectoryInItsPlaceIsToldAndTheGroupIsNotEntered) {
    std::filesystem::remove(folder.Path() + File);
    std::filesystem::create_directory(folder.Path() + File);
    Open(0);
    ExpectOutside("75 - Path/File access error");
}

TEST_F(GroupStore, ACutHeaderIsToldAndTheGroupIsNotEntered) {
    const auto open = OpenFileCount();
    for (const std::size_t bytes : {0u, 1u, 3u}) {
        Dialogs.Messages.clear();
        folder.Write(File, Store(Length, {"a"}).substr(0, bytes));
        Open(0);
        ExpectOutside("62 - Input past end of file");
        EXPECT_EQ(OpenFileCount(), open);
    }
}

TEST_F(GroupStore, AStoreOfAnotherGroupIsToldAndTheGroupIsNotEntered) {
    folder.Write(File, Store(7, {"a"}));
    Open(0);
    ExpectOutside("62 - Input past end of file");
    EXPECT_EQ(Bytes(), Store(7, {"a"}));
}

TEST_F(GroupStore, MissingBytesAreBlanks) {
    folder.Write(File, StoreHeader(Length, 3) + "a   1 b");
    Open(0);
    PressCtrl('N');
    EXPECT_EQ(Row(0), RowOf("Depth", "b"));
    EXPECT_EQ(Row(1), RowOf("No"));
    PressCtrl('N');
    EXPECT_EQ(Row(0), RowOf("Depth"));
    Press(Quintave.GrpExit);
    EXPECT_EQ(Bytes(), Store(Length, {"a   1", "b", ""}));
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(GroupStore, InsertAndDeleteFillAShortStoreWithBlanks) {
    folder.Write(File, StoreHeader(Length, 3) + "a   1 b");
    Open(0);
    Press(Quintave.TblFldInsert);
    EXPECT_EQ(Bytes(), Store(Length, {"", "a   1", "b", ""}));
    folder.Write(File, StoreHeader(Length, 3) + "a   1 b");
    Press(Quintave.GrpExit);
    folder.Write(File, StoreHeader(Length, 3) + "a   1 b");
    Open(0);
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(Bytes(), Store(Length, {"b", ""}));
}

TEST_F(GroupStore, ResetMakesAMissingStoreAnew) {
    std::filesystem::remove(folder.Path() + File);
    Press(Quintave.CommandReset);
    EXPECT_EQ(Bytes(), Store(Length, {""}));
    Open(0);
    EXPECT_EQ(ActiveList, GroupList);
}

// While the group is open
// ------------------------------------------------------------------------------

namespace {

struct GroupCommand {
    void (*Press)();
    std::vector<std::string> Left; // of a, b! and c, with b! on the screen
};

const std::vector<GroupCommand> GroupCommands{
    {[] { PressCtrl('N'); }, {"a", "b!", "c"}},     {[] { PressCtrl('T'); }, {"a", "b!", "c"}},
    {[] { PressCtrl('I'); }, {"a", "", "b!", "c"}}, {[] { PressCtrl('D'); }, {"a", "c"}},
    {[] { PressCtrl('E'); }, {"a", "b!", "c"}},     {[] { UserSelects(Quintave.TblFldNum, 2); }, {"a", "b!", "c"}},
};

} // namespace

TEST_F(GroupStore, AStoreThatVanishesIsMadeAnewByEachCommand) {
    for (const bool directoryToo : {false, true}) {
        for (std::size_t i = 0; i < GroupCommands.size(); ++i) {
            OpenWith({"a", "b", "c"});
            while (GroupLoadedOccurrence != 1) PressCtrl(GroupLoadedOccurrence == 0 ? 'N' : 'V');
            TypeDepth("!");
            directoryToo ? std::filesystem::remove_all(folder.Path()) : std::filesystem::remove(folder.Path() + File);
            GroupCommands[i].Press();
            EXPECT_EQ(MessageCount(), 0u) << i;
            if (ActiveList == GroupList) Press(Quintave.GrpExit);
            EXPECT_EQ(Bytes().substr(2, 2), Store(Length, GroupCommands[i].Left).substr(2, 2)) << i;
            EXPECT_TRUE(Bytes().starts_with(Store(Length, GroupCommands[i].Left))) << i;
            Select(0);
        }
    }
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(GroupStore, AStoreThatIsMadeAnewHasNothingBehindItsOccurrences) {
    for (const char letter : {'I', 'D', 'N'}) {
        folder.Write(File, Store(Length, {"a", "b"}, "left over"));
        Open(0);
        PressCtrl('T');
        std::filesystem::remove(folder.Path() + File);
        PressCtrl(letter);
        const std::string bytes = letter == 'I'   ? Store(Length, {"", "a", "b"})
                                  : letter == 'D' ? Store(Length, {"b"}, "b     ")
                                                  : Store(Length, {"a", "b"});
        EXPECT_EQ(Bytes(), bytes) << letter;
        PressCtrl('E');
        Select(0);
    }
}

TEST_F(GroupStore, WithoutItsStoreAnOpenGroupIsSavedAndLeft) {
    const Folder elsewhere;
    const std::vector<std::pair<Control *, std::string>> commands{{&Quintave.CommandSave, "1.rpx"},
                                                                  {&Quintave.CommandSaveAs, "2.rpx"}};
    for (const auto &[command, name] : commands) {
        OpenWith({"a", "b"});
        PressCtrl('T');
        TypeDepth("!");
        std::filesystem::remove_all(folder.Path());
        Dialogs.Texts = {elsewhere.Path() + name};
        Press(*command);
        EXPECT_EQ(ActiveList, 0);
        EXPECT_EQ(DataChanged, False);
        EXPECT_NE(elsewhere.Read(name).find("\"a!\""), std::string::npos);
        EXPECT_NE(elsewhere.Read(name).find("\"b\""), std::string::npos);
        EXPECT_EQ(MessageCount(), 0u);
        FileMark = FirstLoad;
        Select(0);
    }
}

TEST_F(GroupStore, WithoutItsStoreTheProgramIsQuitFromAnOpenGroup) {
    OpenWith({"a", "b"});
    std::filesystem::remove_all(folder.Path());
    Press(Quintave.CommandQuit);
    EXPECT_TRUE(ProgramEnded());
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(GroupStore, QuitEndsWhereTheStoreCannotBeMadeAnew) {
    OpenWith({"a", "b"});
    std::filesystem::remove(folder.Path() + File);
    const FileSizeLimit limit(4);
    Press(Quintave.CommandQuit);
    EXPECT_THAT(Dialogs.Messages, Tells("61 - Disk full"));
    EXPECT_TRUE(ProgramEnded());
}

TEST_F(GroupStore, QuitAsksForUnsavedEntriesWhereTheStoreCannotBeMadeAnew) {
    OpenWith({"a", "b"});
    TypeDepth("!");
    std::filesystem::remove(folder.Path() + File);
    const FileSizeLimit limit(4);
    Dialogs.Answers = {OkAnswer, CancelAnswer};
    Press(Quintave.CommandQuit);
    EXPECT_FALSE(ProgramEnded());
    EXPECT_EQ(Row(0), RowOf("Depth", "a!"));
    EXPECT_EQ(Focused(), &Quintave.List1[GroupList]);
    EXPECT_EQ(LastMessage().Title, "Quit Quintave");
    ASSERT_EQ(MessageCount(), 2u);
    Dialogs.Messages.pop_back();
    EXPECT_THAT(Dialogs.Messages, Tells("61 - Disk full"));
    Dialogs.Answers = {OkAnswer, NoAnswer};
    Press(Quintave.CommandQuit);
    EXPECT_TRUE(ProgramEnded());
}

TEST_F(GroupStore, WithoutAnyStoreTheProgramIsQuitFromTheFieldList) {
    std::filesystem::remove_all(folder.Path());
    Press(Quintave.CommandQuit);
    EXPECT_TRUE(ProgramEnded());
    EXPECT_EQ(MessageCount(), 0u);
}

TEST_F(GroupStore, AFullDiskRefusesANewOccurrenceAndKeepsWhatWasEntered) {
    OpenWith({"a", "b"});
    PressCtrl('B');
    TypeDepth("!");
    {
        const FileSizeLimit limit(4 + 2 * Length);
        PressCtrl('N');
    }
    EXPECT_THAT(Dialogs.Messages, Tells("61 - Disk full"));
    EXPECT_EQ(GroupOccurrenceCount, 2);
    EXPECT_THAT(Quintave.TblFldNum.Rows, ElementsAre("1", "2"));
    EXPECT_EQ(Quintave.TblFldNum.ListIndex, 1);
    EXPECT_EQ(Row(0), RowOf("Depth", "b!"));
    EXPECT_EQ(Bytes(), Store(Length, {"a", "b!"}));
    PressCtrl('N');
    EXPECT_EQ(Bytes(), Store(Length, {"a", "b!", ""}));
}

TEST_F(GroupStore, AFullDiskRefusesInsertAndDeleteAndLeavesTheStoreWhole) {
    OpenWith({"a", "b", "c"});
    for (const char letter : {'I', 'D'}) {
        Dialogs.Messages.clear();
        {
            const FileSizeLimit limit(4 + Length);
            PressCtrl(letter);
        }
        EXPECT_THAT(Dialogs.Messages, Tells("61 - Disk full")) << letter;
        EXPECT_EQ(Bytes(), Store(Length, {"a", "b", "c"}));
        EXPECT_FALSE(folder.Has("GRP00001.$$$"));
        EXPECT_EQ(GroupOccurrenceCount, 3);
        EXPECT_THAT(Quintave.TblFldNum.Rows, ElementsAre("1", "2", "3"));
        EXPECT_EQ(Row(0), RowOf("Depth", "a"));
        EXPECT_EQ(DataChanged, False);
    }
    PressCtrl('I');
    EXPECT_EQ(Bytes(), Store(Length, {"", "a", "b", "c"}));
}

TEST_F(GroupStore, WhereTheOccurrenceCannotBeStoredTheGroupStaysOpen) {
    OpenWith({"a", "b"});
    PressCtrl('B');
    TypeDepth("!");
    {
        const FileSizeLimit limit(4 + Length);
        Press(Quintave.GrpExit);
        EXPECT_THAT(Dialogs.Messages, Tells("61 - Disk full"));
        EXPECT_EQ(ActiveList, GroupList);
        EXPECT_TRUE(Quintave.TableFrame.Visible);
        UserSelects(Quintave.TblFldNum, 0);
        EXPECT_EQ(Quintave.TblFldNum.ListIndex, 1);
        Press(Quintave.CommandSave);
        EXPECT_THAT(Dialogs.Asked, IsEmpty());
    }
    EXPECT_EQ(Row(0), RowOf("Depth", "b!"));
    Press(Quintave.GrpExit);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(Bytes(), Store(Length, {"a", "b!"}));
}

TEST_F(GroupStore, NoCommandGoesOnWhereTheOccurrenceCannotBeStored) {
    OpenWith({"a", "b"});
    PressCtrl('B');
    TypeDepth("!");
    for (Control *command : {&Quintave.CommandSave, &Quintave.CommandSaveAs, &Quintave.CommandAdd,
                             &Quintave.CommandPrint, &Quintave.GrpExit}) {
        Dialogs.Messages.clear();
        const FileSizeLimit limit(4 + Length);
        Press(*command);
        EXPECT_THAT(Dialogs.Messages, Tells("61 - Disk full")) << command->Name;
        EXPECT_THAT(Dialogs.Asked, IsEmpty()) << command->Name;
        EXPECT_EQ(ActiveList, GroupList) << command->Name;
        EXPECT_EQ(Row(0), RowOf("Depth", "b!")) << command->Name;
        EXPECT_FALSE(Quintave.PrintFrame.Visible);
    }
    EXPECT_FALSE(folder.Has("!quin!02.$$$"));
    Press(Quintave.GrpExit);
    EXPECT_EQ(Bytes(), Store(Length, {"a", "b!"}));
}

TEST_F(GroupStore, AResetLeavesAGroupWhoseOccurrenceCannotBeStored) {
    OpenWith({"a", "b"});
    PressCtrl('B');
    TypeDepth("!");
    {
        const FileSizeLimit limit(4 + Length);
        Dialogs.Answers = {NoAnswer};
        Press(Quintave.CommandReset);
    }
    EXPECT_EQ(ActiveList, 0);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_FALSE(Quintave.GrpExit.Visible);
    EXPECT_EQ(DataChanged, False);
    EXPECT_EQ(RowField[0], 1);
    EXPECT_EQ(Bytes(), Store(Length, {""}));
    Open(0);
    EXPECT_EQ(ActiveList, GroupList);
    EXPECT_EQ(Row(0), RowOf("Depth"));
}

// The largest store
// ------------------------------------------------------------------------------

TEST_F(GroupStore, Occurrence32768IsRefused) {
    std::string bytes = StoreHeader(Length, 32767);
    for (int k = 1; k <= 32767; ++k) {
        std::string occurrence = std::to_string(k % 10000);
        occurrence.resize(Length, ' ');
        bytes += occurrence;
    }
    folder.Write(File, bytes);
    Open(0);
    EXPECT_EQ(Quintave.TblFldNum.Rows.size(), 32767u);
    EXPECT_EQ(Quintave.TblFldNum.Rows.back(), "32767");
    PressCtrl('B');
    EXPECT_EQ(Row(0), RowOf("Depth", "2767"));
    for (const char letter : {'N', 'I'}) {
        Dialogs.Messages.clear();
        PressCtrl(letter);
        EXPECT_THAT(Dialogs.Messages, Tells("6 - Overflow"));
        EXPECT_EQ(GroupOccurrenceCount, 32767);
        EXPECT_EQ(Quintave.TblFldNum.ListIndex, 32766);
        EXPECT_EQ(Row(0), RowOf("Depth", "2767"));
        EXPECT_EQ(Bytes(), bytes);
    }
    Press(Quintave.TblFldDelete);
    EXPECT_EQ(GroupOccurrenceCount, 32766);
    EXPECT_EQ(Row(0), RowOf("Depth", "2766"));
    Press(Quintave.GrpExit);
    EXPECT_EQ(Bytes().substr(0, 4), StoreHeader(Length, 32766));
    EXPECT_EQ(Bytes().size(), bytes.size());
}

// Stores as a whole
// ------------------------------------------------------------------------------

TEST_F(GroupStore, ReadStoreGivesAllOccurrencesPadded) {
    folder.Write(File, StoreHeader(Length, 2) + "a   1 b");
    Cells occurrences;
    const StoreLayout header = ReadStore(1, occurrences);
    EXPECT_EQ(header.Items, 6);
    EXPECT_EQ(header.Occurrences, 2);
    EXPECT_EQ(occurrences, NarrowCells(6, "a   1 b     "));
}

TEST_F(GroupStore, ReplaceStorePutsOccurrencesInItsPlace) {
    PutStore(1, "a   1 b     ");
    EXPECT_EQ(Bytes(), Store(Length, {"a   1", "b"}));
    EXPECT_FALSE(folder.Has("GRP00001.$$$"));
}

TEST_F(GroupStore, ReplaceStoreOnAFullDiskLeavesTheOldOneAndNothingElse) {
    folder.Write(File, Store(Length, {"a"}));
    const FileSizeLimit limit(4 + Length);
    try {
        PutStore(1, std::string(2 * Length, 'x'));
        FAIL() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number, DiskFull);
    }
    EXPECT_EQ(Bytes(), Store(Length, {"a"}));
    EXPECT_FALSE(folder.Has("GRP00001.$$$"));
}
