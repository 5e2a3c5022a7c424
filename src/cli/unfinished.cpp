// Removing unfinished outputs (unfinished.h).
#include "cli/unfinished.h"

#include "platform/runtime.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// The process that removes, and the end of the pipe by which it learns what there is to remove and that the program has
// ended; 0 and -1 before there is anything.
pid_t Remover = 0;
int ToRemover = -1;

// Reads paths, each ended by a NUL, until nobody can write any more; then removes them all.
[[noreturn]] void RunRemover(int input) {
    setsid(); // what the terminal sends to the program is not for this one
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(standard);
    std::string paths;
    std::array<char, 4096> part{};
    ssize_t count = 0;
    while ((count = read(input, part.data(), part.size())) > 0)
        paths.append(part.data(), static_cast<std::size_t>(count));
    for (std::size_t at = 0; at < paths.size(); at = paths.find('\0', at) + 1) unlink(paths.c_str() + at);
    _exit(0);
}

void StartRemover() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw RuntimeError{TooManyFiles};
    Remover = fork();
    if (Remover == 0) {
        close(ends[1]);
        RunRemover(ends[0]);
    }
    close(ends[0]);
    ToRemover = ends[1];
    if (Remover < 0) throw RuntimeError{OutOfMemory};
}

} // namespace

SignalsHeld::SignalsHeld() {
    sigset_t all{};
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &former);
}

SignalsHeld::~SignalsHeld() { sigprocmask(SIG_SETMASK, &former, nullptr); }

void RemoveAtEnd(const std::string &path) {
    if (ToRemover < 0) StartRemover();
    const char *const bytes = path.c_str();
    if (write(ToRemover, bytes, path.size() + 1) < 0) throw RuntimeError{DeviceError};
}

void EndRemoving() {
    if (ToRemover < 0) return;
    close(ToRemover);
    ToRemover = -1;
    while (waitpid(Remover, nullptr, 0) < 0 && errno == EINTR) {
    }
}
