// Start-up: the resource directory, the resource table, the start-up frame and the first activation.
#include "main/start_up.h"

#include "help/help_window.h"
#include "main/session.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/hand_over.h"
#include "support/messages.h"
#include "support/screen_test.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <poll.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
namespace fs = std::filesystem;

constexpr const char *OneField = R"(1,30,"TEXT","Title","","")";
constexpr const char *OneRecord = "\"\",\"site.ftf\",\"-1\"\r\n";
constexpr const char *BadDirectory = "BAD DRIVE/DIRECTORY INFORMATION!";

// What happens between finding the table and reading it, where a test wants something to; null for nothing.
void (*BeforeLock)() = nullptr;

std::string NotFound(const std::string &directory) {
    return "WARNING! Quintave resources were not found in the directory you specified (" + directory +
           ").  The Quintave.Tbl file must be loaded!  Try Again?";
}

std::string Working(const std::string &directory) {
    return "WARNING! Another Quintave is working in the directory you specified (" + directory +
           ").  Each needs a resource directory of its own!  Try Again?";
}

class StartUpTest : public ScreenTest {
protected:
    // Another directory with resources, ending in "/".
    std::string Resources(const std::string &name) const {
        fs::create_directory(folder.Path() + name);
        folder.Write(name + "/quintave.tbl", OneRecord);
        folder.Write(name + "/SITE.FTF", TemplateText({OneField}));
        return folder.Path() + name + "/";
    }

    void ExpectLocked(const std::string &directory, bool locked) const {
        const int handle = open(directory.c_str(), O_RDONLY | O_DIRECTORY);
        EXPECT_EQ(flock(handle, LOCK_EX | LOCK_NB) != 0, locked);
        close(handle);
    }
};

// Another program's lock on a directory.
class ForeignLock {
public:
    explicit ForeignLock(const std::string &directory) : handle(open(directory.c_str(), O_RDONLY | O_DIRECTORY)) {
        EXPECT_EQ(flock(handle, LOCK_EX | LOCK_NB), 0);
    }
    ~ForeignLock() { close(handle); }
    ForeignLock(const ForeignLock &) = delete;
    ForeignLock &operator=(const ForeignLock &) = delete;

private:
    int handle;
};

void ExpectMessage(std::size_t number, const std::string &text) {
    ASSERT_GT(Dialogs.Messages.size(), number);
    EXPECT_EQ(Dialogs.Messages[number].Title, BadDirectory);
    EXPECT_EQ(Dialogs.Messages[number].Text, text);
    EXPECT_EQ(Dialogs.Messages[number].Style, YesNo + CriticalIcon);
}

} // namespace

// In the place of the system's own, so that a test can act while the program takes its lock.
extern "C" int flock(int handle, int operation) noexcept {
    if (BeforeLock != nullptr) BeforeLock();
    return static_cast<int>(syscall(SYS_flock, handle, operation));
}

// --- Resource directory
// -------------------------------------------------------------------------------------------------

