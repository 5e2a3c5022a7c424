// What the program leaves alone: work files are its owner's and nobody's link leads them elsewhere, deletion takes
// regular files of the resource directory, names in templates stay in the template's directory, and odd names work.
#include "reliability/trial.h"

#include "form/main_window.h"
#include "main/template_command.h"
#include "model/field_model.h"
#include "platform/console/answers.h"
#include "platform/files.h"
#include "support/user.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// Runs a session's steps in a process of its own; the steps return what is wrong, "" for nothing.
void ExpectWell(const Site &site, const std::function<std::string()> &steps) {
    EXPECT_EQ(InProcess([&] {
                  StartSession(site.Path());
                  return steps();
              }),
              "");
}

// All operations, one after the other, each from the state the one before has left.
void DoEverything() {
    for (const Operation &operation : Operations()) {
        if (std::string_view(operation.Name) == "quit") continue;
        if (Quintave.PrintFrame.Visible) Press(Quintave.PrintFrameCancel);
        if (Quintave.GrpExit.Visible) Press(Quintave.GrpExit);
        operation.Prepare();
        operation.Act();
    }
}

unsigned ModeOf(const std::string &path) {
    struct stat status {};
    constexpr unsigned Bits = 07777;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & Bits : 0;
}

std::string Joined(const std::vector<std::string> &parts) {
    std::string text;
    for (const auto &part : parts) text += part + "\n";
    return text;
}

// What somebody leaves under the name of a work file.
enum class Trap { Link, HardLink, BrokenLink, Pipe, OpenToAll };

void Lay(Trap trap, const std::string &path, const std::string &victim) {
    fs::remove(path);
    switch (trap) {
    case Trap::Link: return fs::create_symlink(victim, path);
    case Trap::HardLink: return fs::create_hard_link(victim, path);
    case Trap::BrokenLink: return fs::create_symlink(victim + "-new", path);
    case Trap::Pipe:
        if (mkfifo(path.c_str(), 0666) != 0) throw std::runtime_error("mkfifo");
        return;
    case Trap::OpenToAll: std::ofstream(path) << "old"; return fs::permissions(path, fs::perms(0666));
    }
}

class Traps : public testing::TestWithParam<std::tuple<Trap, const char *>> {};

} // namespace

TEST(HandsOff, WorkFilesAreTheirOwnersAloneWhateverTheUserAllows) {
    const Site site;
    ExpectWell(site, [&]() -> std::string {
        umask(0);
        std::string wrong;
        const auto calls = WatchCalls([] {
            OperationNamed("load a template").Act();
            OperationNamed("add").Act();
            DoubleClickRow(Quintave.List1[0], 1);
            Press(Quintave.TblFldInsert);
            Press(Quintave.GrpExit);
        });
        constexpr unsigned OwnersAlone = 0600;
        std::size_t seen = 0;
        for (const std::string pattern : {"*.XXX", "*.$$$"})
            for (const auto &name : MatchingNames(site.Path(), pattern)) {
                ++seen;
                if (ModeOf(site.Path() + name) != OwnersAlone) wrong += name + " ";
            }
        for (const MadeCall &call : calls) {
            const bool creates = call.Kind == FileCall::Open && (call.Flags & O_CREAT) != 0;
            if (creates && (call.Flags & (O_EXCL | O_NOFOLLOW)) != (O_EXCL | O_NOFOLLOW)) wrong += call.Path + " ";
        }
        return seen < 4 ? "too few work files" : wrong;
    });
}

TEST_P(Traps, AreTakenAwayAndNotWrittenInto) {
    const auto [trap, name] = GetParam();
    const Site site;
    fs::create_directory(site.Path() + "elsewhere");
    const std::string victim = site.Path() + "elsewhere/victim";
    site.Write("elsewhere/victim", "mine");
    ExpectWell(site, [&, trap = trap, name = name]() -> std::string {
        Lay(trap, site.Path() + name, victim);
        const auto calls = WatchCalls([&] {
            OperationNamed("save").Act();
            OperationNamed("insert an occurrence").Prepare();
            Press(Quintave.TblFldInsert);
            Press(Quintave.GrpExit);
            Lay(trap, site.Path() + name, victim);
            OperationNamed("add").Act();
            Lay(trap, site.Path() + name, victim);
            OperationNamed("load a template").Act();
        });
        return Joined(CallsOutside(calls, {site.Path()}));
    });
    EXPECT_EQ(site.Read("elsewhere/victim"), "mine");
    EXPECT_FALSE(site.Has("elsewhere/victim-new"));
}

