// What docs/guide.md, README.md and the manual page say of keys, and the template that the guide writes.
#include "documents/page.h"

#include "screen/command_keys.h"

#include <regex>
#include <set>

namespace {

const std::string Guide = "/docs/guide.md";

std::string Page(const std::string &name) { return BytesOf(PROJECT_FOLDER + name); }

// The letters of the guide's table of keys that stand beside Ctrl+ and hold at that place.
std::set<char> LettersOf(const std::string &place) {
    std::set<char> letters;
    for (const auto &line : LinesOf(Page(Guide)))
        if (line.starts_with("| Ctrl+") && line.ends_with("| " + place + " |") && line.substr(8, 2) == " |")
            letters.insert(line[7]);
    return letters;
}

// The letters that README.md names in its table of keys.
std::set<char> LettersOfReadme() {
    static const std::regex row(R"(^\| (?:in a group: )?Ctrl\+.*?\|)");
    static const std::regex letter(R"((?:Ctrl\+|, )([A-Z])(?=[ ,]))");
    std::set<char> letters;
    for (const auto &line : LinesOf(Page("/README.md"))) {
        std::smatch keys;
        if (!std::regex_search(line, keys, row)) continue;
        const std::string text = keys.str();
        for (std::sregex_iterator it(text.begin(), text.end(), letter), end; it != end; ++it)
            letters.insert((*it)[1].str()[0]);
    }
    return letters;
}

// The letters that the manual page names.
std::set<char> LettersOfManual() {
    static const std::regex key(R"(Ctrl\+([A-Z])\b)");
    const std::string page = Page("/packaging/man/quintave.1");
    std::set<char> letters;
    for (std::sregex_iterator it(page.begin(), page.end(), key), end; it != end; ++it)
        letters.insert((*it)[1].str()[0]);
    return letters;
}

class GuideKeys : public ReportTest {
protected:
    void SetUp() override {
        Start({R"(1,2,"GROUP START","Wells","","")", R"(2,9,"TEXT","Depth","","")", R"(1,0,"GROUP END","","","")",
               R"(1,9,"TEXT","Name","","")"});
    }

    // The letters that run a command at this place.
    std::set<char> LettersTaken(bool inGroup) {
        std::set<char> taken;
        for (char letter = 'A'; letter <= 'Z'; ++letter) {
            if (inGroup && ActiveList != GroupList) Open(0);
            EXPECT_EQ(ActiveList == GroupList, inGroup);
            auto key = static_cast<Integer>(letter);
            HandleCommandKey(key);
            if (key == 0) taken.insert(letter);
        }
        return taken;
    }
};

} // namespace

TEST_F(GuideKeys, OfTheTableAreThoseThatTheProgramTakes) {
    const std::set<char> everywhere = LettersOf("everywhere");
    EXPECT_EQ(LettersTaken(false), everywhere);
    std::set<char> inGroup = LettersOf("in a group");
    inGroup.insert(everywhere.begin(), everywhere.end());
    EXPECT_EQ(LettersTaken(true), inGroup);
    EXPECT_EQ(LettersOfReadme(), inGroup);
    EXPECT_EQ(LettersOfManual(), inGroup);
}

TEST_F(GuideKeys, TheTemplateOfTheGuideIsLoadedAndFilledIn) {
    folder.Write("WELLS.FTF", Lines(Block(Page(Guide), "ftf")));
    Dialogs.Texts = {folder.Path() + "WELLS.FTF"};
    Press(Quintave.CommandTemplate);
    EXPECT_TRUE(Dialogs.Messages.empty());
    EXPECT_EQ(TemplateName, "WELLS.FTF");
    Enter(0, "Old well");
    Select(2);
    Type("D");
    Open(5);
    Enter(0, "2024-03-04");
    const std::string saved = SaveAs("A.rpx");
    EXPECT_EQ(saved, Lines({R"(0,"QuintaveV2","WELLS.FTF")", R"(1,-1,"Well","")", R"(2,1,"Name","Old well")",
                            R"(2,1,"Condition","Dry")", R"(1,-1,"Water","")",
                            R"(2,-9,"Levels","REPEATING GROUP, Occurrence #1")", R"(3,1,"Date","2024-03-04")",
                            R"(2,-99,"END REPEATING GROUP","")"}));
}