TEST_F(StartUpTest, ATableInTheCurrentDirectoryIsUsedWithoutAQuestion) {
    folder.Write("quintave.tbl", OneRecord);
    EXPECT_TRUE(LoadMainWindow({}));
    EXPECT_EQ(ResourceDir, CurrentDirectory());
    EXPECT_EQ(ReportFileDir, CurrentDirectory());
    EXPECT_EQ(Quintave.Dir1.Tag, CurrentDirectory());
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(StartUpTest, WithoutOneTheDirectoryIsAskedFor) {
    const std::string resources = Resources("res");
    Dialogs.Texts = {resources};
    EXPECT_TRUE(LoadMainWindow({}));
    ASSERT_THAT(Dialogs.Asked, SizeIs(1));
    EXPECT_EQ(Dialogs.Asked[0].Title, "Quintave.Tbl Location?");
    EXPECT_EQ(Dialogs.Asked[0].Text, "What is the Resource Directory for Quintave?\r\n\r\n(i.e., where is Quintave.Tbl "
                                     "located?)\r\n\r\n(e.g., 'd:\\quintave\\')");
    EXPECT_EQ(Dialogs.Asked[0].Proposal, CurrentDirectory());
    EXPECT_EQ(ResourceDir, resources);
    EXPECT_EQ(ReportFileDir, CurrentDirectory());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(StartUpTest, AnAnswerWithoutASeparatorIsCompleted) {
    const std::string resources = Resources("res");
    Dialogs.Texts = {folder.Path() + "res"};
    EXPECT_TRUE(LoadMainWindow({}));
    EXPECT_EQ(ResourceDir, resources);
}

TEST_F(StartUpTest, ABackslashEndsADirectoryToo) {
    const std::string resources = Resources("res");
    Dialogs.Texts = {folder.Path() + "res\\"};
    EXPECT_TRUE(LoadMainWindow({}));
    EXPECT_EQ(ResourceDir, resources);
}

TEST_F(StartUpTest, AnEmptyAnswerFailsAndNoEndsTheProgram) {
    Dialogs.Texts = {""};
    Dialogs.Answers = {NoAnswer};
    EXPECT_FALSE(LoadMainWindow({}));
    ASSERT_THAT(Dialogs.Messages, SizeIs(1));
    ExpectMessage(0, NotFound("/"));
    EXPECT_THAT(Dialogs.Asked, SizeIs(1));
}

TEST_F(StartUpTest, YesAsksAgainUntilTheTableIsFound) {
    const std::string resources = Resources("res");
    Dialogs.Texts = {"/nowhere", "", resources};
    Dialogs.Answers = {YesAnswer, YesAnswer};
    EXPECT_TRUE(LoadMainWindow({}));
    ASSERT_THAT(Dialogs.Messages, SizeIs(2));
    ExpectMessage(0, NotFound("/nowhere/"));
    ExpectMessage(1, NotFound("/"));
    EXPECT_THAT(Dialogs.Asked, SizeIs(3));
    EXPECT_EQ(ResourceDir, resources);
}

TEST_F(StartUpTest, ATableThatIsADirectoryOrUnreadableIsNotThere) {
    fs::create_directory(folder.Path() + "quintave.tbl");
    fs::create_directory(folder.Path() + "b");
    fs::create_symlink("/proc/self/mem", folder.Path() + "b/quintave.tbl"); // reading it fails
    Dialogs.Texts = {folder.Path() + "b"};
    Dialogs.Answers = {NoAnswer};
    EXPECT_FALSE(LoadMainWindow({}));
    ASSERT_THAT(Dialogs.Messages, SizeIs(1));
    ExpectMessage(0, NotFound(folder.Path() + "b/"));
}

TEST_F(StartUpTest, TheArgumentTakesTheCurrentDirectorysPlace) {
    folder.Write("quintave.tbl", OneRecord);
    const std::string resources = Resources("res");
    EXPECT_TRUE(LoadMainWindow({.Resources = folder.Path() + "res", .Report = ""}));
    EXPECT_EQ(ResourceDir, resources);
    EXPECT_EQ(ReportFileDir, CurrentDirectory());
}

// --- Lock
// ---------------------------------------------------------------------------------------------------------------

TEST_F(StartUpTest, TheResourceDirectoryIsLocked) {
    folder.Write("quintave.tbl", OneRecord);
    EXPECT_TRUE(LoadMainWindow({}));
    ExpectLocked(folder.Path(), true);
}

TEST_F(StartUpTest, ADirectoryInUseIsRefusedAndLeftUntouched) {
    folder.Write("quintave.tbl", OneRecord);
    folder.Write("LST00001.XXX", "another's");
    const ForeignLock other(folder.Path());
    Dialogs.Answers = {NoAnswer};
    EXPECT_FALSE(LoadMainWindow({}));
    ASSERT_THAT(Dialogs.Messages, SizeIs(1));
    ExpectMessage(0, Working(CurrentDirectory()));
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
    EXPECT_EQ(folder.Read("LST00001.XXX"), "another's");
}

namespace {

// What the program at work on the directory is asked for while another one starts there; none where that is in vain.
std::optional<Request> AskedFor(const std::string &directory, const StartArguments &arguments) {
    const ForeignLock atWork(directory);
    const int listener = ListenForRequests(directory);
    bool goesOn = true;
    std::optional<Request> request;
    std::thread other([&] {
        pollfd arrival{listener, POLLIN, 0};
        if (poll(&arrival, 1, 5000) == 1) request = TakeRequest(listener);
    });
    goesOn = LoadMainWindow(arguments);
    other.join();
    EXPECT_FALSE(goesOn);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    StopListening();
    return request;
}

} // namespace

TEST_F(StartUpTest, ADirectoryThatTheUserWorksInTakesTheReportOver) {
    folder.Write("quintave.tbl", OneRecord);
    const auto relative = AskedFor(folder.Path(), {.Resources = "", .Report = "sub/a.rpx"});
    ASSERT_TRUE(relative);
    EXPECT_EQ(relative->Report, CurrentDirectory() + "sub/a.rpx");
    const auto absolute = AskedFor(folder.Path(), {.Resources = "", .Report = "/sub/a.rpx"});
    ASSERT_TRUE(absolute);
    EXPECT_EQ(absolute->Report, "/sub/a.rpx");
}

TEST_F(StartUpTest, WithoutAReportTheProgramAtWorkIsAskedToComeToTheFront) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"mine.rpx\"\r\n"); // the table's was not given to this program
    for (const std::string report : {"", "a.txt"}) {
        const auto request = AskedFor(folder.Path(), {.Resources = "", .Report = report});
        ASSERT_TRUE(request) << report;
        EXPECT_EQ(request->Report, "") << report;
    }
}