INSTANTIATE_TEST_SUITE_P(HandsOff, Traps,
                         testing::Combine(testing::Values(Trap::Link, Trap::HardLink, Trap::BrokenLink, Trap::Pipe,
                                                          Trap::OpenToAll),
                                          testing::Values("GRP00005.$$$", "LST00003.$$$", "LST00001.$$$",
                                                          "LST00001.XXX", "!quin!02.$$$", "!quin!03.$$$", "a.rpx~")),
                         [](const auto &parameter) { return "Number" + std::to_string(parameter.index); });

TEST(HandsOff, DeletionTakesRegularFilesOfTheResourceDirectoryAlone) {
    const Site site;
    ExpectWell(site, [&]() -> std::string {
        fs::create_directory(site.Path() + "D.XXX");
        fs::create_directory(site.Path() + "sub");
        site.Write("sub/LST00001.XXX", "kept");
        site.Write("D.XXX/E.$$$", "kept");
        site.Write("kept.XXXX", "kept");
        site.Write("XXX", "kept");
        site.Write("gone.xxx", "old");
        fs::create_symlink(site.Path() + "SITE.FTF", site.Path() + "link.XXX");
        fs::create_directory_symlink(site.Path() + "sub", site.Path() + "sub.$$$");
        const auto calls = WatchCalls([] { OperationNamed("quit").Act(); });
        return Joined(CallsOutside(calls, {site.Path()}));
    });
    for (const char *const name :
         {"sub/LST00001.XXX", "D.XXX/E.$$$", "kept.XXXX", "XXX", "link.XXX", "sub.$$$/LST00001.XXX"})
        EXPECT_TRUE(site.Has(name)) << name;
    EXPECT_FALSE(site.Has("gone.xxx"));
}

TEST(HandsOff, ChoiceListsAndStoresAreDeletedBeforeTemporaryReports) {
    const Site site;
    ExpectWell(site, [&]() -> std::string {
        site.Write("!quin!02.$$$", "");
        site.Write("a.$$$", "");
        std::string kinds;
        for (const MadeCall &call : WatchCalls([] { OperationNamed("quit").Act(); }))
            if (call.Kind == FileCall::Unlink) kinds += call.Path.ends_with(".$$$") ? '$' : 'X';
        const bool inOrder = kinds.find("X$$") == kinds.size() - 3 && kinds.find('$') == kinds.size() - 2;
        return inOrder ? "" : "deleted in the order " + kinds;
    });
}

TEST(HandsOff, NamesInATemplateStayInItsDirectory) {
    const std::vector<std::string> outside{"../secret.hlp",
                                           "..\\secret.hlp",
                                           "/etc/passwd",
                                           "C:\\secret.hlp",
                                           "C:secret.hlp",
                                           "sub/inner.hlp",
                                           "./QUINTAVE.TBL",
                                           "..",
                                           ".",
                                           "sub",
                                           "\\\\share\\x.hlp",
                                           "*.hlp",
                                           "|touch created.hlp"};
    const Site site;
    fs::create_directory(site.Path() + "sub");
    fs::create_directory(site.Path() + "templates");
    site.Write("secret.hlp", "secret");
    site.Write("templates/own.hlp", "own");
    std::string text = "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n"
                       "1,30,\"TEXT\",\"Own\",\"\",\"OWN.HLP\"\r\n";
    for (const auto &name : outside)
        text += "1,30,\"LIST\",\"" + name + "\",\"\",\"" + name + "\"\r\n\"../a\"\r\nXXX-1XXX\r\n";
    site.Write("templates/NEW.FTF", text);
    ExpectWell(site, [&]() -> std::string {
        const auto calls = WatchCalls([&] {
            Dialogs.Answers = {NoAnswer};
            Dialogs.Texts = {site.Path() + "templates/NEW.FTF"};
            Press(Quintave.CommandTemplate);
            OperationNamed("add").Act();
            OperationNamed("print the screen to a file").Act();
        });
        if (NumFields != static_cast<Integer>(outside.size()) + 1) return "not loaded";
        if (FieldExtra[1][1] != "own.hlp") return "its own help file was not found";
        for (Integer e = 2; e <= NumFields; ++e)
            if (!FieldExtra[e][1].empty()) return "a help file for " + FieldTitle[e];
        return Joined(CallsOutside(calls, {site.Path()}));
    });
}

