// The file system: paths, look-up of names, patterns, whole files, positioned reads and writes, the directory lock.
// A path is the bytes the system uses; a directory ends in "/". Error numbers: runtime.h. Items inside files: items.h.
#pragma once

#include "platform/runtime.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// Divides a path at its last "/" or "\": the directory with it, the name behind it; no separator, no directory.
void SplitPath(std::string_view path, std::string &directory, std::string &name);

// The directory with a "/" at its end; "/" and "\" count as one already, and "" becomes "/".
std::string WithSeparator(std::string directory);

// The current directory, ending in "/".
std::string CurrentDirectory();

// The directory that the running program's file lies in, links followed, ending in "/"; "" where the system does not
// tell.
std::string ProgramDirectory();

// Where programs keep the user's own data (the desktops' XDG rule), ending in "/"; "" where no home is known.
std::string UserDataDirectory();

// A regular file that can be seen under this path.
bool FileExists(const std::string &path);

// A regular file that lies there itself: no link to one.
bool IsPlainFile(const std::string &path);

bool DirectoryExists(const std::string &path);

// Something has this path, be it a link that leads nowhere.
bool NameTaken(const std::string &path);

// Makes a directory, and those above it that are missing, for the user alone. One that is there is left as it is.
void MakeDirectory(const std::string &path);

// Both paths lead to the same existing file.
bool IsSameFile(const std::string &a, const std::string &b);

// The length of a file in bytes; 0 where there is none.
long FileSize(const std::string &path);

// The name in the directory that a name from a table or template means: the exact one, else the first, in sorted order,
// that differs only in the case of its letters; "" where there is none. Only regular files count, and a name with a
// separator in it means none.
std::string FindName(const std::string &directory, std::string_view name);

// The names of one directory, for many look-ups like FindName.
class DirectoryNames {
public:
    explicit DirectoryNames(const std::string &directory);
    std::string Find(std::string_view name) const;

private:
    std::string path;
    std::unordered_map<std::string, std::string> byUpperCase; // the first in sorted order
};

// The directory that a path from a table means, below another one: each part exact, else in any letter case; "/" and
// "\" divide it. A part that is not there is taken as it stands.
std::string FindDirectory(std::string directory, std::string_view path);

// The names of the regular files of a directory (links not followed) that match a pattern such as "*.XXX", letters in
// either case; none where the directory cannot be read.
std::vector<std::string> MatchingNames(const std::string &directory, const std::string &pattern);

// Deletes them; one that cannot be deleted stays.
void DeleteMatching(const std::string &directory, const std::string &pattern);

// The bytes of a file. Errors 53, 76, 70, 75 and those of the table in runtime.h.
std::string ReadFile(const std::string &path);

// Deletes one file; a missing one is no error.
void DeleteFile(const std::string &path);

// The same, but one that cannot be deleted stays without an error.
void TryToDelete(const std::string &path);

// Gives a file another name in place of whatever had it.
void RenameFile(const std::string &from, const std::string &to);

// Makes a file that nobody else may use, of the given path and six characters more, which it appends, and opens it for
// writing.
int MakeFileBeside(std::string &path);

// Writes a file from its first byte, replacing an existing one at once; what was written before an error stays.
class OutputFile {
public:
    // User: written into an existing file, through a link, too. Own: a work file, a new one in the place of whatever
    // had its name, which nobody else may read.
    enum class Access { User, Own };

    OutputFile(const std::string &path, Access access);
    explicit OutputFile(int descriptor); // takes over a file that is open for writing
    ~OutputFile();                       // what is still held back is written, as far as it can be
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    void Write(std::string_view bytes);

    // Lets everybody do with the file what they may do with another one.
    void AllowAsMuchAs(const std::string &path);

    // Writes what is still held back, has it put on the disk where asked, and reports every delayed error.
    void Close(bool onDisk);

private:
    void Flush();

    int handle;
    std::string held;
};

// A work file of bytes at positions that count from 1.
class BinaryFile {
public:
    BinaryFile() = default;
    ~BinaryFile() { Close(); }
    BinaryFile(const BinaryFile &) = delete;
    BinaryFile &operator=(const BinaryFile &) = delete;

    void Open(const std::string &path); // error 53 where it is missing; the one open before is then still open
    void Swap(BinaryFile &other) noexcept { std::swap(handle, other.handle); }
    bool IsOpen() const { return handle >= 0; }
    bool IsAt(const std::string &path) const; // the path leads to the very file that is open
    void Close();

    long Size() const; // bytes

    // Bytes from a position on; those past the end of the file are blanks.
    std::string Read(long position, long count) const;

    // Past the end the file grows.
    void Write(long position, std::string_view bytes);

private:
    int handle = -1;
};

// Copies a file under a new name and puts it on the disk.
void CopyFile(const std::string &from, const std::string &to);

// Takes the one lock of a directory, giving back any other; false where another program holds it. The lock is no file
// and ends with the program. A directory that cannot be opened counts as locked by nobody.
bool LockDirectory(const std::string &directory);

void UnlockDirectory();
