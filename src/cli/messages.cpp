// Findings, messages and progress (messages.h).
#include "cli/messages.h"

#include "cli/options.h"

#include <chrono>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t ManyFiles = 20;
constexpr std::chrono::milliseconds ProgressPause(100);

// A progress line stands on the terminal.
bool ProgressShown = false;

void ClearProgress() {
    if (!ProgressShown) return;
    std::fputs("\r\033[K", stderr);
    ProgressShown = false;
}

// What reads from a pipe may show its own lines on the terminal.
bool IsPipe(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode));
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }

std::string Line(std::string_view file, long line, std::string_view text) {
    std::string name(file == "-" ? "standard input" : file);
    for (char &c : name)
        if (IsControl(c)) c = '?';
    return name + (line > 0 ? ":" + std::to_string(line) : "") + ": " + OneLine(text) + "\n";
}

} // namespace

std::string OneLine(std::string_view text) {
    std::string line;
    bool blank = true; // at the start and behind a blank no second one follows
    for (const char c : text) {
        const bool isBlank = c == ' ' || IsControl(c);
        if (!isBlank) line += c;
        if (isBlank && !blank) line += ' ';
        blank = isBlank;
    }
    if (line.ends_with(' ')) line.pop_back();
    return line;
}

void WriteResult(std::string_view utf8) {
    ClearProgress();
    std::fwrite(utf8.data(), 1, utf8.size(), stdout); // a fault is told by EndResults
}

void TellFinding(std::string_view file, long line, std::string_view text) { WriteResult(Line(file, line, text)); }

void TellMessage(std::string_view file, long line, std::string_view text) {
    ClearProgress();
    std::fputs(("quintave-cli: " + Line(file, line, text)).c_str(), stderr);
}

int TellFileError(std::string_view file, Integer number) {
    TellMessage(file, 0, "Error: " + ErrorText(number));
    return FileFault;
}

bool EndResults() {
    ClearProgress();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return true;
    std::perror("quintave-cli: standard output");
    return false;
}

void ShowProgress(std::size_t done, std::size_t all) {
    static const bool onTerminal = isatty(STDERR_FILENO) == 1 && !IsPipe(STDOUT_FILENO);
    static std::chrono::steady_clock::time_point last;
    if (done == all) ClearProgress(); // a result may follow
    const auto now = std::chrono::steady_clock::now();
    if (!onTerminal || all < ManyFiles || done == all || now - last < ProgressPause) return;
    last = now;
    std::fprintf(stderr, "\r%zu of %zu", done, all);
    ProgressShown = true;
}
