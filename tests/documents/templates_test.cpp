// The templates that come with the program: what a template has to keep to be easy to fill in, and every field of each
// filled, saved, loaded and saved again.
#include "documents/resources.h"

#include "report/choice_matching.h"

#include <cctype>
#include <set>

namespace {

constexpr std::size_t WidestTitle = 26; // of a row of the field list
constexpr std::size_t WidestHelp = 80;
const std::string Clear = "<RESET/CLEAR FIELD ENTRY>";
const std::string Other = "OTHER...";
const std::string OwnText = "Our own";

class ShippedTemplate : public ResourcesTest, public testing::WithParamInterface<std::string> {
protected:
    void SetUp() override { StartOn(GetParam()); }

    static bool IsGroupEnd(Integer element) {
        return FieldInfo[element][TypeCode] == GroupMark && !IsGroupStart(element);
    }

    static bool IsMember(Integer element) { return HasValue(element) && FieldGroup[element] != 0; }

    // Picks a choice by its first letter alone, typed again until it is reached, and Enter.
    static void ChooseByLetter(Integer row, std::size_t choice) {
        Select(row);
        const std::vector<std::string> choices = ActiveChoices().Rows;
        const std::string letter = choices.at(choice).substr(0, 1);
        const auto first = static_cast<unsigned char>(letter[0]);
        EXPECT_TRUE(std::isupper(first) || std::isdigit(first) || choice == 0) << choices[choice];
        Type(letter);
        for (std::size_t tries = choices.size(); tries > 0 && Focused() == &ActiveChoices(); --tries) {
            if (ActiveChoices().ListIndex == static_cast<Integer>(choice)) return PressEnter();
            Type(letter);
        }
    }

    static void EnterOwnText() {
        Type(OwnText);
        PressEnter();
    }

    static std::vector<std::string> ChoicesOf(Integer element) { return ReadChoiceFile(element); }
};

// What the help line of a field begins with, as the standards have it.
bool BeginsWithObligation(const std::string &line) {
    for (const char *word : {"Mandatory. ", "Recommended. ", "Optional. ", "Conditional. "})
        if (line.starts_with(word)) return true;
    return false;
}

} // namespace

TEST_P(ShippedTemplate, TitlesFitTheirColumnAndDifferInTheirPlace) {
    std::set<std::string> paths;
    std::string section;
    for (Integer e = 1; e <= NumFields; ++e) {
        const std::string &title = FieldTitle[e];
        EXPECT_LE(title.size(), WidestTitle) << title;
        if (IsGroupEnd(e)) continue;
        EXPECT_NE(title, "");
        if (IsSection(e)) section = title;
        const std::string group = IsMember(e) ? FieldTitle[FieldGroup[e]] : "";
        EXPECT_TRUE(paths.insert(section + "/" + group + "/" + (IsSection(e) ? "" : title)).second) << title;
    }
}

TEST_P(ShippedTemplate, SectionsFieldsAndMembersStandOnLevelsOfTheirOwn) {
    ASSERT_TRUE(IsSection(1));
    for (Integer e = 1; e <= NumFields; ++e) {
        EXPECT_TRUE(IsSection(e) || IsGroupStart(e) || IsGroupEnd(e) || HasValue(e)) << FieldTitle[e];
        const Integer level = IsSection(e) ? 1 : IsMember(e) ? 3 : 2;
        EXPECT_EQ(LevelOf(e), level) << FieldTitle[e];
    }
}

TEST_P(ShippedTemplate, HelpLinesBeginWithTheObligationAndEveryFieldHasAHelpFile) {
    for (Integer e = 1; e <= NumFields; ++e) {
        if (IsSection(e) || IsGroupEnd(e)) continue;
        const auto &[line, file] = FieldExtra[e];
        EXPECT_TRUE(BeginsWithObligation(line)) << FieldTitle[e] << ": " << line;
        EXPECT_TRUE(line.ends_with('.')) << line;
        EXPECT_NE(file, "") << FieldTitle[e];
    }
}

