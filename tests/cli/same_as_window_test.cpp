// What quintave-cli prints and merges is what the window's commands write, byte for byte.
#include "report/load_command.h"
#include "report/save_command.h"
#include "support/print_test.h"
#include "support/template_lines.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

namespace {

// The user's answer where values meet.
Answer Answering = NoAnswer;

constexpr std::array<std::string_view, 4> ModeNames{"none", "titles", "data", "raw"};
constexpr std::array Separators{"' '", "'| '", "': '", "'> '", "' - '", "' = '"};
constexpr std::array Indents{"0", "7", "60"};

// Runs the program in the present directory; its exit status.
int RunCli(const std::string &arguments) {
    const int status = std::system((PROGRAM " " + arguments).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

const TemplateLines Site{"1,-1,\"\",\"Citation\",\"\",\"\"",
                         Element(2, 60, "TEXT", "Title"),
                         Element(2, 40, "TEXT", "Author"),
                         "2,20,\"LIST\",\"Kind\",\"\",\"\"",
                         "\"Maps\"",
                         "\"Numbers\"",
                         "\"XXX-1XXX\"",
                         Element(2, 2, "GROUP START", "Places"),
                         Element(3, 20, "TEXT", "Name"),
                         Element(3, 60, "MEMO", "Notes"),
                         Element(2, 0, "GROUP END", "")};

class MergedAsInTheWindow : public ScreenTest {};

class PrintedAsInTheWindow : public PrintTest {
protected:
    // Prints a report of these bytes in both ways, with these options.
    void Compare(const std::string &bytes, const PanelOptions &options) {
        const std::string window = TextOfFile(bytes, options);
        const std::string &separator = options.Separator;
        const std::string text = separator.substr(1, separator.size() - 2);
        std::string command = "print A.rpx -o cli/out.txt --mode ";
        command += ModeNames.at(static_cast<std::size_t>(options.Mode));
        command += " --separator '" + text + "'" + (options.Below ? " --below" : "");
        if (!options.Indent.empty()) command += " --indent " + options.Indent;
        RunCli(command + " 2>messages");
        EXPECT_EQ(folder.Read("cli/out.txt"), window) << command;
    }
};

// Every kind of record, values of every length around the 80 columns, line breaks, long words, long titles.
std::string EverySort() {
    std::vector<std::string> lines{R"(1,-1,"Citation","")", R"(2,1,"Title","Wells of the valley")"};
    for (std::size_t length = 60; length < 84; ++length)
        lines.push_back(ValueRecord(2, "Length", std::string(length, 'x')));
    for (std::size_t length = 70; length < 90; ++length)
        lines.push_back(ValueRecord(2, std::string(length, 't'), "a value of some words behind a long title"));
    const std::vector<std::string> rest{R"(2,3,"Abstract","first line of several words that go on for quite a while)"
                                        R"( until they must be wrapped into a second one")",
                                        R"("second")",
                                        R"("")",
                                        R"(2,-9,"Samples","REPEATING GROUP, Occurrence #1")",
                                        R"(3,1,"Depth","12 ft")",
                                        R"(3,-1,"Inside","")",
                                        R"(2,-9,"Samples","REPEATING GROUP, Occurrence #2")",
                                        R"(2,-99,"END REPEATING GROUP","")",
                                        R"(1,-2,"Subtitle","")",
                                        R"(1,-3,"Centred","")",
                                        R"(0,1,"Outermost","")",
                                        "2,1,\"\xDC"
                                        "bersicht\",\"\x80 100\""};
    lines.insert(lines.end(), rest.begin(), rest.end());
    return ReportText(lines);
}

} // namespace

TEST_F(PrintedAsInTheWindow, PrintsOfEveryModeLayoutSeparatorAndIndent) {
    std::filesystem::create_directory(folder.Path() + "cli");
    for (int mode = 0; mode < 4; ++mode)
        for (const bool below : {false, true})
            for (const char *const separator : Separators)
                for (const char *const indent : Indents)
                    Compare(EverySort(),
                            {.Mode = mode, .Indent = mode < 2 ? indent : "", .Below = below, .Separator = separator});
}

