// The field model: the elements of the loaded template, the rows of the field list and the values entered. What all
// rooms share lies in four structs by its lifetime: a template's, the entries', the screen's, the files'. Each variable
// is known by its own name; field_tables.cpp sizes and fills what belongs to a template.
#pragma once

#include "platform/runtime.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

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

// Columns of FieldExtra().
enum ExtraColumn : std::size_t { HelpLine, HelpFile };

// Columns of GroupSlot().
enum SlotColumn : std::size_t {
    SlotField,    // row-to-element map of the list that is not in view
    SlotFirstCell // first item in GroupItems() of the member on that row, from 1
};

// Columns of LevelTable().
enum LevelColumn : std::size_t { TitleRead }; // the other one held titles of the template

extern const std::string NL; // line break of messages and values

inline constexpr std::string_view FirstLoad = "FirstLoad";

// A member's place in an occurrence of its group.
struct Member {
    Integer Element = 0;
    std::size_t First = 0; // its first cell, from 0
    std::size_t Cells = 0;
};

// Occurrences of a group as its store has them (cells.h).
struct Cells {
    std::size_t Record = 0; // bytes of one
    bool Wide = false;      // a character of theirs is not in the code page
    std::string Bytes;

    bool operator==(const Cells &) const = default;
};

// What comes with a template and goes with it.
struct TemplateState {
    Integer NumFields = 0;          // elements of the template: 1 ... NumFields
    Integer NumRows = 0;            // rows of the field list
    Integer AllowInstances = True;  // false where the template's header turns instances off
    Integer LevelTableRows = 0;     // upper bound of LevelTable()
    Integer DeepestLevel = 0;       // largest absolute level of the template
    std::uint64_t TemplateMark = 0; // tells the template's elements from those of another one
    std::string TemplateName;       // file name of the template; empty: none
    std::string TemplateDir;        // its directory, ending in "/"

    // By element number; 0 is never an element.
    Table<std::string> FieldTitle;
    Table<std::array<Integer, InfoColumns>> Info; // FieldInfo() but for Choice, whose cells here mean nothing
    Table<Integer> FieldRow;                      // list index + 1 of its row; 0 inside a group, -1 without a row
    Table<std::array<std::string, 2>> FieldExtra;
    Table<Integer> FieldGroup;   // of a group start the element that ends it, of a member its start; else 0
    Table<Integer> FieldSection; // the last section break before an element; 0 for none
    Table<Integer> FieldAbove;   // the last element before it that stands one level higher; 0 for none

    std::unordered_map<Integer, std::vector<Member>> GroupMembers; // by the element that starts the group
    Table<std::array<std::string, 2>> LevelTable; // per level: title read from a report, title passed in the template
};

// What the user entered but for the stores of groups, which are files. A snapshot of the entries is a copy of this.
struct EntriesState {
    Table<std::string> RowValue; // by row: its value, instances joined by "|"
    Table<Integer> Chosen;       // by element: the column Choice of FieldInfo()
    Cells GroupItems;            // the occurrence in hand
    Integer DataChanged = False; // true: entries were not saved
    std::string FileMark;        // name Save writes to; "FirstLoad" before any, "" after a merge
    std::string FileMarkDir;     // its directory

    bool operator==(const EntriesState &) const = default;
};

// What the screen shows of it.
struct ScreenState {
    Integer CurrentField = 0; // list index of the selected row; 777 while a report is being loaded
    Integer ActiveList = 0;   // 0 the field list; GroupList while a group is open
    Integer LoadState = 0;    // -2 before the first template; the selected row, while the help window is open
    Integer ListTop = 0;      // last selected index of the choice list; outside it: none
    Integer QuitSave = False; // true while Save runs for another command
    Table<Integer> RowField;  // by row of the list in view: the element on it
    Table<std::array<Integer, 2>> GroupSlot;
    Integer GroupItemCount = 0;        // characters of one occurrence of the group opened last, or else loaded last
    Integer GroupOccurrenceCount = 0;  // its occurrences
    Integer GroupRecordLength = 0;     // cells of one occurrence in its store; equal to GroupItemCount
    Integer GroupLoadedOccurrence = 0; // index of the occurrence in GroupItems()
    std::string TmpStr;                // result or argument that passes between procedures
};

// Where the files lie.
struct FilesState {
    std::string ResourceDir;               // where quintave.tbl and the work files lie, ending in "/"
    std::string ReportFileName;            // file chosen last; empty: none
    std::string ReportFileDir;             // its directory, ending in "/"
    std::string ReportFilePattern;         // "*.rpx" once a template was looked for
    std::array<std::string, 6> FileFilter; // filter pairs, and two flags
    long Saves = 0;                        // reports saved so far
    std::string StartFile;                 // report named by the resource table; "-1" or empty: none
};

