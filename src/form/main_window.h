// The main window's controls, under their designer names. Where they stand: main/layout.cpp; what the commands among
// them are called, and what runs when something happens to any: main/commands.cpp.
#pragma once

#include "platform/controls.h"
#include "platform/dialogs.h"

#include <array>

// Indexes of FldChange().
enum FldChangeButton : Integer { Previous, Top, Next, Bottom };

// Indexes of PrintFramePrint().
enum PrintButton : Integer { ToPrinter, ToFile };

// Members of control arrays. Lists and boxes for values are grey until they have the focus.
inline Control LabelAt(std::string_view name, Integer index, const char *caption) {
    return {.Type = Kind::Label, .Name = name, .Index = index, .Caption = caption};
}

// What a button is called stands in the table of commands.
inline Control ButtonAt(std::string_view name, Integer index = -1) {
    return {.Type = Kind::Button, .Name = name, .Index = index};
}

inline Control ListAt(std::string_view name, Integer index, std::string_view title, bool visible = false) {
    return {.Type = Kind::List,
            .Name = name,
            .Index = index,
            .Title = title,
            .Face = Font::Fixed,
            .Visible = visible,
            .BackColor = LightGrey};
}

inline Control BoxAt(std::string_view name, Integer index, std::string_view title, bool manyLines = false) {
    return {.Type = Kind::TextBox,
            .Name = name,
            .Index = index,
            .Title = title,
            .ManyLines = manyLines,
            .Visible = false,
            .BackColor = LightGrey};
}

// A control array whose every index is in use is filled from 0; List1, List2, Text1 and Text2 have gaps, because their
// index tells the list in use (ActiveList) and the kind of box.
struct QuintaveForm {
    // Start-up frame
    Control Frame5{.Type = Kind::Frame, .Name = "Frame5", .Caption = "Quintave..."};
    Control Image1{.Type = Kind::Image, .Name = "Image1"};
    Control Label1{.Type = Kind::Label, .Name = "Label1", .Face = Font::Banner};
    Control Label6{.Type = Kind::Label, .Name = "Label6"};
    Control Label7{.Type = Kind::Label, .Name = "Label7"};
    Control Label9{.Type = Kind::Label, .Name = "Label9"};
    std::array<Control, 2> Label5{
        {LabelAt("Label5", 0, "Today's Date (as set on your computer):"),
         LabelAt("Label5", 1,
                 "Note that Quintave automatically includes this date on all print outs.  If the date is incorrect, "
                 "please quit and correct the problem.")}};
    Control DateLabel{.Type = Kind::Label, .Name = "DateLabel"};
    Control LogoOff = ButtonAt("LogoOff");
    Control LogoQuit = ButtonAt("LogoQuit");
    Control Dir1{.Type = Kind::List, .Name = "Dir1", .Visible = false, .TakesFocus = false}; // its tag is its path
    Control Timer1{.Type = Kind::Timer, .Name = "Timer1", .Enabled = false};
    Control GivenTimer{.Type = Kind::Timer, .Name = "GivenTimer", .Enabled = false, .Interval = 200};
    Control RecoveryTimer{.Type = Kind::Timer, .Name = "RecoveryTimer", .Enabled = false, .Interval = 1000};

    // Entry screen
    Control editframe{.Type = Kind::Frame, .Name = "editframe", .Caption = "Active Templates :", .Visible = false};
    std::array<Control, 4> List1{{ListAt("List1", 0, "Fields", true), {}, {}, ListAt("List1", 3, "Group fields")}};
    std::array<Control, 4> List2{{ListAt("List2", 0, "Choices"), {}, {}, ListAt("List2", 3, "Group choices")}};
    std::array<Control, 7> Text1{{{},
                                  BoxAt("Text1", 1, "Value"),
                                  BoxAt("Text1", 2, "Value"),
                                  BoxAt("Text1", 3, "Value", true),
                                  BoxAt("Text1", 4, "Value"),
                                  BoxAt("Text1", 5, "Value"),
                                  BoxAt("Text1", 6, "Value", true)}};
    std::array<Control, 6> Text2{{{}, {}, BoxAt("Text2", 2, "Other value"), {}, {}, BoxAt("Text2", 5, "Other value")}};
    Control SectionLabel{.Type = Kind::List, .Name = "SectionLabel", .Title = "Sections", .TakesFocus = false};
    Control Label2{.Type = Kind::Label, .Name = "Label2", .Caption = "Data Level:"};
    Control DataLevelLabel{.Type = Kind::Label, .Name = "DataLevelLabel"};
    Control helpline{.Type = Kind::Label, .Name = "helpline", .Title = "Help line", .Face = Font::Serif, .Tag = "0"};
    Control SizerTest{.Type = Kind::Label, .Name = "SizerTest", .Face = Font::Fixed, .Visible = false};
    Control CommandAdd = ButtonAt("CommandAdd");
    Control CommandSave = ButtonAt("CommandSave");
    Control CommandSaveAs = ButtonAt("CommandSaveAs");
    Control CommandPrint = ButtonAt("CommandPrint");
    Control CommandReset = ButtonAt("CommandReset");
    Control CommandTemplate = ButtonAt("CommandTemplate");
    Control CommandQuit = ButtonAt("CommandQuit");
    Control KeyList = ButtonAt("KeyList"); // stands nowhere: its key alone presses it
    Control UndoKey = ButtonAt("UndoKey"); // so do these
    Control RedoKey = ButtonAt("RedoKey");
    Control CommandMoreHelp{.Type = Kind::Button, .Name = "CommandMoreHelp", .Enabled = false};

