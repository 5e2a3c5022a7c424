// Unsaved entries that cannot be brought back: refused whole, with a message, and kept aside.
#include "main/recovery.h"

#include "main/recovery_entries.h"
#include "main/session.h"
#include "main/start_up.h"
#include "model/recovery_file.h"
#include "platform/files.h"
#include "support/file_limit.h"
#include "support/recovery_test.h"

#include <cstdio>
#include <filesystem>
#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

constexpr const char *WayBack = " To bring them back, correct the problem, end Quintave, give this file the name "
                                "quintave.rec again and start Quintave.";

class RecoveryRefusals : public Recovery {
protected:
    void ExpectRefused(const std::string &reason, const std::string &kept = "quintave-kept1.rec",
                       const std::string &wayBack = WayBack) {
        ExpectOneMessage(MessageTitle,
                         reason +
                             "\r\n\r\nYour unsaved entries are NOT being loaded into Quintave!\r\n\r\n"
                             "They are kept in the file " +
                             folder.Path() + kept + "." + wayBack,
                         CriticalIcon);
        EXPECT_FALSE(folder.Has(KeptName));
        EXPECT_TRUE(folder.Has(kept));
        ExpectCleanStart();
    }

    // Items as a whole file with the checksum it should have.
    void WriteItems(const std::string &items) {
        ResourceDir = folder.Path();
        RecoveryWriter file;
        file.Write(items);
        file.Close();
    }
};

} // namespace

TEST_F(RecoveryRefusals, ADamagedFileIsRefusedWholeAndKeptAside) {
    CrashWithATitle();
    std::string bytes = folder.Read(KeptName);
    bytes[bytes.size() / 2] ^= 1;
    folder.Write(KeptName, bytes);
    folder.Write("quintave-kept1.rec", "earlier");
    fs::create_symlink("nowhere", folder.Path() + "quintave-kept2.rec");
    StartUp();
    ExpectRefused("The file with the unsaved entries of your last session is damaged!", "quintave-kept3.rec", "");
    EXPECT_EQ(folder.Read("quintave-kept1.rec"), "earlier");
    EXPECT_TRUE(fs::is_symlink(folder.Path() + "quintave-kept2.rec"));
    EXPECT_EQ(folder.Read("quintave-kept3.rec"), bytes);
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Lakes");
    TenSecondsPass();
    EXPECT_TRUE(folder.Has(KeptName));
}

TEST_F(RecoveryRefusals, EveryDamageIsFound) {
    CrashWithATitle();
    ResourceDir = folder.Path();
    const std::string whole = folder.Read(KeptName);
    std::string bytes;
    std::vector<RecoveryItem> items;
    ASSERT_TRUE(ReadRecoveryFile(bytes, items));
    int tried = 0;
    const auto expectDamaged = [&](const std::string &damaged) {
        ++tried;
        folder.Write(KeptName, damaged);
        items.clear();
        EXPECT_FALSE(ReadRecoveryFile(bytes, items));
    };
    for (std::size_t length = 0; length < whole.size(); ++length) expectDamaged(whole.substr(0, length));
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const char bit : {'\x01', '\x80'}) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ bit);
            expectDamaged(damaged);
        }
    for (std::size_t at = 0; at + 16 < whole.size(); at += 8) { // blocks of a disk that changed their places
        std::string damaged = whole;
        std::swap_ranges(damaged.begin() + static_cast<long>(at), damaged.begin() + static_cast<long>(at + 8),
                         damaged.begin() + static_cast<long>(at + 8));
        if (damaged != whole) expectDamaged(damaged);
    }
    expectDamaged(whole + '\n');
    expectDamaged(std::string(whole.size(), '\0'));
    std::printf("%d damaged files\n", tried);
}

TEST_F(RecoveryRefusals, ATemplateThatIsGoneIsTold) {
    fs::create_directory(folder.Path() + "more");
    folder.Write("more/wide.ftf", TemplateText({R"(1,30,"TEXT","Width","","")"}));
    Crash([this] {
        Dialogs.Texts = {folder.Path() + "more/wide.ftf"};
        Press(Quintave.CommandTemplate);
        Enter(0, "9 m");
        TenSecondsPass();
    });
    fs::remove(folder.Path() + "more/wide.ftf");
    Dialogs.Answers = {YesAnswer};
    StartUp();
    ASSERT_EQ(MessageCount(), 2U);
    Dialogs.Messages.erase(Dialogs.Messages.begin());
    ExpectRefused("The Fields Template File wide.ftf of the unsaved entries of your last session was not found!");
}

