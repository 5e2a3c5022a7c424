// The variables of the field model (field_model.h).
#include "model/field_model.h"

const std::string NL = "\r\n";

TemplateState TheTemplate;
EntriesState TheEntries;
ScreenState TheScreen;
FilesState TheFiles;

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

bool HasRow(Integer element) { return HasValue(element) && FieldRow[element] > 0; }

std::string &ValueOf(Integer element) { return RowValue[static_cast<Integer>(FieldRow[element] - 1)]; }

Integer LevelOf(Integer element) {
    const int level = FieldInfo[element][LevelItem];
    return ToInteger(level < 0 ? -level : level);
}

Integer GroupEnd(Integer start) { return FieldGroup[start]; }

const std::vector<Member> &Members(Integer head) {
    static const std::vector<Member> none;
    const auto found = TheTemplate.GroupMembers.find(head);
    return found == TheTemplate.GroupMembers.end() ? none : found->second;
}

Integer LengthOf(Integer element) {
    if (!IsGroupStart(element)) return FieldInfo[element][KindItem];
    const std::vector<Member> &members = Members(element);
    return members.empty() ? Integer{0} : ToInteger(members.back().First + members.back().Cells);
}

bool GroupIsOpen() { return ActiveList == GroupList; }

bool HasRememberedName() { return !FileMark.empty() && FileMark != FirstLoad; }