TEST_P(ShippedTemplate, EveryListCanBeClearedAndHoldsNoChoiceTwice) {
    for (Integer e = 1; e <= NumFields; ++e) {
        if (!IsList(e)) continue;
        const auto choices = ChoicesOf(e);
        EXPECT_EQ(choices.front(), Clear) << FieldTitle[e];
        EXPECT_EQ(std::set(choices.begin(), choices.end()).size(), choices.size()) << FieldTitle[e];
        for (const auto &choice : choices)
            EXPECT_TRUE(choice == Clear || choice.size() <= static_cast<std::size_t>(FieldInfo[e][KindItem])) << choice;
    }
}

TEST_P(ShippedTemplate, EveryChoiceOfTheFieldListIsReachedByItsLetter) {
    for (Integer row = 0; row < NumRows; ++row) {
        const Integer e = RowField[row];
        if (!IsList(e)) continue;
        const auto choices = ChoicesOf(e);
        for (std::size_t c = 0; c < choices.size(); ++c) {
            ChooseByLetter(row, c);
            if (choices[c] == Other) EnterOwnText();
            const std::string expected = choices[c] == Clear ? "" : choices[c] == Other ? OwnText : choices[c];
            ASSERT_EQ(RowValue[row], expected) << FieldTitle[e];
        }
    }
}

namespace {

// Enters something everywhere and keeps the lines that the report has to have.
class FilledTemplate : public ShippedTemplate {
protected:
    void AddLine(Integer element, const std::string &rest) {
        lines.push_back(std::to_string(LevelOf(element)) + "," + rest);
    }

    void AddValue(Integer element, const std::string &value) {
        AddLine(element, "1,\"" + FieldTitle[element] + "\",\"" + value + "\"");
    }

    // As many characters as the field holds.
    static std::string LongestText(Integer element) {
        std::string text;
        const auto length = static_cast<std::size_t>(FieldInfo[element][KindItem]);
        while (text.size() < length) text += FieldTitle[element] + ", ";
        text.resize(length - 1);
        return text + ".";
    }

    void EnterText(Integer row, Integer element) {
        const std::string text = LongestText(element);
        Enter(row, text);
        AddValue(element, text);
    }

    // Two lines.
    void EnterMemo(Integer row, Integer element) {
        Open(row);
        Type("First, ");
        PressEnter();
        Type("second");
        PressEnter(CtrlMask);
        AddLine(element, "2,\"" + FieldTitle[element] + "\",\"First, \"");
        lines.emplace_back("\"second\"");
    }

    void EnterChoice(Integer row, Integer element, std::size_t choice) {
        const std::string text = ChoicesOf(element).at(choice);
        ChooseByLetter(row, choice);
        if (text == Other) EnterOwnText();
        AddValue(element, text == Other ? OwnText : text);
    }

    void EnterValue(Integer row, Integer element, std::size_t choice) {
        if (IsList(element))
            EnterChoice(row, element, choice);
        else if (FieldInfo[element][TypeCode] == Memo)
            EnterMemo(row, element);
        else
            EnterText(row, element);
    }

    // A second instance where the field may have one: of a list every further choice.
    void AddInstances(Integer row, Integer element) {
        const std::size_t number = IsList(element) ? ChoicesOf(element).size() - 1 : 2;
        for (std::size_t n = 2; n <= number; ++n) {
            Select(row);
            ASSERT_TRUE(Quintave.MultiInstanceFrame.Visible);
            Press(Quintave.FIAdd);
            const std::string text = IsList(element) ? ChoicesOf(element)[n] : "Second";
            if (IsList(element))
                DoubleClickRow(ActiveChoices(), static_cast<Integer>(n));
            else
                Type(text);
            if (text == Other)
                EnterOwnText();
            else if (!IsList(element))
                PressEnter(FieldInfo[element][TypeCode] == Memo ? CtrlMask : Integer{0});
            AddValue(element, text == Other ? OwnText : text);
        }
    }