    // Instances of the selected field
    Control MultiInstanceFrame{.Type = Kind::Frame, .Name = "MultiInstanceFrame"};
    Control FIAdd{.Type = Kind::Button, .Name = "FIAdd", .Title = "Add instance"};
    Control FIDel{.Type = Kind::Button, .Name = "FIDel", .Title = "Delete instance"};
    Control FIScroll{.Type = Kind::ScrollBar, .Name = "FIScroll", .Title = "Instance shown"};
    std::array<Control, 2> FILabel{{LabelAt("FILabel", 0, "1"), LabelAt("FILabel", 1, "1")}};
    std::array<Control, 2> FIPartner{
        {LabelAt("FIPartner", 0, "Field: Instances"), LabelAt("FIPartner", 1, "This: Instance")}};

    // Open group
    Control TableFrame{.Type = Kind::Frame,
                       .Name = "TableFrame",
                       .Caption = "REPEATABLE GROUP:  CONTACT INFORMATION",
                       .Visible = false};
    Control GrpCommands{.Type = Kind::Frame, .Name = "GrpCommands"};
    std::array<Control, 4> FldChange{{ButtonAt("FldChange", Previous), ButtonAt("FldChange", Top),
                                      ButtonAt("FldChange", Next), ButtonAt("FldChange", Bottom)}};
    Control TblFldInsert = ButtonAt("TblFldInsert");
    Control TblFldDelete = ButtonAt("TblFldDelete");
    Control TblFldNum{.Type = Kind::ComboBox, .Name = "TblFldNum", .Title = "Occurrence"};
    Control TblLabel{.Type = Kind::Label, .Name = "TblLabel", .Caption = "Instance"};
    Control GrpExit{.Type = Kind::Button, .Name = "GrpExit", .Visible = false};

    // Print options panel
    Control PrintFrame{.Type = Kind::Frame, .Name = "PrintFrame", .Caption = "PRINTING...", .Visible = false};
    Control PrintFrameIndent = ButtonAt("PrintFrameIndent");
    Control PrintIndent{
        .Type = Kind::TextBox, .Name = "PrintIndent", .Title = "Spaces to indent data", .BackColor = White};
    Control PrintFrameToggler = ButtonAt("PrintFrameToggler");
    Control Combo1{.Type = Kind::ComboBox, .Name = "Combo1", .Title = "Copies to print"};
    Control Combo2{.Type = Kind::ComboBox, .Name = "Combo2", .Title = "Title/data separator"};
    std::array<Control, 2> PrintFramePrint{
        {ButtonAt("PrintFramePrint", ToPrinter), ButtonAt("PrintFramePrint", ToFile)}};
    Control PrintFrameCancel = ButtonAt("PrintFrameCancel");
    Control printLabel{.Type = Kind::Label, .Name = "printLabel", .Caption = "Waiting for PRINT command"};
    std::array<Control, 3> Label3{{LabelAt("Label3", 0, "Toggle Titles/Data Layout Options:"),
                                   LabelAt("Label3", 1, "Spaces to Indent Data:"),
                                   LabelAt("Label3", 2, "Title/Data Separator:")}};
    std::array<Control, 2> Label4{{LabelAt("Label4", 0, "Copies to Print:"), LabelAt("Label4", 1, "Status:")}};

    CommonDialog cmDialog;
};

extern QuintaveForm Quintave;
