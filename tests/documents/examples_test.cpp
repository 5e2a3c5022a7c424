// The example reports: each loads into its template as it is, and is saved again the same.
#include "documents/resources.h"

namespace {

// The template named in a report's header line.
std::string TemplateOf(const std::string &report) {
    const std::string before = "0,\"QuintaveV2\",\"";
    EXPECT_TRUE(report.starts_with(before));
    return report.substr(before.size(), report.find('"', before.size()) - before.size());
}

class Example : public ResourcesTest, public testing::WithParamInterface<std::string> {};

} // namespace

TEST_P(Example, LoadsWithNothingToAskButAboutItsInstancesAndIsSavedTheSame) {
    const std::string bytes = BytesOf(std::string(PROJECT_FOLDER "/docs/examples/") + GetParam());
    StartOn(TemplateOf(bytes));
    folder.Write(GetParam(), bytes);
    Dialogs.Answers = {NoAnswer};
    Add(GetParam());
    const bool hasInstances = std::any_of(RowValue.begin(), RowValue.end(),
                                          [](const auto &value) { return value.find('|') != std::string::npos; });
    EXPECT_EQ(Dialogs.Messages, std::vector(hasInstances ? 1 : 0, FieldMergeMessage()));
    EXPECT_EQ(SaveAs("saved.rpx"), bytes);
    for (const Integer element : RowField) {
        const bool mandatory = HasValue(element) && FieldExtra[element][HelpLine].starts_with("Mandatory");
        EXPECT_TRUE(!mandatory || !RowValue[static_cast<Integer>(FieldRow[element] - 1)].empty())
            << FieldTitle[element];
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, Example, testing::ValuesIn(NamesIn("docs/examples", ".rpx")),
                         [](const auto &example) {
                             std::string name = example.param.substr(0, example.param.find('.'));
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(Examples, ThereIsOneForEachTemplate) {
    std::vector<std::string> templates;
    for (const auto &name : NamesIn("docs/examples", ".rpx"))
        templates.push_back(TemplateOf(BytesOf(std::string(PROJECT_FOLDER "/docs/examples/") + name)));
    EXPECT_THAT(templates, testing::UnorderedElementsAreArray(NamesIn("resources", ".FTF")));
}
