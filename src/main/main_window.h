// The main window's controls, under their designer names. Where they stand: layout.cpp; what runs when something
// happens to them: events.cpp.
#pragma once

#include "platform/controls.h"
#include "platform/dialogs.h"

#include <array>

// Indexes of FldChange().
enum FldChangeButton : Integer { Previous, Top, Next, Bottom };

// Indexes of PrintFramePrint().
enum PrintButton : Integer { ToPrinter, ToFile };

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
    std::array<Control, 2> Label5{{
        {.Type = Kind::Label, .Name = "Label5", .Index = 0, .Caption = "Today's Date (as set on your computer):"},
        {.Type = Kind::Label,
         .Name = "Label5",
         .Index = 1,
         .Caption = "Note that Quintave automatically includes this date on all print outs.  If the date is incorrect, "
                    "please quit and correct the problem."},
    }};
    Control DateLabel{.Type = Kind::Label, .Name = "DateLabel"};
    Control LogoOff{.Type = Kind::Button, .Name = "LogoOff", .Caption = "Use Quintave", .Hint = "Begin to work"};
    Control LogoQuit{.Type = Kind::Button, .Name = "LogoQuit", .Caption = "QUIT", .Hint = "End the program"};
    Control Dir1{.Type = Kind::List, .Name = "Dir1", .Visible = false, .TakesFocus = false}; // its tag is its path
    Control Timer1{.Type = Kind::Timer, .Name = "Timer1", .Enabled = false};
    Control RecoveryTimer{.Type = Kind::Timer, .Name = "RecoveryTimer", .Enabled = false, .Interval = 1000};

    // Entry screen
    Control editframe{.Type = Kind::Frame, .Name = "editframe", .Caption = "Active Templates :", .Visible = false};
    std::array<Control, 4> List1{{
        {.Type = Kind::List,
         .Name = "List1",
         .Index = 0,
         .Title = "Fields",
         .Face = Font::Fixed,
         .BackColor = LightGrey},
        {},
        {},
        {.Type = Kind::List,
         .Name = "List1",
         .Index = 3,
         .Title = "Group fields",
         .Face = Font::Fixed,
         .Visible = false,
         .BackColor = LightGrey},
    }};
    std::array<Control, 4> List2{{
        {.Type = Kind::List,
         .Name = "List2",
         .Index = 0,
         .Title = "Choices",
         .Face = Font::Fixed,
         .Visible = false,
         .BackColor = LightGrey},
        {},
        {},
        {.Type = Kind::List,
         .Name = "List2",
         .Index = 3,
         .Title = "Group choices",
         .Face = Font::Fixed,
         .Visible = false,
         .BackColor = LightGrey},
    }};
    std::array<Control, 7> Text1{{
        {},
        {.Type = Kind::TextBox,
         .Name = "Text1",
         .Index = 1,
         .Title = "Value",
         .Visible = false,
         .BackColor = LightGrey},
        {.Type = Kind::TextBox,
         .Name = "Text1",
         .Index = 2,
         .Title = "Value",
         .Visible = false,
         .BackColor = LightGrey},
        {.Type = Kind::TextBox,
         .Name = "Text1",
         .Index = 3,
         .Title = "Value",
         .ManyLines = true,
         .Visible = false,
         .BackColor = LightGrey},
        {.Type = Kind::TextBox,
         .Name = "Text1",
         .Index = 4,
         .Title = "Value",
         .Visible = false,
         .BackColor = LightGrey},
        {.Type = Kind::TextBox,
         .Name = "Text1",
         .Index = 5,
         .Title = "Value",
         .Visible = false,
         .BackColor = LightGrey},
        {.Type = Kind::TextBox,
         .Name = "Text1",
         .Index = 6,
         .Title = "Value",
         .ManyLines = true,
         .Visible = false,
         .BackColor = LightGrey},
    }};
    std::array<Control, 6> Text2{{
        {},
        {},
        {.Type = Kind::TextBox,
         .Name = "Text2",
         .Index = 2,
         .Title = "Other value",
         .Visible = false,
         .BackColor = LightGrey},
        {},
        {},
        {.Type = Kind::TextBox,
         .Name = "Text2",
         .Index = 5,
         .Title = "Other value",
         .Visible = false,
         .BackColor = LightGrey},
    }};
    Control SectionLabel{.Type = Kind::List, .Name = "SectionLabel", .Title = "Sections", .TakesFocus = false};
    Control Label2{.Type = Kind::Label, .Name = "Label2", .Caption = "Data Level:"};
    Control DataLevelLabel{.Type = Kind::Label, .Name = "DataLevelLabel"};
    Control helpline{.Type = Kind::Label, .Name = "helpline", .Title = "Help line", .Face = Font::Serif, .Tag = "0"};
    Control SizerTest{.Type = Kind::Label, .Name = "SizerTest", .Face = Font::Fixed, .Visible = false};
    Control CommandAdd{.Type = Kind::Button,
                       .Name = "CommandAdd",
                       .Caption = "^Add/Open File",
                       .Hint = "Open a saved report, or merge one into what is on the screen"};
    Control CommandSave{.Type = Kind::Button, .Name = "CommandSave", .Caption = "^Save", .Hint = "Save the report"};
    Control CommandSaveAs{.Type = Kind::Button,
                          .Name = "CommandSaveAs",
                          .Caption = "SaveAs",
                          .Hint = "Save the report under another name"};
    Control CommandPrint{.Type = Kind::Button,
                         .Name = "CommandPrint",
                         .Caption = "^Print",
                         .Hint = "Print to the printer or to a text file"};
    Control CommandReset{
        .Type = Kind::Button, .Name = "CommandReset", .Caption = "^Reset/Clear", .Hint = "Empty all fields"};
    Control CommandTemplate{.Type = Kind::Button,
                            .Name = "CommandTemplate",
                            .Caption = "^Field Template",
                            .Hint = "Work with another template"};
    Control CommandQuit{.Type = Kind::Button, .Name = "CommandQuit", .Caption = "^Quit", .Hint = "End the program"};
    Control CommandMoreHelp{.Type = Kind::Button,
                            .Name = "CommandMoreHelp",
                            .Caption = "More Help",
                            .Hint = "Show the help text of this field",
                            .Enabled = false};

    // Instances of the selected field
    Control MultiInstanceFrame{.Type = Kind::Frame, .Name = "MultiInstanceFrame"};
    Control FIAdd{.Type = Kind::Button,
                  .Name = "FIAdd",
                  .Caption = "Add",
                  .Title = "Add instance",
                  .Hint = "Add an instance of this field"};
    Control FIDel{.Type = Kind::Button,
                  .Name = "FIDel",
                  .Caption = "Delete",
                  .Title = "Delete instance",
                  .Hint = "Delete the instance that is shown"};
    Control FIScroll{.Type = Kind::ScrollBar, .Name = "FIScroll", .Title = "Instance shown"};
    std::array<Control, 2> FILabel{{
        {.Type = Kind::Label, .Name = "FILabel", .Index = 0, .Caption = "1"},
        {.Type = Kind::Label, .Name = "FILabel", .Index = 1, .Caption = "1"},
    }};
    std::array<Control, 2> FIPartner{{
        {.Type = Kind::Label, .Name = "FIPartner", .Index = 0, .Caption = "Field: Instances"},
        {.Type = Kind::Label, .Name = "FIPartner", .Index = 1, .Caption = "This: Instance"},
    }};

    // Open group
    Control TableFrame{.Type = Kind::Frame,
                       .Name = "TableFrame",
                       .Caption = "REPEATABLE GROUP:  CONTACT INFORMATION",
                       .Visible = false};
    Control GrpCommands{.Type = Kind::Frame, .Name = "GrpCommands", .Caption = "^Group"};
    std::array<Control, 4> FldChange{{
        {.Type = Kind::Button,
         .Name = "FldChange",
         .Index = Previous,
         .Caption = "^V-Prev",
         .Hint = "Go to the occurrence before this one"},
        {.Type = Kind::Button,
         .Name = "FldChange",
         .Index = Top,
         .Caption = "^Top",
         .Hint = "Go to the first occurrence"},
        {.Type = Kind::Button,
         .Name = "FldChange",
         .Index = Next,
         .Caption = "^Next",
         .Hint = "Go to the next occurrence; after the last one, to a new one"},
        {.Type = Kind::Button,
         .Name = "FldChange",
         .Index = Bottom,
         .Caption = "^Bottom",
         .Hint = "Go to the last occurrence"},
    }};
    Control TblFldInsert{.Type = Kind::Button,
                         .Name = "TblFldInsert",
                         .Caption = "^Insert",
                         .Hint = "Insert an empty occurrence before this one"};
    Control TblFldDelete{
        .Type = Kind::Button, .Name = "TblFldDelete", .Caption = "^Delete", .Hint = "Delete this occurrence"};
    Control TblFldNum{.Type = Kind::ComboBox, .Name = "TblFldNum", .Title = "Occurrence"};
    Control TblLabel{.Type = Kind::Label, .Name = "TblLabel", .Caption = "Instance"};
    Control GrpExit{.Type = Kind::Button,
                    .Name = "GrpExit",
                    .Caption = "^Exit From Group",
                    .Hint = "Go back to the list of fields",
                    .Visible = false};

    // Print options panel
    Control PrintFrame{.Type = Kind::Frame, .Name = "PrintFrame", .Caption = "PRINTING...", .Visible = false};
    Control PrintFrameIndent{.Type = Kind::Button,
                             .Name = "PrintFrameIndent",
                             .Caption = "NO Section/Field Indent",
                             .Hint = "Choose the next way to indent sections and fields"};
    Control PrintIndent{
        .Type = Kind::TextBox, .Name = "PrintIndent", .Title = "Spaces to indent data", .BackColor = White};
    Control PrintFrameToggler{.Type = Kind::Button,
                              .Name = "PrintFrameToggler",
                              .Caption = "Data Starts on Field Title Line",
                              .Hint = "Choose where the data start"};
    Control Combo1{.Type = Kind::ComboBox, .Name = "Combo1", .Title = "Copies to print"};
    Control Combo2{.Type = Kind::ComboBox, .Name = "Combo2", .Title = "Title/data separator"};
    std::array<Control, 2> PrintFramePrint{{
        {.Type = Kind::Button,
         .Name = "PrintFramePrint",
         .Index = ToPrinter,
         .Caption = "PRINT (to default printer)",
         .Hint = "Print on the default printer"},
        {.Type = Kind::Button,
         .Name = "PrintFramePrint",
         .Index = ToFile,
         .Caption = "PRINT (one copy to a file)",
         .Hint = "Write a text file"},
    }};
    Control PrintFrameCancel{
        .Type = Kind::Button, .Name = "PrintFrameCancel", .Caption = "Cancel ", .Hint = "Go back without printing"};
    Control printLabel{.Type = Kind::Label, .Name = "printLabel", .Caption = "Waiting for PRINT command"};
    std::array<Control, 3> Label3{{
        {.Type = Kind::Label, .Name = "Label3", .Index = 0, .Caption = "Toggle Titles/Data Layout Options:"},
        {.Type = Kind::Label, .Name = "Label3", .Index = 1, .Caption = "Spaces to Indent Data:"},
        {.Type = Kind::Label, .Name = "Label3", .Index = 2, .Caption = "Title/Data Separator:"},
    }};
    std::array<Control, 2> Label4{{
        {.Type = Kind::Label, .Name = "Label4", .Index = 0, .Caption = "Copies to Print:"},
        {.Type = Kind::Label, .Name = "Label4", .Index = 1, .Caption = "Status:"},
    }};

    CommonDialog cmDialog;
};

extern QuintaveForm Quintave;

// The list in use and the controls that go with it.
Control &ActiveRows();
Control &ActiveChoices();
Control &OtherBox(Integer list); // Text2 of a list (0 or GroupList)

// The free-text box for an element of type code -1, -2 or -3 in the list in use.
Control &ValueBox(Integer typeCode);
