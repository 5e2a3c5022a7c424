// Inputs and outputs of commands (files.h).
#include "cli/files.h"

#include "cli/unfinished.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t EverybodysMode = 0666;
constexpr mode_t ModeBits = 07777;

bool IsStandard(const std::string &path) { return path.empty() || path == "-"; }

// Both are one regular file, whatever names they have; of a terminal and the like several may hold an end.
bool IsSame(const struct stat &a, const struct stat &b) {
    return S_ISREG(a.st_mode) && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool IsStandardOutput(const struct stat &status) {
    struct stat output {};
    return fstat(STDOUT_FILENO, &output) == 0 && IsSame(output, status);
}

// What an input is; nothing where it cannot be found.
struct stat StatusOf(const std::string &input) {
    struct stat status {};
    if (input == "-")
        fstat(STDIN_FILENO, &status);
    else
        stat(input.c_str(), &status);
    return status;
}

std::string ReadStandardInput() {
    std::string bytes;
    std::array<char, 65536> part{};
    while (true) {
        const ssize_t count = read(STDIN_FILENO, part.data(), part.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw RuntimeError{errno == EISDIR ? PathAccessError : DeviceError};
        if (count == 0) return bytes;
        bytes.append(part.data(), static_cast<std::size_t>(count));
    }
}

// Where a path leads, links followed, so that the output takes the place of what a link names and not of the link; ""
// where nothing is there.
std::string LinkedPath(const std::string &path) {
    const std::unique_ptr<char, void (*)(void *)> real(realpath(path.c_str(), nullptr), std::free);
    return real ? real.get() : "";
}

mode_t UsualMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return EverybodysMode & ~mask;
}

} // namespace

std::string ReadInput(const std::string &path) {
    if (IsStandardOutput(StatusOf(path))) throw RuntimeError{FileAlreadyOpen};
    return path == "-" ? ReadStandardInput() : ReadFile(path);
}

std::string OutputName(const std::string &path) { return IsStandard(path) ? "standard output" : path; }

Result::Result(std::string path, const std::vector<std::string> &inputs) : place(std::move(path)) {
    if (IsStandard(place)) {
        file = std::make_unique<OutputFile>(dup(STDOUT_FILENO));
        return;
    }
    struct stat status {};
    const bool exists = stat(place.c_str(), &status) == 0;
    for (const std::string &input : inputs)
        if (exists && IsSame(status, StatusOf(input))) throw RuntimeError{FileAlreadyOpen};
    // A file that took its place would lose what the other commands of a shell write to it: /dev/stdout is one name of
    // it.
    if (exists && IsStandardOutput(status)) {
        file = std::make_unique<OutputFile>(dup(STDOUT_FILENO));
        return;
    }
    const std::string linked = LinkedPath(place);
    // A device or a pipe keeps its place, and so does a link to what has no name of its own: a file that is not there
    // yet, or standard output that was deleted.
    if ((exists && !S_ISREG(status.st_mode)) || (linked.empty() && NameTaken(place))) {
        file = std::make_unique<OutputFile>(place, OutputFile::Access::User);
        return;
    }
    if (!linked.empty()) place = linked;
    OpenBeside();
}

void Result::OpenBeside() {
    staged = place;
    const SignalsHeld held;
    const int handle = MakeFileBeside(staged);
    RemoveAtEnd(staged);
    struct stat status {};
    const bool replaces = stat(place.c_str(), &status) == 0;
    if (fchmod(handle, replaces ? status.st_mode & ModeBits : UsualMode()) != 0) errno = 0; // such a disk has no modes
    file = std::make_unique<OutputFile>(handle);
}

void Result::Close() {
    file->Close(!staged.empty());
    if (!staged.empty()) RenameFile(staged, place);
}
