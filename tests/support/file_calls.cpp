// Stands between the program under test and the system's file calls (file_calls.h).
#undef _FORTIFY_SOURCE // its inline versions of these calls could not be defined anew
#include "support/file_calls.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// What is watched at present; none outside WatchCalls.
std::vector<MadeCall> *Made = nullptr;
FileFault Fault;
std::array<int, FileCallKinds> Counts{};

// What becomes of a call: 0 as ever, an error number, or one of FileFault's.
int Outcome(FileCall kind, const char *path = "", int flags = 0, int mode = 0) {
    if (Made == nullptr) return 0;
    std::vector<MadeCall> *const made = Made;
    Made = nullptr; // noting it makes calls of its own
    made->push_back({kind, path, flags, mode});
    Made = made;
    const int number = ++Counts.at(static_cast<std::size_t>(kind));
    if (kind != Fault.Kind || (Fault.Lasting ? number < Fault.Number : number != Fault.Number)) return 0;
    if (Fault.Error == FileFault::Kill && kind != FileCall::Write) kill(getpid(), SIGKILL);
    return Fault.Error;
}

int Failing(int outcome) {
    errno = outcome;
    return -1;
}

std::size_t Part(std::size_t count) { return std::max<std::size_t>(count / 2, 1); }

// Half of it reaches the file, and then the program is gone.
template <class Write> void WriteHalfAndDie(const Write &write) {
    write();
    kill(getpid(), SIGKILL);
}

std::string DirectoryLedTo(const std::string &path) {
    const auto slash = path.rfind('/');
    const std::string directory = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    std::array<char, PATH_MAX> real{};
    return realpath(directory.c_str(), real.data()) == nullptr ? directory : std::string(real.data()) + "/";
}

} // namespace

extern "C" {

int open(const char *path, int flags, ...) {
    int mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, int);
        va_end(arguments);
    }
    const int outcome = Outcome(FileCall::Open, path, flags, mode);
    if (outcome > 0) return Failing(outcome);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t read(int handle, void *bytes, size_t count) {
    const int outcome = Outcome(FileCall::Read);
    if (outcome > 0) return Failing(outcome);
    return syscall(SYS_read, handle, bytes, outcome == FileFault::Short ? Part(count) : count);
}

ssize_t pread(int handle, void *bytes, size_t count, off_t at) {
    const int outcome = Outcome(FileCall::Read);
    if (outcome > 0) return Failing(outcome);
    return syscall(SYS_pread64, handle, bytes, outcome == FileFault::Short ? Part(count) : count, at);
}

ssize_t write(int handle, const void *bytes, size_t count) {
    const int outcome = Outcome(FileCall::Write);
    if (outcome > 0) return Failing(outcome);
    if (outcome == FileFault::Kill) WriteHalfAndDie([&] { syscall(SYS_write, handle, bytes, Part(count)); });
    return syscall(SYS_write, handle, bytes, outcome == FileFault::Short ? Part(count) : count);
}

ssize_t pwrite(int handle, const void *bytes, size_t count, off_t at) {
    const int outcome = Outcome(FileCall::Write);
    if (outcome > 0) return Failing(outcome);
    if (outcome == FileFault::Kill) WriteHalfAndDie([&] { syscall(SYS_pwrite64, handle, bytes, Part(count), at); });
    return syscall(SYS_pwrite64, handle, bytes, outcome == FileFault::Short ? Part(count) : count, at);
}

int fsync(int handle) {
    const int outcome = Outcome(FileCall::Sync);
    return outcome > 0 ? Failing(outcome) : static_cast<int>(syscall(SYS_fsync, handle));
}

// The descriptor is gone, whatever close says.
int close(int handle) {
    const int outcome = Outcome(FileCall::Close);
    const int closed = static_cast<int>(syscall(SYS_close, handle));
    return outcome > 0 ? Failing(outcome) : closed;
}

int rename(const char *from, const char *to) noexcept {
    const int outcome = Outcome(FileCall::Rename, to);
    return outcome > 0 ? Failing(outcome) : static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0U));
}

int unlink(const char *path) noexcept {
    const int outcome = Outcome(FileCall::Unlink, path);
    return outcome > 0 ? Failing(outcome) : static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

int mkdir(const char *path, mode_t mode) noexcept {
    const int outcome = Outcome(FileCall::MakeDirectory, path);
    return outcome > 0 ? Failing(outcome) : static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

int fchmod(int handle, mode_t mode) noexcept {
    const int outcome = Outcome(FileCall::ChangeMode);
    return outcome > 0 ? Failing(outcome) : static_cast<int>(syscall(SYS_fchmod, handle, mode));
}

DIR *opendir(const char *path) {
    const int outcome = Outcome(FileCall::List, path);
    if (outcome > 0) {
        errno = outcome;
        return nullptr;
    }
    static const auto next = reinterpret_cast<DIR *(*)(const char *)>(dlsym(RTLD_NEXT, "opendir"));
    return next(path);
}

} // extern "C"

const char *NameOf(FileCall kind) {
    constexpr std::array<const char *, FileCallKinds> Names{"open",   "read",   "write", "fsync",  "close",
                                                            "rename", "unlink", "mkdir", "fchmod", "opendir"};
    return Names.at(static_cast<std::size_t>(kind));
}

std::vector<MadeCall> WatchCalls(const std::function<void()> &act, const FileFault &fault) {
    std::vector<MadeCall> calls;
    Fault = fault;
    Counts = {};
    Made = &calls;
    act();
    Made = nullptr;
    Fault = {};
    return calls;
}

std::vector<std::string> CallsOutside(const std::vector<MadeCall> &calls, const std::vector<std::string> &directories) {
    std::vector<std::string> outside;
    for (const MadeCall &call : calls) {
        const bool reads = call.Kind == FileCall::Open && (call.Flags & (O_WRONLY | O_RDWR | O_CREAT)) == 0;
        if (reads || call.Path.empty() || call.Kind == FileCall::List) continue;
        std::array<char, PATH_MAX> real{};
        const bool follows = call.Kind == FileCall::Open && (call.Flags & (O_NOFOLLOW | O_EXCL)) == 0 &&
                             realpath(call.Path.c_str(), real.data()) != nullptr;
        const std::string directory = DirectoryLedTo(follows ? real.data() : call.Path);
        if (std::find(directories.begin(), directories.end(), directory) == directories.end())
            outside.push_back(call.Path);
    }
    return outside;
}
