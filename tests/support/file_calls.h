// The file calls of the program under test, watched and made to fail. A test program that is linked with file_calls.cpp
// answers open(), write() and their like itself and hands them on to the system; the program knows nothing of it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

enum class FileCall { Open, Read, Write, Sync, Close, Rename, Unlink, MakeDirectory, ChangeMode, List, Count };

inline constexpr std::size_t FileCallKinds = static_cast<std::size_t>(FileCall::Count);

// The name of a kind as a message has it: "rename".
const char *NameOf(FileCall kind);

// What goes wrong: a call of this kind, counted from 1 while the calls are watched.
struct FileFault {
    // Not an error: only a part of the bytes is read or written.
    static constexpr int Short = -1;
    // Not an error either: the program is killed before the call, or in the middle of a write.
    static constexpr int Kill = -2;

    FileCall Kind = FileCall::Count;
    int Number = 0;
    int Error = 0;
    bool Lasting = false; // every later call of this kind fails, too
};

// A call that the program made while it was watched.
struct MadeCall {
    FileCall Kind;
    std::string Path; // of open, rename (the new name), unlink; "" otherwise
    int Flags = 0;    // of open
    int Mode = 0;
};

// Runs the act with its calls watched, one of them failing. Returns the calls.
std::vector<MadeCall> WatchCalls(const std::function<void()> &act, const FileFault &fault = {});

// The paths of these calls that were written, renamed or deleted elsewhere than directly in one of the directories
// (each ends in "/"). Links count as what they lead to.
std::vector<std::string> CallsOutside(const std::vector<MadeCall> &calls, const std::vector<std::string> &directories);