TEST(HandsOff, NothingInAReportNamesAFileToWrite) {
    const Site site;
    std::string text = "0,\"QuintaveV2\",\"../../OTHER.FTF\"\r\n";
    for (const std::string name : {"../x.rpx", "/tmp/x.rpx", "..\\x.rpx", "GRP00005.XXX", "quintave.tbl"})
        for (const std::string level : {"1,1,", "1,-9,", "1,-1,", "1,-99,"})
            text += level + "\"" + name + "\",\"" + name + "\"\r\n";
    text += "1,1,\"Title\",\"../../x.rpx\"\r\n";
    site.Write("other.rpx", text);
    const std::string table = site.Read("quintave.tbl");
    ExpectWell(site, [&]() -> std::string {
        const auto calls = WatchCalls(DoEverything);
        return Joined(CallsOutside(calls, {site.Path()}));
    });
    EXPECT_EQ(site.Read("quintave.tbl"), table);
    EXPECT_EQ(site.Read("other.rpx"), text);
}

TEST(HandsOff, OddNamesOfReportsWorkOrAreRefusedWithAMessage) {
    constexpr std::size_t LongestName = 255;
    const std::string longest = std::string(LongestName - 4, 'n') + ".rpx";
    const std::vector<std::string> names{"two words.rpx",
                                         "a \"quoted\" 'name'.rpx",
                                         "100%s%n.rpx",
                                         "all*?[x].rpx",
                                         "-option.rpx",
                                         "~.rpx",
                                         "$(true).rpx",
                                         "caf\xE9.rpx",
                                         "\xC3\xA9t\xC3\xA9.rpx",
                                         "line\nbreak.rpx",
                                         ".rpx",
                                         "x.rpx.rpx"};
    for (const auto &name : names) {
        SCOPED_TRACE(name);
        const Site site;
        ExpectWell(site, [&]() -> std::string {
            for (int round = 0; round < 2; ++round) {
                Dialogs.Texts = {site.Path() + name};
                Press(Quintave.CommandSaveAs);
                if (!Dialogs.Messages.empty()) return Dialogs.Messages[0].Text;
                if (!site.Has(name)) return "not saved";
            }
            Dialogs.Answers = {YesAnswer};
            Dialogs.Texts = {site.Path() + name};
            Press(Quintave.CommandAdd);
            if (Dialogs.Messages.size() != 1 || Dialogs.Messages[0].Title != "Overwrite or 'Add To'")
                return "not added";
            return site.Has(name + "~") ? "a copy is left" : "";
        });
    }
    for (const std::string &name : {longest, "n" + longest}) {
        SCOPED_TRACE(name.size());
        const Site site;
        ExpectWell(site, [&]() -> std::string {
            std::string first;
            for (int round = 0; round < 2; ++round) {
                Dialogs = {};
                Dialogs.Texts = {site.Path() + name};
                Press(Quintave.CommandSaveAs);
                if (!Dialogs.Messages.empty() && Dialogs.Messages[0].Text.find("Error: 52 - Bad file name") != 0)
                    return Dialogs.Messages[0].Text;
                if (Dialogs.Messages.empty() != site.Has(name) && round == 0) return "neither saved nor told";
                if (round == 0 && site.Has(name)) first = site.Read(name);
            }
            // There is no room for the "~" of its earlier version, so it is not written over.
            return site.Read(name) == first ? "" : "the report changed";
        });
    }
}
