// Loading a Fields Template File (template_file.h). The work files it writes: work_files.cpp.
#include "model/template_file.h"

#include "groups/open_group.h"
#include "groups/store.h"
#include "main/main_window.h"
#include "main/recovery.h"
#include "main/session.h"
#include "model/field_model.h"
#include "model/template_reader.h"
#include "model/work_files.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"
#include "report/title_index.h"
#include "screen/row_text.h"
#include "screen/selected_field.h"

#include <algorithm>

namespace {

constexpr std::string_view NoTemplateCaption =
    "[No Fields Template Loaded -- Click on 'Field Template' to Load a Template!]";
constexpr long WidestChoiceList = 6528; // twips
constexpr long ChoiceListMargin = 320;  // twips for the list's frame and scroll bar

void TellWrongHeader() {
    MsgBox("This is not a valid Fields Template File!\n\r\n\rPlease Try Again.", OkOnly, "Quintave");
}

void TellUnreadable(Integer number) {
    MsgBox("Error: " + ErrorText(number) + NL +
               "Error reading this Fields Template File! (file damaged? choice list or group not ended? file locked? "
               "wrong privileges?). Correct the problem and try again, or pick another Fields Template File.",
           CriticalIcon, "ERROR LOADING " + NameText(TemplateName));
}

std::string TemplatePath() {
    const std::string name = FindName(TemplateDir, TemplateName);
    return name.empty() ? "" : TemplateDir + name;
}

void ApplyHeaderSuffix(std::string_view suffix) {
    AllowInstances = Truth(!suffix.starts_with('-'));
    const bool levelShown = !(suffix.size() == 2 && suffix.ends_with('-'));
    SetVisible(Quintave.Label2, levelShown);
    SetVisible(Quintave.DataLevelLabel, levelShown);
}

// Nothing of the old template stays on the screen, an open group included.
void ClearScreen() {
    // An edit that is still open belongs to a row that is still there.
    ShowSelectedField(Restart, PutAwayOnly);
    CloseGroupScreen();
    ForgetStores();
    for (const Integer list : {Integer{0}, GroupList}) {
        ClearRows(Quintave.List1.at(static_cast<std::size_t>(list)));
        Control &choices = Quintave.List2.at(static_cast<std::size_t>(list));
        ClearRows(choices);
        choices.Tag.clear();
        SetVisible(choices, false);
        SetVisible(OtherBox(list), false);
        SetText(OtherBox(list), "", 0);
    }
    for (Control &box : Quintave.Text1) {
        if (box.Name.empty()) continue;
        SetVisible(box, false);
        SetText(box, "", 0);
    }
    ClearRows(Quintave.SectionLabel);
    SetCaption(Quintave.DataLevelLabel, "");
    SetCaption(Quintave.helpline, "");
    SetCaption(Quintave.CommandAdd, "^Add/Open File");
}

void SizeTables(const TemplateContent &content) {
    const Integer elements = ToInteger(content.Elements.size());
    RowField.Size(content.Rows);
    RowValue.Size(content.Rows);
    GroupSlot.Size(content.LargestGroup);
    FieldRow.Size(elements);
    FieldTitle.Size(elements);
    FieldInfo.Size(elements);
    FieldExtra.Size(elements);
    FieldGroup.Size(elements);
    FieldSection.Size(elements);
    FieldAbove.Size(elements);
    GroupItems = " ";
}

Integer AddFieldRow(Integer element, std::string_view row) {
    const Integer index = NumRows;
    AddRow(Quintave.List1[0], row);
    RowField[index] = element;
    NumRows = ToInteger(NumRows + 1);
    return NumRows;
}

// The width of a choice list in twips, by its widest choice.
Integer ChoiceListWidth(const std::vector<std::string> &choices) {
    long widest = 0;
    for (const auto &choice : choices) {
        SetCaption(Quintave.SizerTest, choice);
        widest = std::max(widest, TextWidth(Quintave.SizerTest, choice));
    }
    return ToInteger(std::min(widest + ChoiceListMargin, WidestChoiceList));
}

Integer TypeCodeOf(const TemplateElement &element) {
    switch (element.Type) {
    case ElementType::Text: return element.Kind > LongestShortText ? LongText : ShortText;
    case ElementType::Memo: return Memo;
    case ElementType::List: return ChoiceListWidth(element.Choices);
    case ElementType::GroupStart: return GroupMark;
    default: return NoValue;
    }
}

void PlaceField(Integer f, const TemplateElement &element, const DirectoryNames &files) {
    FieldExtra[f] = {element.Extra, files.Find(element.File)};
    FieldInfo[f][TypeCode] = TypeCodeOf(element);
    FieldInfo[f][Choice] = element.Type == ElementType::List ? Integer{-1} : Integer{0};
    if (element.Type == ElementType::Memo && !element.InGroup) FieldInfo[f][KindItem] = NoLimit;
    if (element.InGroup) {
        FieldRow[f] = 0;
        return;
    }
    const std::string prefix = RowPrefix(element.Title);
    FieldRow[f] = AddFieldRow(f, element.Type == ElementType::GroupStart ? prefix + std::string(GroupRowText) : prefix);
}

void PlaceHeading(Integer f, const TemplateElement &element) {
    FieldRow[f] = -1;
    if (element.Type == ElementType::GroupEnd) FieldInfo[f][TypeCode] = GroupMark;
    // Above the second row a break would separate nothing.
    if (element.Kind == SectionKind && !element.InGroup && NumRows > 1) FieldRow[f] = AddFieldRow(f, SeparatorRow());
}

// What each element stands under: the path beside the list is read off these links.
void LinkElements() {
    std::vector<Integer> last(static_cast<std::size_t>(DeepestLevel) + 1); // by level; a group's end heads nothing
    Integer section = 0;
    for (int number = 1; number <= NumFields; ++number) {
        const Integer e = ToInteger(number);
        const auto level = static_cast<std::size_t>(LevelOf(e));
        FieldSection[e] = section;
        FieldAbove[e] = level == 0 ? Integer{0} : last[level - 1];
        if (IsSection(e)) section = e;
        if (!IsGroupEnd(e)) last[level] = e;
    }
}

void FillTables(const TemplateContent &content) {
    NumFields = 0;
    NumRows = 0;
    const DirectoryNames files(TemplateDir); // help files are looked up by the thousand
    std::string sections = "-1";
    Integer head = 0;
    for (const TemplateElement &element : content.Elements) {
        NumFields = ToInteger(NumFields + 1);
        FieldTitle[NumFields] = element.Title;
        FieldInfo[NumFields] = {NoValue, 0, element.Kind, element.Level};
        if (element.Type == ElementType::GroupStart) head = NumFields;
        if (element.Type == ElementType::GroupEnd) FieldGroup[head] = NumFields;
        if (element.InGroup) FieldGroup[NumFields] = head;
        if (element.Kind == SectionKind) sections += "|" + std::to_string(NumFields);
        if (element.Kind > 1)
            PlaceField(NumFields, element, files);
        else
            PlaceHeading(NumFields, element);
    }
    Quintave.SectionLabel.Tag = sections + "|" + std::to_string(NumFields + 1);
    Quintave.List1[GroupList].Tag = "-1";
    DeepestLevel = content.DeepestLevel;
    LevelTableRows = ToInteger(DeepestLevel + 2);
    LinkElements();
    LevelTable.Size(LevelTableRows);
    BuildTitleIndex();
    LevelTable.Size(LevelTableRows); // the index has passed its titles through it
}

void AddRowWithoutFields() {
    if (!Quintave.List1[0].Rows.empty()) return;
    AddRow(Quintave.List1[0], "NO DATA FIELDS");
    FieldInfo[0][TypeCode] = ShortText;
}

// Reads the template and writes its work files while everything of the old one still stands.
bool PrepareTemplate(const std::string &path, TemplateContent &content) {
    bool isRead = false;
    const Integer fault = FaultOf([&] {
        if (!path.empty()) content = ReadTemplate(path);
        isRead = true;
        ReplaceWorkFiles(content);
    });
    if (fault == 0) return true;
    HideBanner();
    isRead ? TellWorkFileError(fault) : TellUnreadable(fault);
    return false;
}

// The header of the template at a path, after its message where it is wrong or cannot be read.
enum class Header { Good, Wrong, Unreadable };

Header CheckHeader(const std::string &path, std::string &suffix) {
    bool good = false;
    const Integer fault = FaultOf([&] { good = ReadTemplateHeader(path, suffix); });
    if (fault != 0) {
        TellUnreadable(fault);
        return Header::Unreadable;
    }
    if (!good) TellWrongHeader();
    return good ? Header::Good : Header::Wrong;
}

// The first template cannot be used: the window opens empty, as where there is none.
void StartWithoutTemplate() {
    TemplateName.clear();
    LoadTemplateFile();
}

// The full path of the template that the user picks; "" for none.
std::string AskForTemplate() {
    Quintave.cmDialog = {.Title = "Select a new FIELDS TEMPLATE File...",
                         .InitDir = ReportFileDir,
                         .Filter = "Quintave FTF(*.ftf,*.tbl)|*.ftf;*.tbl|All files(*.*)|*.*",
                         .FileName = "",
                         .Flags = FileMustExist + HideReadOnly};
    return PickFile(Quintave.cmDialog, ShowOpen);
}

} // namespace

