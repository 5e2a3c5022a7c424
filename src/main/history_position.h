// What belongs to a state beside the entries: where the user stands, and under which name it is saved. The states:
// history_states.h.
#pragma once

#include "platform/runtime.h"

#include <string>

struct Change; // history_states.h

// Where the user stands.
struct Position {
    Integer Row = 0; // of the field list
    Integer Instance = 1;
    Integer Group = 0; // the element that starts the open one; 0 for none
    Integer Occurrence = 0;
    Integer GroupRow = 0;
};

Position PositionNow();
void ShowPosition(const Position &position);

// Where a change happened: where the user stood, unless it is one of another place alone.
Position PlaceOfChange(const Change &change, const Position &stood);

// One value has changed, and nothing else.
bool IsOneValue(const Change &change);

// The element of that value; 0 for none.
Integer ElementOf(const Change &change);

// The name that Save writes to, and the reports that the caption names.
struct ReportName {
    std::string Mark; // FileMark
    std::string MarkDir;
    std::string Caption;
    bool operator==(const ReportName &) const = default;
    bool IsSameFile(const ReportName &other) const; // by whatever links
};

ReportName ReportNameNow();
void PutReportName(const ReportName &name);

// What the next report does to the entries.
bool MergeIsOffered();

// A template was loaded; the entries are on the screen, not the panel of a print.
bool HasFirstState();
bool EntriesAreShown();
