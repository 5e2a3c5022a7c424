// A screen test of sessions that leave unsaved entries behind.
#pragma once

#include "main/recovery.h"
#include "model/store.h"
#include "platform/console/progress.h"
#include "report/save_command.h"
#include "support/messages.h"
#include "support/screen_test.h"
#include "support/stores.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

inline constexpr const char *KeptName = "quintave.rec";
inline constexpr const char *MessageTitle = "UNSAVED ENTRIES";

inline const std::vector<std::string> Fields{R"(1,30,"TEXT","Title","","")",
                                             R"(1,30,"LIST","Colour","","")",
                                             "Red",
                                             "Blue",
                                             "OTHER...",
                                             "XXX-1XXX",
                                             R"(1,20,"MEMO","Notes","","")",
                                             R"(1,-1,"","Samples","","")",
                                             R"(2,2,"GROUP START","Sample","","")",
                                             R"(3,5,"TEXT","Depth","","")",
                                             R"(3,5,"TEXT","Place","","")",
                                             R"(2,0,"GROUP END","","","")",
                                             R"(2,30,"TEXT","Last","","")"};
inline constexpr Integer TitleRow = 0;
inline constexpr Integer ColourRow = 1;
inline constexpr Integer NotesRow = 2;
inline constexpr Integer GroupRow = 4;
inline constexpr Integer LastRow = 5;
inline constexpr Integer ColourElement = 2;
inline constexpr Integer GroupElement = 5;

// Lets the time go by until the entries may be kept again, and the timer tick.
inline void TenSecondsPass() {
    Progress.Clock += 10000;
    UserTicks(Quintave.RecoveryTimer);
}

inline std::string StoreOf(Integer head) { return StoredCells(head); }

// While it lives the program is somebody whom modes stop, unlike root, and the folder is theirs.
class AsNobody {
public:
    explicit AsNobody(const Folder &folder) : former(geteuid()) {
        if (former != 0) return;
        bool done = chown(folder.Path().c_str(), Nobody, Nobody) == 0;
        for (const auto &entry : std::filesystem::recursive_directory_iterator(folder.Path()))
            done = lchown(entry.path().c_str(), Nobody, Nobody) == 0 && done;
        if (!done || seteuid(Nobody) != 0) throw std::runtime_error("cannot become nobody");
    }
    ~AsNobody() {
        if (seteuid(former) != 0) std::abort();
    }
    AsNobody(const AsNobody &) = delete;
    AsNobody &operator=(const AsNobody &) = delete;

private:
    static constexpr uid_t Nobody = 65534;
    uid_t former;
};

// Sessions on SITE.FTF that end unexpectedly, and what the next start does.
class Recovery : public ScreenTest {
protected:
    Recovery() {
        folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
        folder.Write("SITE.FTF", TemplateText(Fields));
    }

    // Runs a session in a process of its own and ends that as an unexpected end does.
    void Crash(const std::function<void()> &session) {
        const pid_t child = fork();
        if (child == 0) {
            StartUp();
            Press(Quintave.LogoOff);
            session();
            if (HasFailure()) _exit(1);
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the session itself failed";
    }

    // One that left a title unsaved.
    void CrashWithATitle() {
        Crash([] {
            Enter(TitleRow, "Wells");
            TenSecondsPass();
        });
        ASSERT_TRUE(folder.Has(KeptName));
    }

    void StartAnswering(Answer answer) {
        Dialogs.Answers = {answer};
        StartUp();
        Press(Quintave.LogoOff);
    }

    void StartWithEntries() {
        StartUp();
        Press(Quintave.LogoOff);
        Enter(TitleRow, "Wells");
        TenSecondsPass();
        ASSERT_TRUE(folder.Has(KeptName));
    }

    static void ExpectCleanStart() {
        EXPECT_EQ(TemplateName, "SITE.FTF");
        EXPECT_EQ(NumFields, 9);
        for (const auto &value : RowValue) EXPECT_EQ(value, "");
        EXPECT_EQ(StoreOf(GroupElement), std::string(10, ' '));
        EXPECT_EQ(DataChanged, 0);
        EXPECT_EQ(FileMark, "FirstLoad");
    }
};