TEST_F(RecoveryRefusals, ATemplateThatHasChangedIsTold) {
    CrashWithATitle();
    std::vector<std::string> changed = Fields;
    std::swap(changed[0], changed[6]);
    folder.Write("SITE.FTF", TemplateText(changed));
    Dialogs.Answers = {YesAnswer};
    StartUp();
    ASSERT_EQ(MessageCount(), 2U);
    Dialogs.Messages.erase(Dialogs.Messages.begin());
    ExpectRefused(
        "The Fields Template File SITE.FTF of the unsaved entries of your last session has changed since then!");
}

TEST_F(RecoveryRefusals, TheWayBackThatIsToldLeadsBack) {
    CrashWithATitle();
    fs::rename(folder.Path() + "SITE.FTF", folder.Path() + "away");
    Dialogs.Answers = {YesAnswer};
    StartUp();
    ASSERT_GE(MessageCount(), 2U);
    EndOnSignal();
    Dialogs.Messages.clear();
    fs::rename(folder.Path() + "away", folder.Path() + "SITE.FTF");
    fs::rename(folder.Path() + "quintave-kept1.rec", folder.Path() + KeptName);
    StartAnswering(YesAnswer);
    EXPECT_EQ(MessageCount(), 1U);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(RecoveryRefusals, OtherHelpTextsAndChoicesAreNoOtherTemplate) {
    CrashWithATitle();
    std::vector<std::string> changed = Fields;
    changed[0] = R"(1,30,"TEXT","Title","What it is called","help.txt")";
    changed[2] = "Crimson";
    folder.Write("SITE.FTF", TemplateText(changed));
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(RecoveryRefusals, ATemplateThatCannotBeLoadedIsTold) {
    CrashWithATitle();
    fs::remove(folder.Path() + "LST00002.XXX");
    fs::create_directory(folder.Path() + "LST00002.XXX");
    Dialogs.Answers = {YesAnswer};
    StartUp();
    ASSERT_GE(MessageCount(), 3U);
    EXPECT_EQ(Dialogs.Messages[2].Title, MessageTitle);
    EXPECT_EQ(Dialogs.Messages[2].Style, CriticalIcon);
    EXPECT_EQ(Dialogs.Messages[2].Text,
              "The Fields Template File SITE.FTF of the unsaved entries of your last session could not be "
              "loaded!\r\n\r\nYour unsaved entries are NOT being loaded into Quintave!\r\n\r\n"
              "They are kept in the file " +
                  folder.Path() + "quintave-kept1.rec." + WayBack);
    EXPECT_TRUE(folder.Has("quintave-kept1.rec"));
    EXPECT_EQ(NumFields, 0); // the start without them fails in the same way
}

TEST_F(RecoveryRefusals, AGroupThatCannotBeWrittenIsToldAndNothingOfTheEntriesStays) {
    Crash([] {
        Enter(TitleRow, "Wells");
        Open(GroupRow);
        for (int i = 0; i < 500; ++i) Press(Quintave.FldChange[Next]);
        TenSecondsPass();
    });
    Dialogs.Answers = {YesAnswer};
    {
        const FileSizeLimit limit(4096);
        StartUp();
    }
    ASSERT_EQ(MessageCount(), 2U);
    Dialogs.Messages.erase(Dialogs.Messages.begin());
    ExpectRefused("Error: 61 - Disk full\r\nError bringing back the unsaved entries of your last session! (full drive? "
                  "file locked? wrong privileges?).");
}

TEST_F(RecoveryRefusals, AFileThatCannotBeReadIsTold) {
    CrashWithATitle();
    ASSERT_TRUE(LoadMainWindow({}));
    rlimit former{};
    getrlimit(RLIMIT_NOFILE, &former);
    const int next = dup(STDERR_FILENO);
    close(next);
    const rlimit noMore{static_cast<rlim_t>(next), former.rlim_max};
    setrlimit(RLIMIT_NOFILE, &noMore);
    ActivateMainWindow(); // it cannot read its template either
    setrlimit(RLIMIT_NOFILE, &former);
    ASSERT_FALSE(Dialogs.Messages.empty());
    EXPECT_EQ(
        Dialogs.Messages[0].Text,
        "Error: 67 - Too many files\r\nError bringing back the unsaved entries of your last session! (full drive? "
        "file locked? wrong privileges?).\r\n\r\nYour unsaved entries are NOT being loaded into Quintave!\r\n\r\n"
        "They are kept in the file " +
            folder.Path() + "quintave-kept1.rec." + WayBack);
    EXPECT_TRUE(folder.Has("quintave-kept1.rec"));
}

TEST_F(RecoveryRefusals, AnotherUsersFileStaysWhereItIs) {
    CrashWithATitle();
    const std::string kept = folder.Read(KeptName);
    const AsNobody nobody(folder);
    fs::permissions(folder.Path() + KeptName, fs::perms::none);
    StartUp();
    ExpectOneMessage(
        MessageTitle,
        "Error: 70 - Permission denied\r\nError bringing back the unsaved entries of your last session! "
        "(full drive? file locked? wrong privileges?).\r\n\r\nYour unsaved entries are NOT being loaded into "
        "Quintave!\r\n\r\nThey are kept in the file " +
            folder.Path() + "quintave.rec.",
        CriticalIcon);
    ExpectCleanStart();
    Press(Quintave.LogoOff);
    Enter(TitleRow, "Lakes");
    TenSecondsPass();
    EndOnSignal();
    fs::permissions(folder.Path() + KeptName, fs::perms::owner_read);
    EXPECT_EQ(folder.Read(KeptName), kept);
    EXPECT_FALSE(folder.Has("quintave-kept1.rec"));
}

// A whole file of items that nobody would have written.
TEST_F(RecoveryRefusals, ItemsWithoutAPlaceAreRefused) {
    CrashWithATitle();
    ResourceDir = folder.Path();
    std::string bytes;
    std::vector<RecoveryItem> items;
    ASSERT_TRUE(ReadRecoveryFile(bytes, items));
    std::string good;
    for (const RecoveryItem &item : items) AddItem(good, item.Kind, item.Number, item.Bytes);
    const auto with = [&](const std::string &kind, Integer number, const std::string &text) {
        std::string all = good;
        AddItem(all, kind, number, text);
        return all;
    };
    const std::vector<std::string> bad{
        with("value", -1, "a"),
        with("value", 6, "a"),
        with("value", 32767, "a"),
        with("value", 3, "a"), // a section
        with("value", GroupRow, "a"),
        with("choice", 0, "1"),
        with("choice", 1, "1"),
        with("choice", 10, "1"),
        with("choice", -32768, "1"),
        with("choice", ColourElement, "-2"),
        with("choice", GroupElement, "-1"),
        with("group", 1, "1234567890"),
        with("group", GroupElement, ""),
        with("group", GroupElement, "123456789"),
        with("group", GroupElement, std::string(327680, ' ')),
        with("group", -5, "1234567890"),
        with("open", GroupElement, "123456789"),
        with("open", 8, "1234567890"),
        with("choice", GroupElement, "1") + "open 5 10\n1234567890\n", // right behind the last occurrence
        with("choice", GroupElement, "7") + "open 5 10\n1234567890\n",
        with("report", 0, ".profile"),
    };
    for (std::size_t number = 0; number < bad.size(); ++number) {
        SCOPED_TRACE(number);
        WriteItems(bad[number]);
        Dialogs.Answers = {YesAnswer};
        StartUp();
        ASSERT_EQ(MessageCount(), 2U);
        EXPECT_EQ(Dialogs.Messages[1].Title, MessageTitle);
        Dialogs.Messages.clear();
        EXPECT_TRUE(folder.Has("quintave-kept" + std::to_string(number + 1) + ".rec"));
        ExpectCleanStart();
        UnlockDirectory();
    }
    WriteItems(good);
    StartAnswering(YesAnswer);
    EXPECT_EQ(RowValue[TitleRow], "Wells");
}

TEST_F(RecoveryRefusals, WholeFilesOfNonsenseItemsAreDamaged) {
    ResourceDir = folder.Path();
    std::string bytes;
    for (const char *text : {"x", "value 0", "value 0 5", "value 0 5\n", "value 0 5\nabc", "value 0 1\nab", " \n",
                             "value 99999 1\na\n", "value 0 -1\na\n", "value 0 99999999999999999999\na\n",
                             "value 0 18446744073709551615\na\n", "value x 1\na\n"}) {
        WriteItems(text);
        std::vector<RecoveryItem> items;
        EXPECT_FALSE(ReadRecoveryFile(bytes, items)) << text;
    }
}