TEST_F(StartUpTest, AProgramThatEndsMeanwhileLeavesTheDirectoryToTheNext) {
    folder.Write("quintave.tbl", OneRecord);
    auto ending = std::make_unique<ForeignLock>(folder.Path());
    ListenForRequests(folder.Path());
    std::thread end([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        StopListening();
        ending.reset();
    });
    EXPECT_TRUE(LoadMainWindow({.Resources = "", .Report = "a.rpx"}));
    end.join();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ExpectLocked(folder.Path(), true);
}

TEST_F(StartUpTest, AProgramThatHasJustStartedIsWaitedFor) {
    folder.Write("quintave.tbl", OneRecord);
    const ForeignLock starting(folder.Path());
    std::optional<Request> request;
    std::thread start([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(40));
        const int listener = ListenForRequests(folder.Path());
        pollfd arrival{listener, POLLIN, 0};
        if (poll(&arrival, 1, 5000) == 1) request = TakeRequest(listener);
    });
    EXPECT_FALSE(LoadMainWindow({.Resources = "", .Report = "/a.rpx"}));
    start.join();
    StopListening();
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    ASSERT_TRUE(request);
    EXPECT_EQ(request->Report, "/a.rpx");
}

TEST_F(StartUpTest, YesAsksForAnotherDirectory) {
    folder.Write("quintave.tbl", OneRecord);
    const std::string resources = Resources("res");
    const ForeignLock other(folder.Path());
    Dialogs.Answers = {YesAnswer, YesAnswer};
    Dialogs.Texts = {"/nowhere", resources};
    EXPECT_TRUE(LoadMainWindow({}));
    ExpectMessage(0, Working(CurrentDirectory()));
    ExpectMessage(1, NotFound("/nowhere/"));
    ASSERT_THAT(Dialogs.Asked, SizeIs(2));
    EXPECT_EQ(Dialogs.Asked[0].Title, "Quintave.Tbl Location?");
    EXPECT_EQ(ResourceDir, resources);
    ExpectLocked(resources, true);
}

// --- Resource table
// -----------------------------------------------------------------------------------------------------

TEST_F(StartUpTest, TheTemplateIsFoundWhateverItsLetterCase) {
    folder.Write("quintave.tbl", "\"\",\" Site.ftf \",\"-1\"\r\n");
    folder.Write("sITE.fTF", TemplateText({OneField}));
    StartUp();
    EXPECT_EQ(TemplateName, "SITE.FTF");
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre(" Title                     | "));
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): ");
}

