// The user's own resource directory: filled once from the installed one, file by file.
#include "main/user_resources.h"

#include "main/start_up.h"
#include "platform/files.h"
#include "support/file_limit.h"
#include "support/messages.h"
#include "support/screen_test.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

class UserResourcesTest : public ScreenTest {
protected:
    UserResourcesTest() {
        setenv("XDG_DATA_HOME", (folder.Path() + "data").c_str(), 1);
        fs::create_directory(folder.Path() + "installed");
        Install("quintave.tbl", "\"\",\"SITE.FTF\",\"-1\"\r\n");
        Install("SITE.FTF", TemplateText({R"(1,30,"TEXT","Title","","")"}));
        Install("SITE.HLP", "Help");
    }

    void Install(const std::string &name, const std::string &bytes) const { folder.Write("installed/" + name, bytes); }

    std::string Fill() const { return UserResources(folder.Path() + "installed/"); }

    std::string Own(const std::string &name) const { return folder.Path() + "data/quintave/" + name; }

    std::string OwnText(const std::string &name) const { return folder.Read("data/quintave/" + name); }

    std::vector<std::string> OwnNames() const { return MatchingNames(Own(""), "[!.]*"); }

    void ExpectToldOf(const std::string &error) const {
        ASSERT_THAT(Dialogs.Messages, SizeIs(1));
        EXPECT_EQ(Dialogs.Messages[0].Title, "Quintave");
        EXPECT_EQ(Dialogs.Messages[0].Style, CriticalIcon);
        EXPECT_EQ(Dialogs.Messages[0].Text,
                  "Error: " + error + "\r\nError filling your own resource directory (" + Own("") +
                      ") from the installed one (" + folder.Path() +
                      "installed/)! (not installed? read only file or drive? full drive? wrong privileges?). Correct "
                      "the problem and try again.");
    }
};

} // namespace