void ShowTemplateCaption() {
    SetCaption(Quintave.editframe, TemplatePath().empty() && NumFields == 0
                                       ? std::string(NoTemplateCaption)
                                       : "[Template: " + NameText(TemplateName) + "] - RPX File(s): ");
}

bool LoadTemplateFile() {
    ShowBanner("Quintave - Version 2.0");
    TemplateContent content;
    if (!PrepareTemplate(TemplatePath(), content)) return false;
    ClearScreen();
    SizeTables(content);
    CurrentField = 0;
    LoadState = 0;
    ListTop = 0;
    DataChanged = False;
    ActiveList = 0;
    TemplateMark = MarkOf(content);
    FillTables(content);
    SettleRecovery();
    AddRowWithoutFields();
    ShowTemplateCaption();
    HideBanner();
    return true;
}

bool LoadTemplateAt(const std::string &directory, const std::string &name) {
    const std::string oldDir = TemplateDir;
    const std::string oldName = TemplateName;
    TemplateDir = directory;
    TemplateName = name;
    std::string suffix;
    const std::string path = TemplatePath(); // its letters may be small where the name's are large
    if (CheckHeader(path.empty() ? directory + name : path, suffix) == Header::Good && LoadTemplateFile()) {
        ApplyHeaderSuffix(suffix);
        return true;
    }
    TemplateDir = oldDir;
    TemplateName = oldName;
    return false;
}

