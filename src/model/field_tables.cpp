// Filling the tables of the field model (field_tables.h).
#include "model/field_tables.h"

#include "model/cells.h"
#include "model/field_model.h"
#include "model/store.h"
#include "model/work_files.h"
#include "platform/files.h"

namespace {

using ChoiceWidth = Integer (*)(const std::vector<std::string> &choices);

void SizeTables(const TemplateContent &content) {
    const Integer elements = ToInteger(content.Elements.size());
    RowField.Size(content.Rows);
    RowValue.Size(content.Rows);
    GroupSlot.Size(content.LargestGroup);
    FieldRow.Size(elements);
    FieldTitle.Size(elements);
    TheTemplate.Info.Size(elements);
    TheEntries.Chosen.Size(elements);
    FieldExtra.Size(elements);
    FieldGroup.Size(elements);
    FieldSection.Size(elements);
    FieldAbove.Size(elements);
    TheTemplate.GroupMembers.clear();
    GroupItems = {};
    DeepestLevel = content.DeepestLevel;
    LevelTableRows = ToInteger(DeepestLevel + 2);
    LevelTable.Size(LevelTableRows);
}

Integer TypeCodeOf(const TemplateElement &element, ChoiceWidth choiceWidth) {
    switch (element.Type) {
    case ElementType::Text: return element.Kind > LongestShortText ? LongText : ShortText;
    case ElementType::Memo: return Memo;
    case ElementType::List: return choiceWidth == nullptr ? Integer{1} : choiceWidth(element.Choices);
    case ElementType::GroupStart: return GroupMark;
    default: return NoValue;
    }
}

// Its list index + 1.
Integer AddFieldRow(Integer element) {
    RowField[NumRows] = element;
    NumRows = ToInteger(NumRows + 1);
    return NumRows;
}

void AddMember(Integer head, Integer member) {
    std::vector<Member> &members = TheTemplate.GroupMembers[head];
    const std::size_t first = members.empty() ? 0 : members.back().First + members.back().Cells;
    members.push_back({member, first, static_cast<std::size_t>(LengthOf(member))});
}

void PlaceField(Integer f, const TemplateElement &element, ChoiceWidth choiceWidth) {
    FieldInfo[f][TypeCode] = TypeCodeOf(element, choiceWidth);
    if (IsList(f)) FieldInfo[f][Choice] = -1;
    if (element.Type == ElementType::Memo && !element.InGroup) FieldInfo[f][KindItem] = NoLimit;
    if (!element.InGroup)
        FieldRow[f] = AddFieldRow(f);
    else if (HasValue(f))
        AddMember(FieldGroup[f], f);
}

void PlaceHeading(Integer f, const TemplateElement &element) {
    FieldRow[f] = -1;
    if (element.Type == ElementType::GroupEnd) FieldInfo[f][TypeCode] = GroupMark;
    // Above the second row a break would separate nothing.
    if (element.Kind == SectionKind && !element.InGroup && NumRows > 1) FieldRow[f] = AddFieldRow(f);
}

// The store that was written for a group: one occurrence.
void CountGroup(Integer head) {
    GroupItemCount = LengthOf(head);
    GroupRecordLength = GroupItemCount;
    GroupOccurrenceCount = 1;
}

// What each element stands under: the path beside the list is read off these links.
void LinkElements() {
    std::vector<Integer> last(static_cast<std::size_t>(DeepestLevel) + 1); // by level; a group's end heads nothing
    Integer section = 0;
    for (const Integer e : Elements()) {
        const auto level = static_cast<std::size_t>(LevelOf(e));
        FieldSection[e] = section;
        FieldAbove[e] = level == 0 ? Integer{0} : last[level - 1];
        if (IsSection(e)) section = e;
        if (!IsGroupEnd(e)) last[level] = e;
    }
}

void PlaceElements(const TemplateContent &content, ChoiceWidth choiceWidth) {
    const DirectoryNames files(TemplateDir); // help files are looked up by the thousand
    Integer head = 0;
    for (const TemplateElement &element : content.Elements) {
        NumFields = ToInteger(NumFields + 1);
        FieldTitle[NumFields] = element.Title;
        TheTemplate.Info[NumFields] = {NoValue, 0, element.Kind, element.Level};
        if (element.Type == ElementType::GroupStart) head = NumFields;
        if (element.Type == ElementType::GroupEnd) {
            FieldGroup[head] = NumFields;
            CountGroup(head);
        }
        if (element.InGroup) FieldGroup[NumFields] = head;
        if (element.Kind > 1) {
            FieldExtra[NumFields] = {element.Extra, files.Find(element.File)};
            PlaceField(NumFields, element, choiceWidth);
        } else {
            PlaceHeading(NumFields, element);
        }
    }
}

// The store holds one blank occurrence and nothing else. Looking costs much less than writing one over it.
bool IsBlankStore(Integer head) {
    std::string store;
    return FaultOf([&] { store = ReadWorkFile(GroupFileName(head)); }) == 0 && store == BlankStore(LengthOf(head));
}

} // namespace

void FillTables(const TemplateContent &content, ChoiceWidth choiceWidth) {
    SizeTables(content);
    NumFields = 0;
    NumRows = 0;
    CurrentField = 0;
    ActiveList = 0;
    LoadState = 0;
    ListTop = 0;
    DataChanged = False;
    TemplateMark = MarkOf(content);
    ForgetStores();
    PlaceElements(content, choiceWidth);
    LinkElements();
}

Integer ClearEntries() {
    Integer first = 0;
    for (std::string &value : RowValue) value.clear();
    for (const Integer e : Elements()) {
        FieldInfo[e][Choice] = IsList(e) ? Integer{-1} : Integer{0};
        if (!IsGroupStart(e) || IsBlankStore(e)) continue;
        const Integer fault = FaultOf([&] { ReplaceStore(e, BlankCells(static_cast<std::size_t>(LengthOf(e)))); });
        if (first == 0) first = fault;
    }
    return first;
}