TEST_F(UserResourcesTest, IsMadeForTheUserAloneAndFilled) {
    EXPECT_EQ(Fill(), Own(""));
    EXPECT_THAT(OwnNames(), ElementsAre("SITE.FTF", "SITE.HLP", "quintave.tbl"));
    EXPECT_EQ(OwnText("SITE.HLP"), "Help");
    EXPECT_EQ(fs::status(Own("")).permissions(), fs::perms::owner_all);
    EXPECT_FALSE(NameTaken(Own(".unfinished")));
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(UserResourcesTest, WhatTheUserChangedOrDeletedStaysSo) {
    Fill();
    folder.Write("data/quintave/SITE.FTF", "changed");
    fs::remove(Own("SITE.HLP"));
    Install("SITE.FTF", "of a later version");
    Fill();
    EXPECT_EQ(OwnText("SITE.FTF"), "changed");
    EXPECT_THAT(OwnNames(), ElementsAre("SITE.FTF", "quintave.tbl"));
}

TEST_F(UserResourcesTest, WhatALaterVersionBringsComesToo) {
    Fill();
    Install("NEW.FTF", "new");
    folder.Write("data/quintave/OTHER.FTF", "the user's");
    Install("OTHER.FTF", "new, and of the same name");
    Fill();
    EXPECT_EQ(OwnText("NEW.FTF"), "new");
    EXPECT_EQ(OwnText("OTHER.FTF"), "the user's");
    fs::remove(Own("OTHER.FTF")); // now deleted, and so it stays
    Fill();
    EXPECT_THAT(OwnNames(), ElementsAre("NEW.FTF", "SITE.FTF", "SITE.HLP", "quintave.tbl"));
}

TEST_F(UserResourcesTest, AHalfFilledDirectoryIsCompleted) {
    fs::create_directories(Own(""));
    folder.Write("data/quintave/SITE.FTF", "there already");
    folder.Write("data/quintave/.unfinished", "He"); // the power went while SITE.HLP was copied
    Fill();
    EXPECT_EQ(OwnText("SITE.FTF"), "there already");
    EXPECT_EQ(OwnText("SITE.HLP"), "Help");
    EXPECT_THAT(OwnNames(), ElementsAre("SITE.FTF", "SITE.HLP", "quintave.tbl"));
    EXPECT_FALSE(NameTaken(Own(".unfinished")));
}

TEST_F(UserResourcesTest, AFullDiskIsToldAndTheNextRunCompletes) {
    Install("BIG.HLP", std::string(5000, 'b'));
    {
        const FileSizeLimit limit(1000);
        Fill();
    }
    ExpectToldOf("61 - Disk full");
    EXPECT_THAT(OwnNames(), IsEmpty()); // none with a part of its bytes
    Fill();
    EXPECT_EQ(OwnText("BIG.HLP"), std::string(5000, 'b'));
    EXPECT_THAT(OwnNames(), SizeIs(4));
    EXPECT_THAT(Dialogs.Messages, SizeIs(1));
}

TEST_F(UserResourcesTest, LinksAreNeitherWrittenThroughNorReplaced) {
    fs::create_directories(Own(""));
    folder.Write("outside", "not to be touched");
    fs::create_symlink(folder.Path() + "outside", Own("SITE.FTF"));
    fs::create_symlink(folder.Path() + "nowhere", Own("SITE.HLP"));
    Fill();
    EXPECT_EQ(folder.Read("outside"), "not to be touched");
    EXPECT_FALSE(folder.Has("nowhere"));
    EXPECT_TRUE(fs::is_symlink(Own("SITE.FTF")));
    EXPECT_TRUE(fs::is_symlink(Own("SITE.HLP")));
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(UserResourcesTest, ALinkInThePlaceOfTheUnfinishedFileLeadsNowhere) {
    fs::create_directories(Own(""));
    folder.Write("outside", "not to be touched");
    fs::create_symlink(folder.Path() + "outside", Own(".unfinished"));
    Fill();
    EXPECT_EQ(folder.Read("outside"), "not to be touched");
    EXPECT_THAT(Dialogs.Messages, testing::IsEmpty());
    EXPECT_FALSE(fs::is_symlink(Own(".unfinished")));
}

TEST_F(UserResourcesTest, ADataHomeThatTakesNothingIsTold) {
    folder.Write("data", "a file");
    Fill();
    ExpectToldOf("58 - File already exists");
}

TEST_F(UserResourcesTest, ResourcesThatAreNotInstalledAreTold) {
    fs::remove_all(folder.Path() + "installed");
    Fill();
    ExpectToldOf("53 - File not found");
}

TEST_F(UserResourcesTest, AFilledDirectoryNeedsNoInstalledOneAndNoWriting) {
    Fill();
    const auto before = fs::last_write_time(Own(""));
    Fill();
    EXPECT_EQ(fs::last_write_time(Own("")), before);
    fs::remove_all(folder.Path() + "installed");
    Fill();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(UserResourcesTest, StandsBelowTheHomeWhereTheDesktopNamesNoAbsolutePath) {
    setenv("HOME", folder.Path().c_str(), 1);
    setenv("XDG_DATA_HOME", "data", 1);
    EXPECT_EQ(Fill(), folder.Path() + ".local/share/quintave/");
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(Fill(), folder.Path() + ".local/share/quintave/");
    unsetenv("HOME");
    EXPECT_EQ(Fill(), "");
    EXPECT_THAT(LastMessage().Text, HasSubstr("76 - Path not found"));
}

TEST_F(UserResourcesTest, IsWorkedInByTheProgramThatFilledIt) {
    EXPECT_TRUE(LoadMainWindow({.Resources = "", .Report = "", .Installed = folder.Path() + "installed"}));
    EXPECT_EQ(ResourceDir, Own(""));
    EXPECT_EQ(ReportFileDir, CurrentDirectory());
    ActivateMainWindow();
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(" Title                     | "));
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(UserResourcesTest, InUseByAnotherProgramIsLeftAloneAndAskedAbout) {
    Fill();
    Install("NEW.FTF", "new");
    const int other = open(Own("").c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    Dialogs.Answers = {NoAnswer};
    EXPECT_FALSE(LoadMainWindow({.Resources = "", .Report = "", .Installed = folder.Path() + "installed"}));
    ASSERT_THAT(Dialogs.Messages, SizeIs(1));
    EXPECT_THAT(Dialogs.Messages[0].Text, HasSubstr("Another Quintave is working"));
    EXPECT_FALSE(NameTaken(Own("NEW.FTF")));
    close(other);
}

TEST_F(UserResourcesTest, AnotherProgramThatJustFillsItIsWaitedFor) {
    fs::create_directories(Own(""));
    const int other = open(Own("").c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
    std::thread filling([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        folder.Write("data/quintave/quintave.tbl", "its table");
    });
    Fill();
    EXPECT_EQ(OwnNames(), std::vector<std::string>{"quintave.tbl"});
    filling.join();
    EXPECT_EQ(OwnText("quintave.tbl"), "its table");
    close(other);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(UserResourcesTest, AfterAFailureTheDirectoryIsAskedFor) {
    folder.Write("data", "a file");
    Dialogs.Answers = {OkAnswer};
    Dialogs.Texts = {folder.Path() + "installed"};
    EXPECT_TRUE(LoadMainWindow({.Resources = "", .Report = "", .Installed = folder.Path() + "installed"}));
    EXPECT_THAT(Dialogs.Asked, SizeIs(1));
    EXPECT_EQ(ResourceDir, folder.Path() + "installed/");
}
