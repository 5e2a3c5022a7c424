// quintave.tbl: default template, start file and colour.
#include "model/resource_table.h"

#include "support/folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

class ResourceTableFile : public testing::Test {
protected:
    ResourceTable Of(const std::string &bytes) const {
        folder.Write("quintave.tbl", bytes);
        ResourceTable table;
        EXPECT_TRUE(ReadResourceTable(folder.Path(), table));
        return table;
    }

    Folder folder;
};

constexpr const char *FirstRecord = "\"kept\",\"site.ftf\",\"-1\"\r\n";

} // namespace

TEST_F(ResourceTableFile, NamesAreTrimmed) {
    const ResourceTable table = Of("\" Kept \",\"  Site.Ftf \",\"  My Report.RPX  \"\r\n");
    EXPECT_EQ(table.Kept, " Kept ");
    EXPECT_EQ(table.Template, "Site.Ftf");
    EXPECT_EQ(table.Start, "My Report.RPX");
    EXPECT_EQ(table.Back, DesignColour);
}

TEST_F(ResourceTableFile, ItsNameIsFoundInAnyLetterCase) {
    folder.Write("QUINTAVE.TBL", FirstRecord);
    ResourceTable table;
    EXPECT_TRUE(ReadResourceTable(folder.Path(), table));
    EXPECT_EQ(table.Template, "site.ftf");
}

TEST_F(ResourceTableFile, MissingItemsAreEmptyAndTheStartFileNone) {
    struct {
        const char *Bytes, *Kept, *Template, *Start;
    } constexpr Expected[] = {{"", "", "", "-1"},
                              {"\r\n \r\n", "", "", "-1"},
                              {"kept", "kept", "", "-1"},
                              {"kept\r\n", "kept", "", "-1"},
                              {"kept,site.ftf", "kept", "site.ftf", "-1"},
                              {"kept,site.ftf,", "kept", "site.ftf", "-1"},
                              {"kept,site.ftf,\r\n", "kept", "site.ftf", ""},
                              {",,\r\n", "", "", ""},
                              {"\"kept", "", "", "-1"}};
    for (const auto &[bytes, kept, name, start] : Expected) {
        const ResourceTable table = Of(bytes);
        EXPECT_EQ(table.Kept, kept) << bytes;
        EXPECT_EQ(table.Template, name) << bytes;
        EXPECT_EQ(table.Start, start) << bytes;
        EXPECT_EQ(table.Back, DesignColour) << bytes;
    }
}

TEST_F(ResourceTableFile, TheSecondRecordIsTheColour) {
    struct {
        const char *Record;
        Colour Expected;
    } constexpr Cases[] = {{"COLOR,255", 255},
                           {"\" color \",255", 255},
                           {"Color,16711680", 0xFF0000},
                           {"COLOUR,255", 0x8000},
                           {"red,255", 0x8000},
                           {"\"\",255", 0x8000},
                           {"COLOR", 0},
                           {"COLOR,", 0},
                           {"COLOR,red", 0},
                           {"COLOR,0", 0},
                           {"blue", 0x8000},
                           {"COLOR,-2147483633", DesignColour}, // 8000000F hex, a colour of the desktop's
                           {"COLOR,-1", 0xFFFFFF},              // its high byte is another one
                           {"COLOR,16777471", 255},
                           {"COLOR,99999999999", 0}};
    for (const auto &[record, expected] : Cases)
        EXPECT_EQ(Of(std::string(FirstRecord) + record + "\r\n").Back, expected) << record;
}

TEST_F(ResourceTableFile, WithoutATableThereIsNone) {
    ResourceTable table;
    EXPECT_FALSE(ReadResourceTable(folder.Path(), table));
    EXPECT_FALSE(ReadResourceTable(folder.Path() + "none/", table));
}

TEST_F(ResourceTableFile, ADirectoryOrAnUnreadableFileIsNone) {
    std::filesystem::create_directory(folder.Path() + "quintave.tbl");
    ResourceTable table;
    EXPECT_FALSE(ReadResourceTable(folder.Path(), table));
    std::filesystem::remove(folder.Path() + "quintave.tbl");
    std::filesystem::create_symlink("/proc/self/mem", folder.Path() + "quintave.tbl"); // reading it fails
    EXPECT_FALSE(ReadResourceTable(folder.Path(), table));
}
