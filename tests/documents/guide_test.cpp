// What docs/guide.md, README.md and the manual page say of keys, and the template that the guide writes.
#include "documents/page.h"

#include "main/commands.h"
#include "screen/command_keys.h"

#include <regex>
#include <set>

namespace {

const std::string Guide = "/docs/guide.md";

std::string Page(const std::string &name) { return BytesOf(PROJECT_FOLDER + name); }

std::string GuideKeysText() {
    std::string text;
    for (const KeyLine &line : KeyLines())
        text += "| " + line.Key + " | " + line.Does + " | " + (line.InGroupOnly ? "in a group" : "everywhere") + " |\n";
    return text;
}

std::string ManualKeysText() {
    std::string text;
    for (const KeyLine &line : KeyLines())
        text += ".TP\n" + (line.InGroupOnly ? ".BR " + line.Key + " \" (in a group)\"" : ".B " + line.Key) + "\n" +
                line.Does + "\n";
    return text;
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

TEST_F(GuideKeys, AreListedAsTheTableOfCommandsHasThem) {
    EXPECT_THAT(Page(Guide), testing::HasSubstr(GuideKeysText()));
    EXPECT_THAT(Page("/packaging/man/quintave.1"), testing::HasSubstr(ManualKeysText()));
}

TEST_F(GuideKeys, OfTheTableAreThoseThatTheProgramTakes) {
    std::set<char> everywhere;
    std::set<char> inGroup;
    for (const Command &command : Commands()) {
        if (KeyOf(command) == 0 || KeyOf(command) > 'Z') continue;
        inGroup.insert(static_cast<char>(KeyOf(command)));
        if (!command.InGroupOnly) everywhere.insert(static_cast<char>(KeyOf(command)));
    }
    EXPECT_EQ(everywhere, std::set<char>({'A', 'F', 'P', 'Q', 'R', 'S', 'Y', 'Z'}));
    EXPECT_EQ(LettersTaken(false), everywhere);
    EXPECT_EQ(LettersTaken(true), inGroup);
    EXPECT_EQ(LettersOfReadme(), inGroup);
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
