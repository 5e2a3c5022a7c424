// One operation of the program, tried in a process of its own in a folder of its own: with a failing file call, or
// killed in its middle. What it is compared with is the same operation undisturbed, and the state before it.
#pragma once

#include "support/file_calls.h"
#include "support/folder.h"
#include "support/memory_folder.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

// An operation: from the sample session, what comes before it, and the act itself.
struct Operation {
    const char *Name;
    void (*Prepare)();
    void (*Act)();
    // It changes several files, one after the other: what a fault leaves may be a part of it.
    bool Gradual = false;
    // What it has changed is shown in its group; where that cannot be opened behind it the list of fields stays.
    bool OpensGroup = false;
};

inline void PrintTo(const Operation &operation, std::ostream *out) { *out << operation.Name; }

std::vector<Operation> Operations();
const Operation &OperationNamed(const std::string &name);

// What an operation left behind.
struct Outcome {
    std::string Problem;               // "" or what is wrong whatever the fault was
    std::string Screen;                // the rows right behind the operation
    std::string Entries;               // the report that the next command saves
    std::string Report;                // the bytes of a.rpx
    std::string Copy;                  // and of its earlier version, "" where there is none
    std::vector<std::string> Messages; // each as its title, a colon and its text
    std::vector<std::string> Calls;    // the kinds of the calls made, by name
};

// A folder with the files of the sample session, in memory.
class Site : InMemory {
public:
    Site();
    const std::string &Path() const { return folder.Path(); }
    bool Has(const std::string &name) const;
    std::string Read(const std::string &name) const; // "" for one that is not there
    void Write(const std::string &name, const std::string &bytes) const { folder.Write(name, bytes); }

    // The path of an earlier version of a.rpx that holds these bytes; "" where there is none.
    std::string CopyWith(const std::string &bytes) const;

private:
    Folder folder;
};

// Runs it in a process of its own in a new folder; without an act, the state before it. The program goes on behind it:
// an open group is left, the entries are saved.
Outcome Try(const Operation &operation, bool withAct, const FileFault &fault = {});

// Runs something in a process of its own and gives back what it returns; "killed by 9" or the like where it did not
// come to its end.
std::string InProcess(const std::function<std::string()> &act);

// The steps of a process that Try is made of. All work in the current directory.
void ConnectSession(); // the events, before all else
bool StartProgram();   // the program alone, past the question for unsaved entries; false where it does not come up with
                       // its template, or with any other message

// The program with its entries, a.rpx saved, one value changed since and that kept for the case of a crash. Large: with
// a megabyte of entries.
void StartSession(const std::string &path, bool large = false);
void Perform(const Operation &operation, const FileFault &fault, std::vector<MadeCall> &calls);

// Full runs rather than short ones (QUINTAVE_LONG is set).
bool LongRun();
