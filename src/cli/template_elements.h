// The records of a template, one by one, and the choices behind them: what is wrong with each, and what it means for
// those that follow. From line to line: template_walk.cpp.
#pragma once

#include "platform/files.h"
#include "platform/runtime.h"

#include <cstddef>
#include <string>

struct TemplateLine;
struct TemplateLines;
struct TemplateWalk;

struct Record {
    long Line = 0;
    Integer Level = 0;
    Integer Kind = 0;
    bool LevelKnown = true; // it is a number of 16 bits
    bool KindKnown = true;  // it did not go past 16 bits
    std::string Type{};     // upper case
    std::string Title{};
    std::string Help{}; // the name of its file
};

struct Walk {
    TemplateLines &Lines;
    const DirectoryNames *Beside; // the names among which help files are looked for, or null
    TemplateWalk &Found;
    long GroupLine = 0; // of the open group's start; 0 outside groups
    int GroupLevel = 0;
    long GroupLength = 0;
    Record Above{};           // the field before this record; its line is 0 where there is none
    Record Untyped{};         // the title of a kind of 0 or 1 before this record, likewise
    std::size_t Deeper = 0;   // how many faults were told up to that of a field below another; 0 for none
    bool OddType = false;     // the record before has a type that is not known, which was told
    bool DividerTold = false; // the same slip in every line is told once
    bool OrphansTold = false; // so are all choices behind one record
};

// A fault that a load passes over, one that leads it astray, and one for which it refuses the template.
void Tell(Walk &walk, long line, const std::string &text);
void TellAstray(Walk &walk, long line, const std::string &text);
void Refuse(Walk &walk, long line, Integer error, const std::string &text);

// The record of a line of six items.
Record RecordOf(Walk &walk, const TemplateLine &line);

// Takes the choices behind the record, too.
void WalkElement(Walk &walk, const Record &record);

// The lines up to the end of the record's choices, or to the next that looks like a record.
void WalkChoices(Walk &walk, const Record &record);