TEST_F(StartUpTest, TheColourGoesToTheFramesAndTheSectionPath) {
    struct {
        const char *Record;
        Colour Expected;
    } constexpr Cases[] = {{" color ,255", 255}, {"other,255", 0x8000}};
    for (const auto &[record, expected] : Cases) {
        folder.Write("quintave.tbl", std::string(OneRecord) + record + "\r\n");
        EXPECT_TRUE(LoadMainWindow({}));
        for (const Control *c : {&Quintave.editframe, &Quintave.SectionLabel, &Quintave.MultiInstanceFrame})
            EXPECT_EQ(c->BackColor, expected) << c->Name;
        EXPECT_EQ(Quintave.List1[0].BackColor, LightGrey);
        UnlockDirectory();
    }
}

TEST_F(StartUpTest, WithoutASecondRecordTheDesignedColoursStay) {
    folder.Write("quintave.tbl", OneRecord);
    EXPECT_TRUE(LoadMainWindow({}));
    for (const Control *c : {&Quintave.editframe, &Quintave.SectionLabel, &Quintave.MultiInstanceFrame})
        EXPECT_EQ(c->BackColor, DesignColour) << c->Name;
}

TEST_F(StartUpTest, AnEmptyTableIsValid) {
    folder.Write("quintave.tbl", "");
    StartUp();
    EXPECT_EQ(Quintave.editframe.Caption,
              "[No Fields Template Loaded -- Click on 'Field Template' to Load a Template!]");
    EXPECT_EQ(StartFile, "-1");
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_THAT(Dialogs.Asked, IsEmpty());
}

// --- Start-up frame
// -----------------------------------------------------------------------------------------------------

TEST_F(StartUpTest, TheStartUpFrameIsShownFirst) {
    folder.Write("quintave.tbl", OneRecord);
    folder.Write("SITE.FTF", TemplateText({OneField}));
    StartUp();
    EXPECT_TRUE(Quintave.Frame5.Visible);
    EXPECT_FALSE(Quintave.editframe.Visible);
    EXPECT_FALSE(Quintave.PrintFrame.Visible);
    EXPECT_TRUE(Quintave.List1[0].Visible);
    EXPECT_FALSE(Quintave.List1[3].Visible);
    EXPECT_EQ(ActiveList, 0);
    EXPECT_EQ(FileMark, "FirstLoad");
    EXPECT_EQ(Focused(), nullptr);
}

TEST_F(StartUpTest, NoHelpWindowIsOpen) {
    Start({OneField});
    EXPECT_FALSE(Help.HelpForm.Visible);
    EXPECT_EQ(Quintave.helpline.Tag, "0");
}

TEST_F(StartUpTest, ItTellsTodaysDateBetweenBlanks) {
    folder.Write("quintave.tbl", OneRecord);
    EXPECT_TRUE(LoadMainWindow({}));
    EXPECT_EQ(Quintave.DateLabel.Caption, " " + ShortDate() + " ");
}

TEST_F(StartUpTest, TheBannerTimerWritesItsLinesAndStops) {
    folder.Write("quintave.tbl", OneRecord);
    EXPECT_FALSE(Quintave.Timer1.Enabled);
    EXPECT_TRUE(LoadMainWindow({}));
    EXPECT_TRUE(Quintave.Timer1.Enabled);
    UserTicks(Quintave.Timer1);
    EXPECT_EQ(Quintave.Label1.Caption, "Quintave");
    EXPECT_EQ(Quintave.Label6.Caption, "Version 2.0");
    EXPECT_FALSE(Quintave.Timer1.Enabled);
}

TEST_F(StartUpTest, UseQuintaveShowsTheFieldList) {
    Start({OneField});
    EXPECT_FALSE(Quintave.Frame5.Visible);
    EXPECT_TRUE(Quintave.editframe.Visible);
    EXPECT_FALSE(Quintave.TableFrame.Visible);
    EXPECT_EQ(Focused(), &Quintave.List1[0]);
}