extern TemplateState TheTemplate;
extern EntriesState TheEntries;
extern ScreenState TheScreen;
extern FilesState TheFiles;

// Each by its own name.
inline Integer &NumFields = TheTemplate.NumFields;
inline Integer &NumRows = TheTemplate.NumRows;
inline Integer &AllowInstances = TheTemplate.AllowInstances;
inline Integer &LevelTableRows = TheTemplate.LevelTableRows;
inline Integer &DeepestLevel = TheTemplate.DeepestLevel;
inline std::uint64_t &TemplateMark = TheTemplate.TemplateMark;
inline std::string &TemplateName = TheTemplate.TemplateName;
inline std::string &TemplateDir = TheTemplate.TemplateDir;
inline auto &FieldTitle = TheTemplate.FieldTitle;
inline auto &FieldRow = TheTemplate.FieldRow;
inline auto &FieldExtra = TheTemplate.FieldExtra;
inline auto &FieldGroup = TheTemplate.FieldGroup;
inline auto &FieldSection = TheTemplate.FieldSection;
inline auto &FieldAbove = TheTemplate.FieldAbove;
inline auto &LevelTable = TheTemplate.LevelTable;

inline auto &RowValue = TheEntries.RowValue;
inline Cells &GroupItems = TheEntries.GroupItems;
inline Integer &DataChanged = TheEntries.DataChanged;
inline std::string &FileMark = TheEntries.FileMark;
inline std::string &FileMarkDir = TheEntries.FileMarkDir;

inline Integer &CurrentField = TheScreen.CurrentField;
inline Integer &ActiveList = TheScreen.ActiveList;
inline Integer &LoadState = TheScreen.LoadState;
inline Integer &ListTop = TheScreen.ListTop;
inline Integer &QuitSave = TheScreen.QuitSave;
inline auto &RowField = TheScreen.RowField;
inline auto &GroupSlot = TheScreen.GroupSlot;
inline Integer &GroupItemCount = TheScreen.GroupItemCount;
inline Integer &GroupOccurrenceCount = TheScreen.GroupOccurrenceCount;
inline Integer &GroupRecordLength = TheScreen.GroupRecordLength;
inline Integer &GroupLoadedOccurrence = TheScreen.GroupLoadedOccurrence;
inline std::string &TmpStr = TheScreen.TmpStr;

inline std::string &ResourceDir = TheFiles.ResourceDir;
inline std::string &ReportFileName = TheFiles.ReportFileName;
inline std::string &ReportFileDir = TheFiles.ReportFileDir;
inline std::string &ReportFilePattern = TheFiles.ReportFilePattern;
inline auto &FileFilter = TheFiles.FileFilter;
inline std::string &StartFile = TheFiles.StartFile;

// FieldInfo(), whose columns lie with the template but for what the user chose.
struct FieldInfoRow {
    Integer Element;
    Integer &operator[](InfoColumn column) const {
        return column == Choice ? TheEntries.Chosen[Element] : TheTemplate.Info[Element][column];
    }
};

struct FieldInfoTable {
    FieldInfoRow operator[](Integer element) const { return {element}; }
};

inline constexpr FieldInfoTable FieldInfo;

// All elements in template order: for (const Integer e : Elements()).
struct Elements {
    struct Iterator {
        int At; // behind the last of 32,767 it is one more than an Integer can hold
        Integer operator*() const { return static_cast<Integer>(At); }
        void operator++() { ++At; }
        bool operator==(const Iterator &) const = default;
    };
    static Iterator begin() { return {1}; }
    static Iterator end() { return {NumFields + 1}; }
};

bool IsGroupStart(Integer element); // opens a repeatable group
bool IsGroupEnd(Integer element);   // closes one: the same code, but a kind of 1 or less
bool IsSection(Integer element);    // a section break
bool IsList(Integer element);       // has a choice list
bool HasValue(Integer element);     // a TEXT, MEMO or LIST
bool HasRow(Integer element);       // the same, on a row of its own

// The value of an element that has a row.
std::string &ValueOf(Integer element);

Integer LevelOf(Integer element); // its nesting level without its sign
Integer GroupEnd(Integer start);  // the element that ends the group which another one starts
Integer LengthOf(
    Integer element); // longest value of a field in characters; of a group start the cells of an occurrence

// The members of the group that an element starts, in template order.
const std::vector<Member> &Members(Integer head);

// A group is open: its list has taken the field list's place.
bool GroupIsOpen();

// Save writes without asking for a name, to FileMark.
bool HasRememberedName();
