// quintave-cli: reports and templates without a window. Its commands: commands.cpp.
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/unfinished.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

int TellUsage(const std::string &text, const std::string &command) {
    if (!text.empty()) std::fprintf(stderr, "quintave-cli: %s\n", text.c_str());
    std::fprintf(stderr, "Try 'quintave-cli%s --help' for more information.\n", command.c_str());
    return WrongUsage;
}

int RunNothing(const Arguments &) { throw UsageError{"which command?"}; }

// Stands in a command's place where there is none.
constexpr CliCommand NoCommand{"", "", "", "", 0, SIZE_MAX, {}, RunNothing};

int RunArguments(const CliCommand &command, const Arguments &arguments) {
    if (arguments.Has(HelpOption))
        WriteResult(&command == &NoCommand ? HelpText() : HelpText(command));
    else if (arguments.Has(VersionOption))
        WriteResult("quintave-cli " QUINTAVE_VERSION "\n");
    else
        return command.Run(arguments);
    return NothingFound;
}

int RunCommand(const CliCommand &command, int count, char **texts) {
    try {
        int status = NothingFound;
        const Integer fault = FaultOf([&] { status = RunArguments(command, ReadArguments(command, count, texts)); });
        return fault == 0 ? status : TellFileError(command.Name, fault);
    } catch (const UsageError &error) {
        return TellUsage(error.Text, &command == &NoCommand ? "" : " " + std::string(command.Name));
    }
}

// A standard file that was closed would be taken by the next one opened; in this way it only cannot be used.
void OpenStandardFiles() {
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(standard, F_GETFD) < 0 && open("/dev/null", standard == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0)
            std::exit(FileFault);
}

int Run(int count, char **texts) {
    const std::string_view name = count > 1 ? texts[1] : "";
    if (name.empty() || name.starts_with('-')) return RunCommand(NoCommand, count, texts);
    const auto commands = CliCommands();
    const auto command =
        std::find_if(commands.begin(), commands.end(), [&](const CliCommand &c) { return c.Name == name; });
    if (command == commands.end()) return TellUsage("there is no command '" + std::string(name) + "'", "");
    texts[1] = texts[0]; // whom the reader of options names in its messages
    return RunCommand(*command, count - 1, texts + 1);
}

} // namespace

int main(int argc, char **argv) {
    OpenStandardFiles();
    std::signal(SIGPIPE, SIG_DFL); // a reader that has seen enough ends the program without a word
    std::signal(SIGXFSZ, SIG_IGN); // a file that may not grow is told like a full disk
    static char name[] = "quintave-cli";
    if (argc > 0) argv[0] = name;
    const int status = Run(argc, argv);
    const bool whole = EndResults();
    EndRemoving();
    return whole ? status : std::max<int>(status, FileFault);
}