TEST_F(PrintedAsInTheWindow, APrintOfWhatIsNoReport) {
    std::filesystem::create_directory(folder.Path() + "cli");
    folder.Write("A.rpx", "name,age\r\nAnn,7\r\n");
    // It reaches standard output alone, here by the name that a print of the window has.
    std::filesystem::create_symlink("/dev/stdout", folder.Path() + "cli/out.txt");
    EXPECT_EQ(RunCli("print A.rpx -o cli/out.txt --template SITE.FTF >shown 2>messages"), 3);
    EXPECT_EQ(folder.Read("shown"), TextOfFile("name,age\r\nAnn,7\r\n"));
}

TEST_F(MergedAsInTheWindow, TheCasesOfTheDesktop) {
    const std::vector<std::string> first{R"(1,-1,"Citation","")",
                                         R"(2,1,"Title","First")",
                                         R"(2,1,"Author","Ann")",
                                         R"(2,1,"Kind","Maps")",
                                         R"(2,-9,"Places","REPEATING GROUP, Occurrence #1")",
                                         R"(3,1,"Name","Ely")",
                                         R"(2,-99,"END REPEATING GROUP","")"};
    const std::vector<std::string> second{R"(1,-1,"Citation","")",
                                          R"(2,1,"Title","Second")",
                                          R"(2,1,"Author","Ben")",
                                          R"(2,1,"Author","Cy")",
                                          R"(2,1,"Colour","Red")",
                                          R"(2,1,"Kind","Glaciers")",
                                          R"(2,-9,"Places","REPEATING GROUP, Occurrence #1")",
                                          R"(3,1,"Name","Lynn")",
                                          R"(3,2,"Notes","on the")",
                                          R"("coast")",
                                          R"(2,-99,"END REPEATING GROUP","")"};
    const std::vector<std::string> places{R"(1,-1,"Citation","")", R"(2,-9,"Places","REPEATING GROUP, Occurrence #1")",
                                          R"(3,1,"Name","Ely")", R"(2,-99,"END REPEATING GROUP","")"};
    Start(Site);
    folder.Write("first.rpx", ReportText(first));
    folder.Write("second.rpx", ReportText(second));
    folder.Write("places.rpx", ReportText(places));
    const std::vector<std::vector<std::string>> cases{{"first.rpx", "second.rpx"},
                                                      {"second.rpx", "first.rpx"},
                                                      {"places.rpx", "places.rpx"},
                                                      {"first.rpx", "places.rpx", "second.rpx"},
                                                      {"first.rpx", "first.rpx"}};
    for (const auto &files : cases)
        for (const bool adds : {true, false}) {
            Dialogs.Answers = {NoAnswer}; // nothing is saved before the reset
            Press(Quintave.CommandReset);
            std::string command = std::string("merge -t SITE.FTF -o cli.rpx ") + (adds ? "--add" : "--overwrite");
            Dialogs.Answers.clear();
            bool opened = false;
            for (const auto &file : files) {
                Dialogs.Texts = {folder.Path() + file};
                // Only the question what to do with values that meet has two answers that matter.
                Answering = opened && !adds ? YesAnswer : NoAnswer;
                Dialogs.Reply = [](const ShownMessage &message) {
                    return message.Title == "Overwrite or 'Add To'" ? Answering : DefaultAnswer(message.Style);
                };
                Press(Quintave.CommandAdd);
                Dialogs.Reply = nullptr;
                command += " " + file;
                opened = true;
            }
            EXPECT_THAT(RunCli(command + " 2>messages"), testing::AnyOf(0, 1));
            EXPECT_EQ(folder.Read("cli.rpx"), SaveAs("window.rpx")) << command;
        }
}