TEST_F(StartUpTest, QuitThereEndsTheProgramWithoutAQuestion) {
    folder.Write("quintave.tbl", OneRecord);
    folder.Write("SITE.FTF", TemplateText({R"(1,30,"LIST","L","","")", "x", "XXX-1XXX"}));
    StartUp();
    folder.Write("!quin!02.$$$", "");
    folder.Write("grp00007.xxx", "");
    DataChanged = True;
    Press(Quintave.LogoQuit);
    EXPECT_TRUE(ProgramEnded());
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    for (const std::string name : {"LST00001.XXX", "grp00007.xxx", "!quin!02.$$$"}) EXPECT_FALSE(folder.Has(name));
    EXPECT_TRUE(folder.Has("SITE.FTF"));
    EXPECT_TRUE(folder.Has("quintave.tbl"));
    ExpectLocked(folder.Path(), false);
}

TEST_F(StartUpTest, ThePrintListsHoldTheirChoices) {
    folder.Write("quintave.tbl", OneRecord);
    EXPECT_TRUE(LoadMainWindow({}));
    EXPECT_THAT(Quintave.Combo1.Rows, ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9"));
    EXPECT_EQ(Quintave.Combo1.ListIndex, 0);
    EXPECT_THAT(Quintave.Combo2.Rows, ElementsAre("' '", "'| '", "': '", "'> '", "' - '", "' = '"));
    EXPECT_EQ(Quintave.Combo2.ListIndex, 1);
    EXPECT_EQ(Quintave.PrintIndent.Text, "");
}

// --- First activation
// ---------------------------------------------------------------------------------------------------

TEST_F(StartUpTest, TheTemplateIsLoadedOnceOnTheFirstActivation) {
    folder.Write("quintave.tbl", OneRecord);
    folder.Write("SITE.FTF", TemplateText({OneField}));
    EXPECT_TRUE(LoadMainWindow({}));
    EXPECT_EQ(LoadState, -2);
    EXPECT_THAT(Quintave.List1[0].Rows, IsEmpty());
    ActivateMainWindow();
    EXPECT_EQ(LoadState, 0);
    EXPECT_THAT(Quintave.List1[0].Rows, SizeIs(1));
    folder.Write("SITE.FTF", TemplateText({OneField, OneField}));
    ActivateMainWindow();
    EXPECT_THAT(Quintave.List1[0].Rows, SizeIs(1));
}

TEST_F(StartUpTest, ATableThatVanishesBeforeItIsReadLeavesTheProgramWithoutATemplate) {
    folder.Write("quintave.tbl", OneRecord);
    folder.Write("SITE.FTF", TemplateText({OneField}));
    BeforeLock = [] { fs::remove("quintave.tbl"); };
    StartUp();
    BeforeLock = nullptr;
    EXPECT_FALSE(folder.Has("quintave.tbl"));
    EXPECT_EQ(TemplateName, "");
    EXPECT_EQ(StartFile, "");
    EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
}

TEST_F(StartUpTest, TheTemplateThatTheTableNamesAsItIsWrittenIsLoadedBeforeAnyOther) {
    folder.Write("quintave.tbl", "\"\",\"Site.ftf\",\"-1\"\r\n");
    folder.Write("SITE.FTF", TemplateText({OneField, OneField}));
    folder.Write("site.ftf", TemplateText({OneField, OneField}));
    StartUp();
    EXPECT_THAT(Quintave.List1[0].Rows, SizeIs(2)); // of the name in capitals
    UnlockDirectory();
    folder.Write("Site.ftf", TemplateText({OneField}));
    StartUp();
    EXPECT_THAT(Quintave.List1[0].Rows, SizeIs(1));
    EXPECT_EQ(TemplateName, "Site.ftf"); // the name in capitals would mean the other one
}

TEST_F(StartUpTest, AFailedStartGivesOneMessageAndAWholeWindow) {
    for (const bool there : {true, false}) {
        folder.Write("quintave.tbl", OneRecord);
        if (there)
            folder.Write("SITE.FTF", TemplateText({OneField}));
        else
            fs::remove("SITE.FTF");
        ClearRows(Quintave.List1[0]);
        folder.Write("GRP00007.XXX", "left by a program that was killed");
        fs::create_directories(folder.Path() + "GRP00007.XXX.$$$/full"); // takes the place it would be moved to
        StartUp();
        ExpectWorkFileError("75 - Path/File access error");
        EXPECT_THAT(Quintave.List1[0].Rows, ElementsAre("NO DATA FIELDS"));
        EXPECT_EQ(Quintave.editframe.Caption,
                  "[No Fields Template Loaded -- Click on 'Field Template' to Load a Template!]");
        EXPECT_EQ(LoadState, 0);
        EXPECT_EQ(Quintave.List1[0].ListIndex, 0);
        UnlockDirectory();
    }
}

namespace {

class StartFileTest : public StartUpTest {
protected:
    void StartWith(const std::string &startItem, const StartArguments &arguments = {}) {
        folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"" + startItem + "\"\r\n");
        folder.Write("SITE.FTF", TemplateText({OneField}));
        ASSERT_TRUE(LoadMainWindow(arguments));
        ActivateMainWindow();
    }
};

} // namespace

