// The file system through POSIX calls (files.h).
#include "platform/files.h"

#include "platform/characters.h"
#include "platform/codepage.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::size_t HeldBytes = 1 << 16;
constexpr mode_t OwnMode = 0600;
constexpr mode_t UserMode = 0666;
constexpr mode_t OwnDirectoryMode = 0700;

// The directory whose lock is held; -1 for none.
int LockedDirectory = -1;

std::string DirectoryOf(const std::string &path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

Integer ErrorOf(int number, const std::string &path) {
    switch (number) {
    case ENOENT: return DirectoryExists(DirectoryOf(path)) ? FileNotFound : PathNotFound;
    case ENOTDIR: return PathNotFound;
    case EINVAL:
    case ENAMETOOLONG: return BadFileName;
    case EBADF: return BadFileMode;
    case EIO: return DeviceError;
    case EEXIST: return FileAlreadyExists;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return DiskFull;
    case EMFILE:
    case ENFILE: return TooManyFiles;
    case ENXIO:
    case ENODEV: return DeviceUnavailable;
    case EACCES:
    case EPERM:
    case EBUSY:
    case ETXTBSY:
    case EAGAIN: return PermissionDenied;
    case ENOMEM: return OutOfMemory;
    default: return PathAccessError;
    }
}

[[noreturn]] void Fail(const std::string &path) { throw RuntimeError{ErrorOf(errno, path)}; }

// A call that a signal interrupted is made again, as often as it takes.
template <class Call> auto Repeated(const Call &call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

int OpenHandle(const std::string &path, int flags, mode_t mode = 0) {
    if (path.empty() || path.find('\0') != std::string::npos) throw RuntimeError{BadFileName};
    const int handle = Repeated([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); });
    if (handle < 0) Fail(path);
    return handle;
}

// A work file is always a new one, for its owner alone: whatever had its name, be it a link or a file of somebody
// else's, is taken away and not written into.
int OpenOutput(const std::string &path, OutputFile::Access access) {
    if (access == OutputFile::Access::User) return OpenHandle(path, O_WRONLY | O_CREAT | O_TRUNC, UserMode);
    if (NameTaken(path)) DeleteFile(path);
    return OpenHandle(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, OwnMode);
}

void WriteAll(int handle, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = Repeated([&] { return write(handle, bytes.data(), bytes.size()); });
        if (written < 0) Fail("");
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

// A descriptor that is closed on every way out of a procedure.
struct Handle {
    explicit Handle(int number) : Number(number) {}
    ~Handle() { close(Number); }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;
    int Number;
};

std::vector<std::string> EntriesOf(const std::string &directory) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir(directory.c_str()), closedir);
    if (!entries) return names;
    while (const dirent *entry = readdir(entries.get())) names.emplace_back(entry->d_name);
    std::sort(names.begin(), names.end());
    return names;
}

// A name that no file can have, or one that leads out of its directory.
bool IsNoName(std::string_view name) {
    return name.empty() || name.find_first_of(std::string_view("/\\\0", 3)) != std::string_view::npos;
}

// The file of exactly this name, in the system's bytes or as the code page has it; "" where there is none.
std::string ExactName(const std::string &directory, std::string_view name) {
    if (IsNoName(name)) return "";
    for (const auto &candidate : {std::string(name), FromUtf8(name)})
        if (FileExists(directory + candidate)) return candidate;
    return "";
}

} // namespace

void SplitPath(std::string_view path, std::string &directory, std::string &name) {
    const auto separator = path.find_last_of("/\\");
    const auto length = separator == std::string_view::npos ? 0 : separator + 1;
    const std::string both(path); // either result may be the very string that path looks into
    directory = both.substr(0, length);
    name = both.substr(length);
}

std::string WithSeparator(std::string directory) {
    if (!directory.empty() && directory.back() == '\\') directory.pop_back();
    if (directory.empty() || directory.back() != '/') directory += '/';
    return directory;
}

std::string CurrentDirectory() {
    const std::unique_ptr<char, void (*)(void *)> path(getcwd(nullptr, 0), free);
    return WithSeparator(path ? path.get() : "");
}