    // An occurrence for each choice of the longest list, one at least.
    void EnterGroup(Integer row, Integer head) {
        std::size_t occurrences = 1;
        for (Integer e = head; e < GroupEnd(head); ++e)
            if (IsList(e)) occurrences = std::max(occurrences, ChoicesOf(e).size() - 1);
        Open(row);
        for (std::size_t n = 1; n <= occurrences; ++n) {
            AddLine(head, "-9,\"" + FieldTitle[head] + "\",\"REPEATING GROUP, Occurrence #" + std::to_string(n) + "\"");
            Integer member = 0;
            for (auto e = static_cast<Integer>(head + 1); e < GroupEnd(head); ++e, ++member)
                EnterValue(member, e, IsList(e) ? std::min(n, ChoicesOf(e).size() - 1) : 0);
            if (n < occurrences) Press(Quintave.FldChange[Next]);
        }
        Press(Quintave.GrpExit);
        AddLine(head, "-99,\"END REPEATING GROUP\",\"\"");
    }

    void FillEverything() {
        for (Integer e = 1; e <= NumFields; ++e) {
            if (IsSection(e)) AddLine(e, "-1,\"" + FieldTitle[e] + "\",\"\"");
            if (FieldRow[e] <= 0 || IsSection(e)) continue;
            const auto row = static_cast<Integer>(FieldRow[e] - 1);
            if (IsGroupStart(e)) {
                EnterGroup(row, e);
            } else {
                EnterValue(row, e, 1);
                if (FieldInfo[e][LevelItem] > 0) AddInstances(row, e);
            }
        }
    }

    std::vector<std::string> lines;
};

} // namespace

TEST_P(FilledTemplate, WithEveryFieldFilledIsSavedLoadedAndSavedAgainTheSame) {
    FillEverything();
    const std::string first = SaveAs("first.rpx");
    ASSERT_EQ(first, "0,\"QuintaveV2\",\"" + GetParam() + "\"\r\n" + Lines(lines));
    Press(Quintave.CommandReset);
    EXPECT_TRUE(Dialogs.Messages.empty());
    Dialogs.Answers = {NoAnswer};
    Add("first.rpx");
    EXPECT_EQ(Dialogs.Messages, std::vector{FieldMergeMessage()});
    EXPECT_EQ(SaveAs("second.rpx"), first);
}

INSTANTIATE_TEST_SUITE_P(Documents, ShippedTemplate, testing::ValuesIn(NamesIn("resources", ".FTF")),
                         NameWithoutEnding);
INSTANTIATE_TEST_SUITE_P(Documents, FilledTemplate, testing::ValuesIn(NamesIn("resources", ".FTF")), NameWithoutEnding);

// Help files and lists
// ------------------------------------------------------------------------------

TEST(HelpFiles, AreNarrowAndAllInUse) {
    std::string templates;
    for (const auto &name : NamesIn("resources", ".FTF"))
        templates += BytesOf(std::string(PROJECT_FOLDER "/resources/") + name);
    for (const auto &name : NamesIn("resources", ".HLP")) {
        EXPECT_NE(templates.find("\"" + name + "\""), std::string::npos) << name;
        const std::string text = BytesOf(std::string(PROJECT_FOLDER "/resources/") + name);
        for (std::size_t start = 0, end = 0; start < text.size(); start = end + 2) {
            end = text.find("\r\n", start);
            ASSERT_NE(end, std::string::npos) << name;
            EXPECT_LE(end - start, WidestHelp) << name;
        }
    }
}

namespace {

// The fields and groups outside groups of which a standard asks for something.
struct Obligation {
    const char *Template;
    const char *Word;
    std::set<std::string> Titles;
};

void PrintTo(const Obligation &obligation, std::ostream *out) { *out << obligation.Template << obligation.Word; }

class Obligations : public ResourcesTest, public testing::WithParamInterface<Obligation> {};

} // namespace

