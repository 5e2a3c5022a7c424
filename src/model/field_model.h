// The field model: the elements of the loaded template, the rows of the field list and the values entered. Every room
// reads and changes these variables by name; the template loader (template_file.cpp) sizes and fills them.
#pragma once

#include "platform/runtime.h"

#include <array>
#include <cstdint>
#include <string>

// Columns of FieldInfo().
enum InfoColumn : std::size_t {
    TypeCode,   // one of the codes below
    Choice,     // LIST: list index of the chosen entry, -1 for none; group start: occurrence last shown, from 0
    KindItem,   // a field's longest value in characters; a heading's kind
    LevelItem,  // nesting level, signed
    InfoColumns // their number
};

// Type codes; a positive one is a LIST, the width of its choice list in twips.
enum TypeCodes : Integer {
    NoValue = 0,
    ShortText = -1,
    LongText = -2,
    Memo = -3,
    GroupMark = -99,
};

inline constexpr Integer LongestShortText = 50;
inline constexpr Integer NoLimit = 999;    // a length limit that limits nothing
inline constexpr Integer SectionKind = -1; // kind of a section break
inline constexpr Integer GroupList = 3;    // ActiveList while a group is open
inline constexpr Integer GroupHeader = 4;  // bytes of the two counts at the start of a group's store

// Columns of FieldExtra().
enum ExtraColumn : std::size_t { HelpLine, HelpFile };

// Columns of GroupSlot().
enum SlotColumn : std::size_t {
    SlotField,    // row-to-element map of the list that is not in view
    SlotFirstCell // first item in GroupItems() of the member on that row, from 1
};

extern const std::string NL; // line break of messages and values

// --- Counters and scalars
// ---------------------------------------------------------------------------------------------

extern Integer NumFields;                     // elements of the template: 1 ... NumFields
extern Integer NumRows;                       // rows of the field list
extern Integer CurrentField;                  // list index of the selected row
extern Integer ActiveList;                    // 0 the field list; GroupList while a group is open, or being loaded
extern Integer LoadState;                     // -2 before the first template is loaded, then 0
extern Integer ListTop;                       // last selected index of the choice list; outside it: none
extern Integer DataChanged;                   // true: entries were not saved
extern Integer QuitSave;                      // true while Save runs for another command
extern Integer AllowInstances;                // false where the template's header turns instances off
extern Integer GroupItemCount;                // characters of one occurrence of the open group
extern Integer GroupOccurrenceCount;          // occurrences of the open group
extern Integer GroupRecordLength;             // bytes of one occurrence in its store; equal to GroupItemCount
extern Integer GroupLoadedOccurrence;         // index of the occurrence in GroupItems()
extern Integer LevelTableRows;                // upper bound of LevelTable()
extern Integer DeepestLevel;                  // largest absolute level of the template
extern std::string TmpStr;                    // result or argument that passes between procedures
extern std::uint64_t TemplateMark;            // tells the template's elements from those of another one
extern std::string TemplateName;              // file name of the template; empty: none
extern std::string TemplateDir;               // its directory, ending in "/"
extern std::string ResourceDir;               // where quintave.tbl and the work files lie, ending in "/"
extern std::string ReportFileName;            // file chosen last; empty: none
extern std::string ReportFileDir;             // its directory, ending in "/"
extern std::string ReportFilePattern;         // "*.rpx" once a template was looked for
extern std::array<std::string, 6> FileFilter; // filter pairs, and two flags
extern std::string StartFile;                 // report named by the resource table; "-1" or empty: none
extern std::string FileMark;                  // name Save writes to; "FirstLoad" before any, "" after a merge
extern std::string FileMarkDir;               // its directory

inline constexpr std::string_view FirstLoad = "FirstLoad";

// --- Tables by element number (0 is never an element)
// -------------------------------------------------------------------

extern Table<std::string> FieldTitle;
extern Table<std::array<Integer, InfoColumns>> FieldInfo;
extern Table<Integer> FieldRow; // list index + 1 of its row; 0 inside a group, -1 without a row
extern Table<std::array<std::string, 2>> FieldExtra;
extern Table<Integer> FieldGroup; // of a group start the element that ends it, of a member its start; else 0

extern Table<Integer> FieldSection; // the last section break before an element; 0 for none
extern Table<Integer> FieldAbove;   // the last element before it that stands one level higher; 0 for none

// --- Tables by row (list index)
// -----------------------------------------------------------------------------------------

extern Table<Integer> RowField;     // element on the row
extern Table<std::string> RowValue; // its value, instances joined by "|"

// --- Other tables
// -------------------------------------------------------------------------------------------------------

extern Table<std::array<Integer, 2>> GroupSlot;
extern Table<std::array<std::string, 2>>
    LevelTable;                // per level: title read from a report, title passed in the template
extern std::string GroupItems; // the occurrence in hand; index 0 is a blank, items count from 1

// The element opens a repeatable group. The element that closes it has the same code but a kind of 1 or less.
bool IsGroupStart(Integer element);

// The element is a section break.
bool IsSection(Integer element);

// The element closes a repeatable group.
bool IsGroupEnd(Integer element);

// The element has a choice list.
bool IsList(Integer element);

// The element holds a value: TEXT, MEMO or LIST.
bool HasValue(Integer element);

// The element's nesting level without its sign.
Integer LevelOf(Integer element);

// The element that ends the group which another one starts.
Integer GroupEnd(Integer start);