TEST_F(StartFileTest, AReportNamedInTheTableIsLoadedFromTheResourceDirectory) {
    Start({OneField});
    Enter(0, "Wells");
    SaveAs("Mine.RPX");
    DataChanged = False;
    CloseMainWindow();
    ClearRows(Quintave.Combo1);
    ClearRows(Quintave.Combo2);
    StartWith(" MINE.rpx ");
    EXPECT_EQ(StartFile, "mine.rpx");
    EXPECT_EQ(RowValue[0], "Wells");
    EXPECT_EQ(Row(0), " Title                     | Wells");
    EXPECT_EQ(FileMark, "Mine.RPX");
    EXPECT_EQ(DataChanged, 0);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): Mine; ");
}

TEST_F(StartFileTest, AnyOtherTextIsIgnored) {
    for (const std::string item : {"", "-1", "mine.txt", "rp"}) {
        StartWith(item);
        EXPECT_EQ(StartFile, item);
        EXPECT_EQ(FileMark, "FirstLoad") << item;
        EXPECT_THAT(Dialogs.Messages, IsEmpty()) << item;
        UnlockDirectory();
    }
}

TEST_F(StartFileTest, AMissingReportIsTold) {
    StartWith("gone.rpx");
    ExpectOneMessage("ERROR LOADING gone.rpx",
                     "Error:  53 - File not found\r\n\r\n\r\nQuintave Data Fields may have been corrupted!\r\n\r\nYou "
                     "might want to `RESET' and start over!",
                     CriticalIcon);
    EXPECT_THAT(Quintave.List1[0].Rows, SizeIs(1));
}

TEST_F(StartFileTest, TheReportThatTheTableNamesAsItIsWrittenIsLoadedBeforeAnyOther) {
    Start({OneField});
    for (const std::string name : {"mine.rpx", "MINE.rpx", "Mine.rpx"}) {
        Enter(0, name.substr(0, 1));
        SaveAs(name);
    }
    CloseMainWindow();
    StartWith("Mine.rpx");
    EXPECT_EQ(FileMark, "Mine.rpx");
    UnlockDirectory();
    StartWith("MiNe.rpx");
    EXPECT_EQ(FileMark, "mine.rpx");
}

TEST_F(StartFileTest, TheProgramsArgumentTakesItsPlace) {
    Start({OneField});
    Enter(0, "argument");
    SaveAs("arg.rpx");
    Enter(0, "ed");
    SaveAs("table.rpx");
    CloseMainWindow();
    StartWith("table.rpx", {.Resources = "", .Report = "arg.rpx"});
    EXPECT_EQ(RowValue[0], "argument");
    EXPECT_EQ(FileMark, "arg.rpx");
}