std::string ProgramDirectory() {
    std::string path(PATH_MAX, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    return path.substr(0, path.rfind('/', static_cast<std::size_t>(std::max<ssize_t>(length, 0))) + 1);
}

std::string UserDataDirectory() {
    const auto absolute = [](const char *path) { return path != nullptr && *path == '/'; };
    const char *const data = std::getenv("XDG_DATA_HOME");
    if (absolute(data)) return WithSeparator(data);
    const char *const home = std::getenv("HOME");
    return absolute(home) ? WithSeparator(home) + ".local/share/" : "";
}

bool FileExists(const std::string &path) {
    struct stat status {};
    // The system would take a NUL for the end of the path and look at another file.
    return path.find('\0') == std::string::npos && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool IsPlainFile(const std::string &path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool IsSameFile(const std::string &a, const std::string &b) {
    struct stat first {};
    struct stat second {};
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

bool DirectoryExists(const std::string &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool NameTaken(const std::string &path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

void MakeDirectory(const std::string &path) {
    for (std::size_t end = 0; end < path.size();) {
        end = path.find('/', end + 1);
        const std::string part = path.substr(0, end);
        if (!DirectoryExists(part) && mkdir(part.c_str(), OwnDirectoryMode) != 0) Fail(part);
    }
}

std::string FindDirectory(std::string directory, std::string_view path) {
    while (!path.empty()) {
        const auto length = std::min(path.find_first_of("/\\"), path.size());
        const std::string part(path.substr(0, length));
        path.remove_prefix(std::min(length + 1, path.size()));
        if (part.empty()) continue;
        std::string found = part;
        if (!DirectoryExists(directory + part))
            for (const auto &entry : EntriesOf(directory))
                if (UpperCase(NameText(entry)) == UpperCase(NameText(part)) && DirectoryExists(directory + entry)) {
                    found = entry;
                    break;
                }
        directory += found + '/';
    }
    return directory;
}

DirectoryNames::DirectoryNames(const std::string &directory) : path(directory) {
    for (const auto &entry : EntriesOf(directory))
        if (FileExists(directory + entry)) byUpperCase.try_emplace(UpperCase(NameText(entry)), entry);
}

std::string DirectoryNames::Find(std::string_view name) const {
    std::string exact = ExactName(path, name);
    if (!exact.empty() || IsNoName(name)) return exact;
    const auto found = byUpperCase.find(UpperCase(NameText(name)));
    return found == byUpperCase.end() ? "" : found->second;
}

std::string FindName(const std::string &directory, std::string_view name) {
    const std::string exact = ExactName(directory, name);
    return exact.empty() && !IsNoName(name) ? DirectoryNames(directory).Find(name) : exact;
}

long FileSize(const std::string &path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : 0;
}

std::vector<std::string> MatchingNames(const std::string &directory, const std::string &pattern) {
    std::vector<std::string> names = EntriesOf(directory);
    std::erase_if(names, [&](const std::string &name) {
        return fnmatch(pattern.c_str(), name.c_str(), FNM_CASEFOLD) != 0 || !IsPlainFile(directory + name);
    });
    return names;
}

void DeleteMatching(const std::string &directory, const std::string &pattern) {
    for (const auto &name : MatchingNames(directory, pattern)) TryToDelete(directory + name);
}

std::string ReadFile(const std::string &path) {
    const Handle file(OpenHandle(path, O_RDONLY));
    struct stat status {};
    if (fstat(file.Number, &status) != 0) Fail(path);
    if (S_ISDIR(status.st_mode)) throw RuntimeError{PathAccessError};
    // One byte more than there should be, so that the end is seen without growing. Pipes and the like tell no length.
    std::string bytes(status.st_size > 0 ? static_cast<std::size_t>(status.st_size) + 1 : HeldBytes, '\0');
    std::size_t length = 0;
    while (true) {
        if (length == bytes.size()) bytes.resize(length * 2);
        const ssize_t count = Repeated([&] { return read(file.Number, bytes.data() + length, bytes.size() - length); });
        if (count < 0) Fail(path);
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
    }
    bytes.resize(length);
    return bytes;
}

void DeleteFile(const std::string &path) {
    if (Repeated([&] { return unlink(path.c_str()); }) != 0 && errno != ENOENT) Fail(path);
}

void TryToDelete(const std::string &path) {
    Repeated([&] { return unlink(path.c_str()); });
}

void RenameFile(const std::string &from, const std::string &to) {
    if (Repeated([&] { return rename(from.c_str(), to.c_str()); }) != 0) Fail(to);
}

int MakeFileBeside(std::string &path) {
    const std::string wanted = path;
    path += ".XXXXXX";
    const int handle = mkostemp(path.data(), O_CLOEXEC);
    if (handle < 0) Fail(wanted);
    return handle;
}

OutputFile::OutputFile(const std::string &path, Access access) : handle(OpenOutput(path, access)) {}

OutputFile::OutputFile(int descriptor) : handle(descriptor) {}

OutputFile::~OutputFile() {
    if (handle < 0) return;
    FaultOf([this] { Flush(); });
    close(handle);
}

void OutputFile::Flush() {
    const std::string bytes = std::exchange(held, {}); // those that fail are not tried again
    WriteAll(handle, bytes);
}

void OutputFile::Write(std::string_view bytes) {
    if (bytes.size() >= HeldBytes) { // holding them would only copy them
        Flush();
        WriteAll(handle, bytes);
        return;
    }
    held += bytes;
    if (held.size() >= HeldBytes) Flush();
}

void OutputFile::AllowAsMuchAs(const std::string &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) Fail(path);
    // Where that is not to be had, as on a file system without modes, it stays its owner's alone: no harm in that.
    Repeated([&] { return fchmod(handle, status.st_mode & 07777); });
}

void OutputFile::Close(bool onDisk) {
    Flush();
    // A pipe or a device cannot be synchronised, and needs not be.
    if (onDisk && Repeated([&] { return fsync(handle); }) != 0 && errno != EINVAL) Fail("");
    const int closing = handle;
    handle = -1;
    if (close(closing) != 0 && errno != EINTR) Fail("");
}

void BinaryFile::Open(const std::string &path) {
    BinaryFile opened; // the one before stays where this one cannot be opened
    opened.handle = OpenHandle(path, O_RDWR | O_NOFOLLOW);
    Swap(opened);
}

void BinaryFile::Close() {
    if (handle >= 0) close(handle);
    handle = -1;
}

bool BinaryFile::IsAt(const std::string &path) const {
    struct stat opened {};
    struct stat there {};
    return fstat(handle, &opened) == 0 && lstat(path.c_str(), &there) == 0 && opened.st_dev == there.st_dev &&
           opened.st_ino == there.st_ino;
}

long BinaryFile::Size() const {
    struct stat status {};
    if (fstat(handle, &status) != 0) Fail("");
    return status.st_size;
}

std::string BinaryFile::Read(long position, long count) const {
    if (position < 1 || count < 0) throw RuntimeError{InvalidCall};
    std::string bytes(static_cast<std::size_t>(count), ' ');
    std::size_t length = 0;
    while (length < bytes.size()) {
        const ssize_t got = Repeated([&] {
            return pread(handle, bytes.data() + length, bytes.size() - length,
                         position - 1 + static_cast<long>(length));
        });
        if (got < 0) Fail("");
        if (got == 0) break;
        length += static_cast<std::size_t>(got);
    }
    return bytes;
}

void BinaryFile::Write(long position, std::string_view bytes) {
    if (position < 1) throw RuntimeError{InvalidCall};
    while (!bytes.empty()) {
        const ssize_t written = Repeated([&] { return pwrite(handle, bytes.data(), bytes.size(), position - 1); });
        if (written < 0) Fail("");
        bytes.remove_prefix(static_cast<std::size_t>(written));
        position += written;
    }
}

void CopyFile(const std::string &from, const std::string &to) {
    const std::string bytes = ReadFile(from);
    OutputFile copy(to, OutputFile::Access::Own);
    copy.AllowAsMuchAs(from);
    copy.Write(bytes);
    copy.Close(true);
}

bool LockDirectory(const std::string &directory) {
    const int handle = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0 && flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        close(handle);
        return false;
    }
    UnlockDirectory();
    LockedDirectory = handle;
    return true;
}

void UnlockDirectory() {
    if (LockedDirectory >= 0) close(LockedDirectory);
    LockedDirectory = -1;
}
