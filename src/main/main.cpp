// The program: arguments, then the main window until it ends.
#include "main/commands.h"
#include "main/given_report.h"
#include "main/layout.h"
#include "main/session.h"
#include "main/start_up.h"
#include "model/field_model.h"
#include "platform/controls.h"
#include "platform/files.h"
#include "platform/hand_over.h"
#include "platform/program.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace {

constexpr int WrongUsage = 2;

constexpr const char *Usage = "Usage: quintave [--resources DIR | --user-resources] [REPORT.rpx]\n"
                              "Write down what your data are, following a template.\n"
                              "\n"
                              "      --resources DIR   work on the quintave.tbl of this directory\n"
                              "      --user-resources  work in a directory of your own, filled with the templates\n"
                              "                        that came with the program; it is made when it is missing\n"
                              "      --help            show this and exit\n"
                              "      --version         show the version and exit\n"
                              "\n"
                              "Without either, quintave.tbl is looked for in the current directory.\n";

// Reads one argument or an option with its value; false where it is not to be understood.
bool TakeArgument(int &at, int count, char **texts, StartArguments &arguments) {
    constexpr std::string_view ResourcesOption = "--resources";
    const std::string_view text = texts[at];
    if (text == ResourcesOption && at + 1 < count) {
        arguments.Resources = texts[++at];
    } else if (text.starts_with("--resources=")) {
        arguments.Resources = text.substr(ResourcesOption.size() + 1);
    } else if (text == "--user-resources") {
        arguments.Installed = std::filesystem::path(ProgramDirectory() + QUINTAVE_RESOURCES).lexically_normal();
    } else if (!text.starts_with("-") && arguments.Report.empty()) {
        arguments.Report = text;
    } else {
        return false;
    }
    return arguments.Resources.empty() || arguments.Installed.empty();
}

} // namespace

int main(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view text = argv[i];
        if (text == "--help") return std::fputs(Usage, stdout) < 0;
        if (text == "--version") return std::printf("quintave %s\n", QUINTAVE_VERSION) < 0;
    }
    StartProgram(argc, argv); // takes the window system's own options out
    StartArguments arguments;
    for (int i = 1; i < argc; ++i)
        if (!TakeArgument(i, argc, argv, arguments)) {
            std::fputs(Usage, stderr);
            return WrongUsage;
        }
    ConnectMainWindow();
    if (!LoadMainWindow(arguments)) return 0;
    const int requests = ListenForRequests(ResourceDir); // others that start meanwhile wait for the window
    ShowMainWindow(MainLayout(), WindowTitle, CloseMainWindow, OfferSave, EndOnSignal);
    ServeRequests(requests, ReceiveReport);
    RunAsEvent(ActivateMainWindow);
    return RunProgram();
}
