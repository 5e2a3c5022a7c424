// Loading a Fields Template File (template_command.h). The work files it writes: model/work_files.cpp.
#include "main/template_command.h"

#include "form/main_window.h"
#include "groups/open_group.h"
#include "main/recovery.h"
#include "main/session.h"
#include "model/field_model.h"
#include "model/field_tables.h"
#include "model/row_text.h"
#include "model/template_reader.h"
#include "model/text_files.h"
#include "model/work_files.h"
#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/front.h"
#include "report/title_index.h"
#include "screen/selected_field.h"
#include "screen/selection.h"

#include <algorithm>

namespace {

constexpr std::string_view NoTemplateCaption =
    "[No Fields Template Loaded -- Click on 'Field Template' to Load a Template!]";
constexpr long WidestChoiceList = 6528; // twips
constexpr long ChoiceListMargin = 320;  // twips for the list's frame and scroll bar

void TellWrongHeader() { MsgBox(WrongHeaderText, OkOnly, "Quintave"); }

// The line is that where the template goes wrong; 0 where it could not be read at all.
void TellUnreadable(Integer number, long line) {
    std::string text = UnreadableText(number);
    if (line > 0) text += std::string(NL) + NL + "Look at line " + std::to_string(line) + " first.";
    MsgBox(text, CriticalIcon, "ERROR LOADING " + NameText(TemplateName));
}

std::string TemplatePath() {
    const std::string name = FindName(TemplateDir, TemplateName);
    return name.empty() ? "" : TemplateDir + name;
}

void ApplyHeaderSuffix(std::string_view suffix) {
    AllowInstances = Truth(!TurnsInstancesOff(suffix));
    const bool levelShown = !(suffix.size() == 2 && suffix.ends_with('-'));
    SetVisible(Quintave.Label2, levelShown);
    SetVisible(Quintave.DataLevelLabel, levelShown);
}

// Nothing of the old template stays on the screen, an open group included.
void ClearScreen() {
    // An edit that is still open belongs to a row that is still there.
    ShowSelectedField(Restart, PutAwayOnly);
    CloseGroupScreen();
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
    ClearRows(Quintave.TblFldNum);
    ClearRows(Quintave.SectionLabel);
    SetCaption(Quintave.DataLevelLabel, "");
    SetCaption(Quintave.helpline, "");
    OfferMerge(false);
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

std::string RowOf(Integer element) {
    if (IsSection(element)) return SeparatorRow();
    const std::string prefix = RowPrefix(FieldTitle[element]);
    return IsGroupStart(element) ? prefix + std::string(GroupRowText) : prefix;
}

// The field list, and the section breaks that the path beside it is read off.
void ShowFields() {
    for (Integer row = 0; row < NumRows; ++row) AddRow(Quintave.List1[0], RowOf(RowField[row]));
    std::string sections = "-1";
    for (const Integer e : Elements())
        if (IsSection(e)) sections += "|" + std::to_string(e);
    Quintave.SectionLabel.Tag = sections + "|" + std::to_string(NumFields + 1);
    Quintave.List1[GroupList].Tag = "-1";
}

void AddRowWithoutFields() {
    if (!Quintave.List1[0].Rows.empty()) return;
    AddRow(Quintave.List1[0], "NO DATA FIELDS");
    FieldInfo[0][TypeCode] = ShortText;
}

// Reads the template and writes its work files while everything of the old one still stands.
bool PrepareTemplate(const std::string &path, TemplateContent &content) {
    bool isRead = false;
    long line = 0;
    long notUtf8 = 0;
    const Integer fault = FaultOf([&] {
        if (!path.empty()) {
            const ItemInput input = TemplateText(ReadFile(path));
            notUtf8 = LineNotUtf8(input);
            content = ReadTemplate(input, &line);
        }
        isRead = true;
        ReplaceWorkFiles(content);
    });
    if (fault == 0 && notUtf8 > 0)
        MsgBox("This Fields Template File says that it is UTF-8, and in line " + std::to_string(notUtf8) +
                   " it is not. What is no UTF-8 was read as Windows-1252.",
               ExclamationIcon, NameText(TemplateName));
    if (fault == 0) return true;
    HideBanner();
    isRead ? TellWorkFileError(fault) : TellUnreadable(fault, line);
    return false;
}

// The header of the template at a path, after its message where it is wrong or cannot be read.
enum class Header { Good, Wrong, Unreadable };

Header CheckHeader(const std::string &path, std::string &suffix) {
    bool good = false;
    const Integer fault = FaultOf([&] { good = ReadTemplateHeader(path, suffix); });
    if (fault != 0) {
        TellUnreadable(fault, 0);
        return Header::Unreadable;
    }
    if (!good) TellWrongHeader();
    return good ? Header::Good : Header::Wrong;
}

// Puts a template whose work files are there onto the screen, in the place of the old one.
void ShowTemplate(const TemplateContent &content) {
    ClearScreen();
    FillTables(content, ChoiceListWidth);
    BuildTitleIndex();
    ShowFields();
    SettleRecovery();
    AddRowWithoutFields();
    ShowTemplateCaption();
    HideBanner();
}

// The first template cannot be used, as was told: the window opens empty, as where there is none.
void StartWithoutTemplate() {
    TemplateName.clear();
    FaultOf([] { ReplaceWorkFiles({}); }); // left-overs that cannot be removed are in nobody's way
    ShowTemplate({});
}

// The full path of the template that the user picks; "" for none.
std::string AskForTemplate() {
    Quintave.cmDialog = {.Title = "Select a new FIELDS TEMPLATE File...",
                         .InitDir = TemplateDir,
                         .Filter = "Quintave FTF(*.ftf,*.tbl)|*.ftf;*.tbl|All files(*.*)|*.*",
                         .FileName = "",
                         .Flags = FileMustExist + HideReadOnly,
                         .Places = {ResourceDir}};
    return PickFile(Quintave.cmDialog, ShowOpen);
}

} // namespace

bool TemplateIsThere() { return NumFields > 0 || !TemplatePath().empty(); }

void ShowTemplateCaption() {
    SetCaption(Quintave.editframe, TemplateIsThere() ? "[Template: " + NameText(TemplateName) + "] - RPX File(s): "
                                                     : std::string(NoTemplateCaption));
}

bool LoadTemplateFile() {
    ShowBanner("Quintave - Version 2.0");
    TemplateContent content;
    if (!PrepareTemplate(TemplatePath(), content)) return false;
    ShowTemplate(content);
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
    const std::string path = TemplatePath();
    std::string suffix;
    const Header header = path.empty() ? Header::Good : CheckHeader(path, suffix);
    if (header == Header::Wrong) {
        EndSession();
        return false;
    }
    if (header == Header::Good && LoadTemplateFile())
        ApplyHeaderSuffix(suffix);
    else
        StartWithoutTemplate();
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
    ShowSelectedField(Restart);
    SetEnabled(Quintave.editframe, true);
    SetFocus(ActiveRows());
}
