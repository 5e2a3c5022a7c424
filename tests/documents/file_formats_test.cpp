// The examples of docs/file-formats.md: the program reads each, and writes the report as it stands there.
#include "documents/resources.h"

namespace {

// The lines between ```LANGUAGE and ``` of a page; there has to be one such block.
std::vector<std::string> Block(const std::string &page, const std::string &language) {
    const std::string fence = "\n```" + language + "\n";
    const auto start = page.find(fence);
    EXPECT_NE(start, std::string::npos) << language;
    EXPECT_EQ(page.find(fence, start + 1), std::string::npos) << language;
    const std::string text =
        page.substr(start + fence.size(), page.find("\n```", start + 1) - start - fence.size() + 1);
    std::vector<std::string> lines;
    for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
        end = text.find('\n', at);
        lines.push_back(text.substr(at, end - at));
    }
    return lines;
}

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
