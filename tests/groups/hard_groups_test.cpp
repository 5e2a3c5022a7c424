// Groups and templates at the edge of what there is room for, and files that changed behind the program's back.
#include "main/template_command.h"
#include "support/group_store.h"
#include "support/screen_test.h"
#include "support/template_lines.h"

#include <filesystem>
#include <sys/resource.h>

using testing::IsEmpty;

namespace {

class HardGroup : public ScreenTest {
protected:
    void StartWithGroup(int cells) {
        Start({Element(1, 2, "GROUP START", "Samples"), Element(2, cells, "TEXT", "Depth"),
               Element(1, 0, "GROUP END", ""), Element(1, 30, "TEXT", "Last")});
    }
};

} // namespace

TEST_F(HardGroup, TheLongestGroupCanBeEntered) {
    StartWithGroup(32767);
    Open(0);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_EQ(ActiveList, GroupList);
}

TEST_F(HardGroup, AStoreThatAnotherFileReplacedIsMadeAnewAndTold) {
    StartWithGroup(4);
    Open(0);
    Open(0);
    Type("one");
    PressEnter();
    folder.Write("copy", Store(4, {"old"}));
    std::filesystem::rename(folder.Path() + "copy", folder.Path() + "GRP00001.XXX");
    PressCtrl('N');
    ASSERT_EQ(Dialogs.Messages.size(), 1U);
    PressCtrl('E');
    EXPECT_EQ(folder.Read("GRP00001.XXX"), Store(4, {"one"}));
}

TEST_F(HardGroup, AStoreThatCountsNoOccurrenceCountsTheOneThatIsShown) {
    StartWithGroup(4);
    folder.Write("GRP00001.XXX", std::string("\4\0\0\0", 4) + "    ");
    Open(0);
    Open(0);
    Type("one");
    PressEnter();
    PressCtrl('E');
    EXPECT_EQ(folder.Read("GRP00001.XXX"), Store(4, {"one"}));
}

TEST_F(HardGroup, AStoreOfFourBytesThatCountsAThousandMillionTakesNoMemoryForThem) {
    StartWithGroup(32767);
    folder.Write("GRP00001.XXX", StoreHeader(32767, 32767));
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    const std::string report = SaveAs("a.rpx");
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_THAT(Dialogs.Messages, IsEmpty());
    EXPECT_NE(report.find("Occurrence #32767\""), std::string::npos);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 100'000); // kB
}

TEST_F(HardGroup, ATemplateIsLoadedWhileABoxIsOpen) {
    StartWithGroup(4);
    Open(1);
    Type("abc");
    ASSERT_TRUE(LoadTemplateFile());
    EXPECT_EQ(RowValue[1], "");
    EXPECT_FALSE(Quintave.Text1[1].Visible);
}
