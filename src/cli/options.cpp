// Reading command lines and printing help from the table of commands (options.h).
#include "cli/options.h"

#include <algorithm>
#include <array>
#include <getopt.h>

namespace {

constexpr int FirstLongOption = 256; // behind every character that a short option could be
constexpr std::size_t HelpColumn = 26;

// Those of every command.
constexpr std::array CommonOptions{Option{HelpOption, 0, "", "show this and exit"},
                                   Option{VersionOption, 0, "", "show the version and exit"}};

std::vector<Option> OptionsOf(const CliCommand &command) {
    std::vector<Option> options(command.Options.begin(), command.Options.end());
    options.insert(options.end(), CommonOptions.begin(), CommonOptions.end());
    return options;
}

std::string Padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size() + 2), ' ');
    return text;
}

std::string OptionLine(const Option &option) {
    std::string left = option.Letter != 0 ? std::string("  -") + option.Letter + ", --" : "      --";
    left += option.Name;
    if (!option.Value.empty()) left += " " + std::string(option.Value);
    return Padded(left, HelpColumn + 6) + std::string(option.Help) + "\n";
}

// The table as the system's reader of options wants it: a long option's number is its place behind FirstLongOption.
struct SystemOptions {
    explicit SystemOptions(std::span<const Option> options) {
        for (const Option &o : options) {
            Names.emplace_back(o.Name);
            if (o.Letter == 0) continue;
            Letters += o.Letter;
            if (!o.Value.empty()) Letters += ':';
        }
        for (std::size_t i = 0; i < options.size(); ++i)
            Long.push_back({Names[i].c_str(), options[i].Value.empty() ? no_argument : required_argument, nullptr,
                            FirstLongOption + static_cast<int>(i)});
        Long.push_back({});
    }
    std::vector<std::string> Names;
    std::string Letters;
    std::vector<option> Long;
};

const Option *FindOption(std::span<const Option> options, int found) {
    const auto match = std::find_if(options.begin(), options.end(), [&](const Option &o) {
        return found >= FirstLongOption ? &o == &options[static_cast<std::size_t>(found - FirstLongOption)]
                                        : o.Letter == found;
    });
    return match == options.end() ? nullptr : &*match;
}

void CheckFiles(const CliCommand &command, const std::vector<std::string> &files) {
    const std::size_t count = files.size();
    if (count < command.LeastFiles) throw UsageError{"missing " + std::string(command.Operands)};
    if (count > command.MostFiles) throw UsageError{"too many files: " + std::string(command.Operands) + " wanted"};
    if (std::count(files.begin(), files.end(), "-") > 1) throw UsageError{std::string(InputReadOnce)};
}

} // namespace

std::string Arguments::Last(std::string_view option, std::string_view otherwise) const {
    const auto found = Given.find(option);
    return found == Given.end() ? std::string(otherwise) : found->second.back();
}

Arguments ReadArguments(const CliCommand &command, int count, char **texts) {
    const std::vector<Option> table = OptionsOf(command);
    const SystemOptions options(table);
    Arguments arguments;
    optind = 0; // the reader starts anew
    for (int found = 0;
         (found = getopt_long(count, texts, options.Letters.c_str(), options.Long.data(), nullptr)) != -1;) {
        const Option *const option = FindOption(table, found);
        if (option == nullptr) throw UsageError{""}; // the reader has said what it does not understand
        arguments.Given[option->Name].emplace_back(optarg != nullptr ? optarg : "");
        if (arguments.Has(HelpOption) || arguments.Has(VersionOption)) return arguments; // nothing else counts
    }
    if (arguments.Has("output") && arguments.Last("output").empty()) throw UsageError{"--output needs a file"};
    arguments.Files.assign(texts + optind, texts + count);
    CheckFiles(command, arguments.Files);
    return arguments;
}

std::string HelpText() {
    std::string text = "Usage: quintave-cli COMMAND [OPTION]... FILE...\n"
                       "Check, print, merge, export and compare Quintave reports without a window.\n\n";
    for (const CliCommand &command : CliCommands())
        text += Padded("  " + std::string(command.Name), HelpColumn - 8) + std::string(command.Summary) + "\n";
    text += "\n";
    for (const Option &option : CommonOptions) text += OptionLine(option);
    return text +
           "\n'quintave-cli COMMAND --help' tells more of a command. The exit status is 0 where nothing was found,\n"
           "1 where something was, 2 for wrong usage, 3 where a file could not be used.\n";
}

std::string HelpText(const CliCommand &command) {
    std::string text = "Usage: quintave-cli " + std::string(command.Name) + " [OPTION]... " +
                       std::string(command.Operands) + "\n" + std::string(command.Summary) + ".\n\n";
    for (const Option &option : OptionsOf(command)) text += OptionLine(option);
    return command.About.empty() ? text : text + "\n" + std::string(command.About);
}
