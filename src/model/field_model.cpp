// The variables of the field model (field_model.h).
#include "model/field_model.h"

const std::string NL = "\r\n";

Integer NumFields = 0;
Integer NumRows = 0;
Integer CurrentField = 0;
Integer ActiveList = 0;
Integer LoadState = 0;
Integer ListTop = 0;
Integer DataChanged = False;
Integer QuitSave = False;
Integer AllowInstances = True;
Integer GroupItemCount = 0;
Integer GroupOccurrenceCount = 0;
Integer GroupRecordLength = 0;
Integer GroupLoadedOccurrence = 0;
Integer LevelTableRows = 0;
Integer DeepestLevel = 0;
std::string TmpStr;
std::uint64_t TemplateMark = 0;
std::string TemplateName;
std::string TemplateDir;
std::string ResourceDir;
std::string ReportFileName;
std::string ReportFileDir;
std::string ReportFilePattern;
std::array<std::string, 6> FileFilter;
std::string StartFile;
std::string FileMark;
std::string FileMarkDir;
Table<std::string> FieldTitle;
Table<std::array<Integer, InfoColumns>> FieldInfo;
Table<Integer> FieldRow;
Table<std::array<std::string, 2>> FieldExtra;
Table<Integer> FieldGroup;
Table<Integer> FieldSection;
Table<Integer> FieldAbove;
Table<Integer> RowField;
Table<std::string> RowValue;
Table<std::array<Integer, 2>> GroupSlot;
Table<std::array<std::string, 2>> LevelTable;
std::string GroupItems;

bool IsGroupStart(Integer element) {
    return FieldInfo[element][TypeCode] == GroupMark && FieldInfo[element][KindItem] > 1;
}

bool IsGroupEnd(Integer element) {
    return FieldInfo[element][TypeCode] == GroupMark && FieldInfo[element][KindItem] <= 1;
}

bool IsSection(Integer element) { return FieldInfo[element][KindItem] == SectionKind; }

bool IsList(Integer element) { return FieldInfo[element][TypeCode] > 0; }

bool HasValue(Integer element) {
    return IsList(element) || (FieldInfo[element][TypeCode] >= Memo && FieldInfo[element][TypeCode] <= ShortText);
}

Integer LevelOf(Integer element) {
    const int level = FieldInfo[element][LevelItem];
    return ToInteger(level < 0 ? -level : level);
}

Integer GroupEnd(Integer start) { return FieldGroup[start]; }
