// The command line of quintave-cli: its commands and their options as one table (commands.cpp), from which it is read
// and from which the help texts are printed.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What the program tells its caller when it ends; of several, the largest.
enum ExitStatus : int { NothingFound = 0, SomethingFound = 1, WrongUsage = 2, FileFault = 3 };

struct Option {
    std::string_view Name;  // without its "--"
    char Letter = 0;        // short form; 0 for none
    std::string_view Value; // how the help names its value; "" for an option that takes none
    std::string_view Help;
};

// A command line that was understood.
struct Arguments {
    std::map<std::string_view, std::vector<std::string>> Given{}; // values by option, in the order given
    std::vector<std::string> Files{};

    bool Has(std::string_view option) const { return Given.contains(option); }
    std::string Last(std::string_view option, std::string_view otherwise = "") const;
};

struct CliCommand {
    std::string_view Name;
    std::string_view Operands; // how the help names its files
    std::string_view Summary;
    std::string_view About; // what the help says below the options; its lines end in a line feed
    std::size_t LeastFiles = 1;
    std::size_t MostFiles = 1;
    std::span<const Option> Options;
    int (*Run)(const Arguments &arguments) = nullptr; // the exit status
};

// What is wrong with a command line.
struct UsageError {
    std::string Text;
};

inline constexpr std::string_view HelpOption = "help";
inline constexpr std::string_view VersionOption = "version";
inline constexpr std::string_view InputReadOnce = "standard input can be read only once";

std::span<const CliCommand> CliCommands();

// What follows the command's name. Throws UsageError. With --help or --version nothing else counts.
Arguments ReadArguments(const CliCommand &command, int count, char **texts);

std::string HelpText();
std::string HelpText(const CliCommand &command);
