// All that a load asks and tells, the text included. Each front answers in its own way: the window with message boxes
// (load_command.cpp), quintave-cli with findings.
#pragma once

#include "platform/dialogs.h"
#include "platform/items.h"
#include "platform/runtime.h"

#include <cstddef>
#include <string>

enum class Notice : unsigned char {
    NotAReport,      // the file is none; nothing is loaded
    Damaged,         // an error ended the load; what stood before it stays
    TooDeep,         // a record is deeper than the template; Cancel ends the load
    NotInTemplate,   // a record's title is nowhere; No ends the load
    NotInList,       // a closed list does not have the value, which is refused
    OverwriteFields, // Yes replaces what fields hold, No adds to it
    OverwriteGroups, // the same for groups
    ValuesCut,       // behind a load: some values were cut to the cells of their members
    ValueCut,        // one of them, as it comes; for fronts that tell each by its line
    NotUtf8,         // the file says that it is UTF-8, and not all of it is
    LooksUtf8,       // it does not say so, and all of it is
    ValueReplaced,   // a value takes the place of another one, or occurrences that of others; nobody is asked
};

struct LoadNotice {
    Notice What{};
    std::string Title{};
    std::string Text{};
    int Style = 0;       // of a message box
    Integer Element = 0; // that it is about; 0 for none
    Integer Error = 0;   // of Damaged
    long Line = 0;       // on which the record begins, from 1; where the front wants to know
};

// Who wants a report loaded.
struct LoadFront {
    Answer (*Tell)(const LoadNotice &notice) = nullptr;
    void (*Placed)(Integer row) = nullptr; // a row of the field list has another value; or null
    bool WantsLines = false;
    void (*Progress)(std::size_t bytes) = nullptr; // so much of the file has been read, told of each record; or null
};

// What the user decided where the file and the entries both hold data: Overwrite from the start where the template
// turns instances off.
inline constexpr Integer Undecided = -1;
inline constexpr Integer Overwrite = 0;
inline constexpr Integer AddInstances = 1;
extern Integer MergeFlag;

// Something of the report being read has no place in the entries, or lost it to something else of the same report.
void NoteLeftOut();
bool LeftSomethingOut();

// A load of this input begins, which must outlive it: nothing is decided.
void BeginNotices(const LoadFront &front, const ItemInput &input);

// A record begins at this place of the input; the lines of notices are its line.
void NoteRecord(std::size_t at);

void NotePlaced(Integer row);

// Each tells its notice; the text says the rest.
void TellNotAReport();
void TellDamaged(Integer error);
void TellEncoding(); // where it may not be the one that the file was written in
bool MaySkipTooDeep(Integer level, const std::string &title); // false: the load ends
bool MayDropRecord(const std::string &title);                 // false: the load ends
void TellNotInList(Integer element, const std::string &text);
void AskOverwriteFields(); // where nothing was decided yet in this load: a field holds a value,
void AskOverwriteGroups(); // a group holds data
void TellValueCut(Integer member);
void TellValuesCut(std::size_t members, Integer first);
void TellValueReplaced(Integer element);