bool LoadFirstTemplate() {
    const std::string relative = TemplateName;
    std::string folder;
    SplitPath(relative, folder, TemplateName);
    TemplateDir = FindDirectory(ResourceDir, folder);
    const std::string path = TemplatePath();
    std::string suffix;
    if (path.empty()) {
        LoadTemplateFile();
    } else {
        const Header header = CheckHeader(path, suffix);
        if (header == Header::Wrong) {
            EndSession();
            return false;
        }
        if (header == Header::Good && LoadTemplateFile())
            ApplyHeaderSuffix(suffix);
        else
            StartWithoutTemplate();
    }
    CurrentField = 0;
    SetListIndex(Quintave.List1[0], 0);
    return true;
}

void CommandTemplate_Click() {
    QuitSave = True;
    TmpStr.clear();
    CommandReset_Click();
    if (TmpStr != "CANCELLED") {
        const std::string path = AskForTemplate();
        if (!path.empty()) {
            SplitPath(path, ReportFileDir, ReportFileName);
            LoadTemplateAt(ReportFileDir, ReportFileName);
        }
        FileMark = FirstLoad;
        CurrentField = 0;
        SetListIndex(ActiveRows(), 0);
    }
    QuitSave = False;
    ShowSelectedField(1, False);
    SetEnabled(Quintave.editframe, true);
    SetFocus(ActiveRows());
}
