// The examples of docs/file-formats.md: the program reads each, and writes the report as it stands there.
#include "documents/page.h"

namespace {

class FileFormats : public ReportTest {
protected:
    void SetUp() override {
        folder.Write("quintave.tbl", Lines(Block(page, "tbl")));
        folder.Write("SITE.FTF", Lines(Block(page, "ftf")));
        folder.Write("SITE.HLP", "Help");
        StartUp();
        Press(Quintave.LogoOff);
        ASSERT_TRUE(Dialogs.Messages.empty());
    }

    const std::string page = BytesOf(PROJECT_FOLDER "/docs/file-formats.md");
};

} // namespace

TEST_F(FileFormats, TheTemplateOfTheExampleIsLoadedByTheTableOfTheExample) {
    EXPECT_EQ(TemplateName, "SITE.FTF");
    EXPECT_EQ(Quintave.editframe.BackColor, 15787740);
    std::vector<std::string> titles(FieldTitle.begin() + 1, FieldTitle.end());
    EXPECT_THAT(titles, testing::ElementsAre("Citation", "Title", "Author", "Type of Data", "Abstract", "Field work",
                                             "Samples", "Depth", "Notes", ""));
    EXPECT_EQ(FieldExtra[2][HelpFile], "SITE.HLP");
}

TEST_F(FileFormats, TheReportOfTheExampleIsLoadedAndSavedAsItStands) {
    const std::string report = Lines(Block(page, "rpx"));
    folder.Write("A.rpx", report);
    Dialogs.Answers = {NoAnswer};
    Add("A.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()}); // about the two authors
    EXPECT_EQ(SaveAs("B.rpx"), report);
}