TEST_P(Obligations, AreThoseOfTheStandard) {
    StartOn(GetParam().Template);
    std::set<std::string> titles;
    for (Integer e = 1; e <= NumFields; ++e)
        if (FieldRow[e] > 0 && FieldExtra[e][HelpLine].starts_with(GetParam().Word)) titles.insert(FieldTitle[e]);
    EXPECT_EQ(titles, GetParam().Titles);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, Obligations,
    testing::Values(Obligation{"DUBLIN.FTF", "Mandatory", {}}, Obligation{"DUBLIN.FTF", "Recommended", {}},
                    Obligation{"DATACITE.FTF",
                               "Mandatory",
                               {"Identifier", "Creators", "Titles", "Publisher", "Publication Year", "Resource Type",
                                "Resource Type General"}},
                    Obligation{"DATACITE.FTF",
                               "Recommended",
                               {"Subjects", "Contributors", "Dates", "Related Identifiers", "Descriptions",
                                "Geographic Locations"}},
                    Obligation{"ISO19115.FTF",
                               "Mandatory",
                               {"Resource Title", "Resource Abstract", "Metadata Dates", "Metadata Contacts"}},
                    Obligation{"ISO19115.FTF",
                               "Conditional",
                               {"Geographic Location", "Resource Language", "Topic Category", "Resource Type"}},
                    Obligation{"DCATAP.FTF", "Mandatory", {"Title", "Description"}},
                    Obligation{"DCATAP.FTF",
                               "Recommended",
                               {"Contact Points", "Distributions", "Keyword", "Publisher", "Geographical Coverage",
                                "Temporal Coverage", "Theme"}}),
    [](const auto &obligation) {
        const std::string name = obligation.param.Template;
        return name.substr(0, name.find('.')) + obligation.param.Word;
    });

namespace {

// How many values the standard's list has.
struct StandardList {
    const char *Template;
    const char *Title;
    std::size_t Values;
};

void PrintTo(const StandardList &list, std::ostream *out) { *out << list.Template << " " << list.Title; }

class StandardLists : public ResourcesTest, public testing::WithParamInterface<StandardList> {};

} // namespace

TEST_P(StandardLists, AreComplete) {
    const auto &[name, title, values] = GetParam();
    StartOn(name);
    int lists = 0;
    for (Integer e = 1; e <= NumFields; ++e) {
        if (!IsList(e) || FieldTitle[e] != title) continue;
        ++lists;
        auto choices = ReadChoiceFile(e);
        std::erase(choices, Clear);
        std::erase(choices, Other);
        EXPECT_EQ(choices.size(), values) << FieldTitle[e];
    }
    EXPECT_GT(lists, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, StandardLists,
    testing::Values(
        StandardList{"DUBLIN.FTF", "Type", 12}, StandardList{"DATACITE.FTF", "Resource Type General", 34},
        StandardList{"DATACITE.FTF", "Related Item Type", 34}, StandardList{"DATACITE.FTF", "Contributor Type", 22},
        StandardList{"DATACITE.FTF", "Date Type", 12}, StandardList{"DATACITE.FTF", "Relation Type", 39},
        StandardList{"DATACITE.FTF", "Related Identifier Type", 23},
        StandardList{"DATACITE.FTF", "Related Item Id Type", 23}, StandardList{"DATACITE.FTF", "Description Type", 6},
        StandardList{"DATACITE.FTF", "Title Type", 4}, StandardList{"DATACITE.FTF", "Name Type", 2},
        StandardList{"DATACITE.FTF", "Funder Identifier Type", 5}, StandardList{"ISO19115.FTF", "Topic Category", 21},
        StandardList{"ISO19115.FTF", "Role", 20}, StandardList{"ISO19115.FTF", "Date Type", 16},
        StandardList{"ISO19115.FTF", "Resource Type", 26}, StandardList{"ISO19115.FTF", "Spatial Representation", 6},
        StandardList{"ISO19115.FTF", "Progress", 18}, StandardList{"ISO19115.FTF", "Maintenance Frequency", 15},
        StandardList{"ISO19115.FTF", "Access Constraints", 17}, StandardList{"ISO19115.FTF", "Use Constraints", 17},
        StandardList{"ISO19115.FTF", "Keyword Type", 15}, StandardList{"ISO19115.FTF", "Classification", 9},
        StandardList{"DCATAP.FTF", "Access Rights", 3}, StandardList{"DCATAP.FTF", "Theme", 14}),
    [](const auto &list) {
        std::string name = list.param.Template + std::string("_") + list.param.Title;
        std::erase_if(name, [](unsigned char c) { return !std::isalnum(c); });
        return name;
    });
