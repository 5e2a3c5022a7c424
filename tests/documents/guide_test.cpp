// What docs/guide.md, README.md and the manual page say of keys, and the template that the guide writes.
#include "documents/page.h"

#include "main/commands.h"
#include "screen/command_keys.h"

#include <map>
#include <regex>
#include <set>

namespace {

const std::string Guide = "/docs/guide.md";

std::string Page(const std::string &name) { return BytesOf(PROJECT_FOLDER + name); }

// A line of a list of keys for each command that has one, by its letter, those of a group last.
using KeyLine = std::string (*)(char letter, const Command &command);

std::vector<std::string> KeyLines(KeyLine line) {
    std::map<std::pair<bool, char>, std::string> lines;
    for (const Command &command : Commands())
        if (const auto letter = static_cast<char>(KeyOf(command)); letter != 0)
            lines[{command.InGroupOnly, letter}] = line(letter, command);
    std::vector<std::string> sorted;
    for (const auto &[key, text] : lines) sorted.push_back(text);
    return sorted;
}

std::string GuideLine(char letter, const Command &command) {
    return std::string("| Ctrl+") + letter + " | " + std::string(command.Hint) + " | " +
           (command.InGroupOnly ? "in a group" : "everywhere") + " |\n";
}

std::string ManualLine(char letter, const Command &command) {
    const std::string key = std::string("Ctrl+") + letter;
    return ".TP\n" + (command.InGroupOnly ? ".BR " + key + " \" (in a group)\"" : ".B " + key) + "\n" +
           std::string(command.Hint) + "\n";
}

std::string Joined(const std::vector<std::string> &lines) {
    std::string text;
    for (const std::string &line : lines) text += line;
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
    EXPECT_THAT(Page(Guide), testing::HasSubstr(Joined(KeyLines(GuideLine))));
    EXPECT_THAT(Page("/packaging/man/quintave.1"), testing::HasSubstr(Joined(KeyLines(ManualLine))));
}

TEST_F(GuideKeys, OfTheTableAreThoseThatTheProgramTakes) {
    std::set<char> everywhere;
    std::set<char> inGroup;
    for (const Command &command : Commands()) {
        if (KeyOf(command) == 0) continue;
        inGroup.insert(static_cast<char>(KeyOf(command)));
        if (!command.InGroupOnly) everywhere.insert(static_cast<char>(KeyOf(command)));
    }
    EXPECT_EQ(everywhere, std::set<char>({'A', 'F', 'P', 'Q', 'R', 'S'}));
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
