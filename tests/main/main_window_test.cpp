// The main window's controls: designer names, captions, fonts and what is shown at first.
#include "form/main_window.h"

#include "main/commands.h"
#include "main/layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string>

namespace {

struct Expected {
    Control *Of;
    Kind Type;
    const char *Name;
    int Index; // -1 outside a control array
    const char *Caption;
};

QuintaveForm &Q = Quintave;

std::vector<Expected> AllControls() {
    using enum Kind;
    return {
        {&Q.editframe, Frame, "editframe", -1, "Active Templates :"},
        {&Q.CommandAdd, Button, "CommandAdd", -1, "^Add/Open File"},
        {&Q.CommandSave, Button, "CommandSave", -1, "^Save"},
        {&Q.CommandSaveAs, Button, "CommandSaveAs", -1, "SaveAs"},
        {&Q.CommandPrint, Button, "CommandPrint", -1, "^Print"},
        {&Q.CommandReset, Button, "CommandReset", -1, "^Reset/Clear"},
        {&Q.CommandTemplate, Button, "CommandTemplate", -1, "^Field Template"},
        {&Q.CommandQuit, Button, "CommandQuit", -1, "^Quit"},
        {&Q.CommandMoreHelp, Button, "CommandMoreHelp", -1, "More Help"},
        {&Q.List1[0], List, "List1", 0, ""},
        {&Q.List1[3], List, "List1", 3, ""},
        {&Q.List2[0], List, "List2", 0, ""},
        {&Q.List2[3], List, "List2", 3, ""},
        {&Q.Text1[1], TextBox, "Text1", 1, ""},
        {&Q.Text1[2], TextBox, "Text1", 2, ""},
        {&Q.Text1[3], TextBox, "Text1", 3, ""},
        {&Q.Text1[4], TextBox, "Text1", 4, ""},
        {&Q.Text1[5], TextBox, "Text1", 5, ""},
        {&Q.Text1[6], TextBox, "Text1", 6, ""},
        {&Q.Text2[2], TextBox, "Text2", 2, ""},
        {&Q.Text2[5], TextBox, "Text2", 5, ""},
        {&Q.SectionLabel, List, "SectionLabel", -1, ""},
        {&Q.Label2, Label, "Label2", -1, "Data Level:"},
        {&Q.DataLevelLabel, Label, "DataLevelLabel", -1, ""},
        {&Q.helpline, Label, "helpline", -1, ""},
        {&Q.SizerTest, Label, "SizerTest", -1, ""},
        {&Q.MultiInstanceFrame, Frame, "MultiInstanceFrame", -1, ""},
        {&Q.FIDel, Button, "FIDel", -1, "Delete"},
        {&Q.FIScroll, ScrollBar, "FIScroll", -1, ""},
        {&Q.FILabel[0], Label, "FILabel", 0, "1"},
        {&Q.FILabel[1], Label, "FILabel", 1, "1"},
        {&Q.FIPartner[0], Label, "FIPartner", 0, "Field: Instances"},
        {&Q.FIPartner[1], Label, "FIPartner", 1, "This: Instance"},
        {&Q.TableFrame, Frame, "TableFrame", -1, "REPEATABLE GROUP:  CONTACT INFORMATION"},
        {&Q.GrpCommands, Frame, "GrpCommands", -1, "^Group"},
        {&Q.FldChange[0], Button, "FldChange", 0, "^V-Prev"},
        {&Q.FldChange[1], Button, "FldChange", 1, "^Top"},
        {&Q.FldChange[2], Button, "FldChange", 2, "^Next"},
        {&Q.FldChange[3], Button, "FldChange", 3, "^Bottom"},
        {&Q.TblFldInsert, Button, "TblFldInsert", -1, "^Insert"},
        {&Q.TblFldDelete, Button, "TblFldDelete", -1, "^Delete"},
        {&Q.TblFldNum, ComboBox, "TblFldNum", -1, ""},
        {&Q.TblLabel, Label, "TblLabel", -1, "Instance"},
        {&Q.GrpExit, Button, "GrpExit", -1, "^Exit From Group"},
        {&Q.PrintFrame, Frame, "PrintFrame", -1, "PRINTING..."},
        {&Q.PrintFrameIndent, Button, "PrintFrameIndent", -1, "NO Section/Field Indent"},
        {&Q.PrintFrameToggler, Button, "PrintFrameToggler", -1, "Data Starts on Field Title Line"},
        {&Q.PrintIndent, TextBox, "PrintIndent", -1, ""},
        {&Q.Combo1, ComboBox, "Combo1", -1, ""},
        {&Q.Combo2, ComboBox, "Combo2", -1, ""},
        {&Q.PrintFramePrint[0], Button, "PrintFramePrint", 0, "PRINT (to default printer)"},
        {&Q.PrintFramePrint[1], Button, "PrintFramePrint", 1, "PRINT (one copy to a file)"},
        {&Q.PrintFrameCancel, Button, "PrintFrameCancel", -1, "Cancel "},
        {&Q.printLabel, Label, "printLabel", -1, "Waiting for PRINT command"},
        {&Q.Label3[0], Label, "Label3", 0, "Toggle Titles/Data Layout Options:"},
        {&Q.Label3[1], Label, "Label3", 1, "Spaces to Indent Data:"},
        {&Q.Label3[2], Label, "Label3", 2, "Title/Data Separator:"},
        {&Q.Label4[0], Label, "Label4", 0, "Copies to Print:"},
        {&Q.Label4[1], Label, "Label4", 1, "Status:"},
        {&Q.Frame5, Frame, "Frame5", -1, "Quintave..."},
        {&Q.Label5[0], Label, "Label5", 0, "Today's Date (as set on your computer):"},
        {&Q.Label5[1], Label, "Label5", 1,
         "Note that Quintave automatically includes this date on all print outs.  If the date is incorrect, please "
         "quit and correct the problem."},
        {&Q.LogoOff, Button, "LogoOff", -1, "Use Quintave"},
        {&Q.LogoQuit, Button, "LogoQuit", -1, "QUIT"},
        {&Q.Image1, Image, "Image1", -1, ""},
        {&Q.Label1, Label, "Label1", -1, ""},
        {&Q.Label6, Label, "Label6", -1, ""},
        {&Q.Label7, Label, "Label7", -1, ""},
        {&Q.Label9, Label, "Label9", -1, ""},
        {&Q.Timer1, Timer, "Timer1", -1, ""},
        {&Q.Dir1, List, "Dir1", -1, ""},
        {&Q.FIAdd, Button, "FIAdd", -1, "Add"},
    };
}

// Every control of a layout, in the order of the Tab key.
void Collect(const Place &place, std::vector<Control *> &controls) {
    if (place.Of != nullptr) controls.push_back(place.Of);
    for (const Place &part : place.Parts) Collect(part, controls);
}

std::vector<Control *> Placed() {
    std::vector<Control *> controls;
    Collect(MainLayout(), controls);
    return controls;
}

} // namespace

TEST(MainWindow, EveryControlHasItsDesignerNameAndCaption) {
    ConnectMainWindow();
    for (const auto &[control, type, name, index, caption] : AllControls()) {
        EXPECT_EQ(control->Type, type) << name;
        EXPECT_EQ(control->Name, name);
        EXPECT_EQ(control->Index, index) << name;
        EXPECT_EQ(control->Caption, caption) << name;
    }
}

TEST(MainWindow, EveryControlStandsInTheLayoutOnce) {
    const std::vector<Control *> placed = Placed();
    for (const auto &[control, type, name, index, caption] : AllControls())
        EXPECT_EQ(std::count(placed.begin(), placed.end(), control), 1) << name;
    EXPECT_EQ(std::count(placed.begin(), placed.end(), &Quintave.DateLabel), 1);
}

TEST(MainWindow, NoTwoControlsShareANameAndIndex) {
    std::set<std::pair<std::string_view, Integer>> names;
    for (const Control *control : Placed())
        EXPECT_TRUE(names.emplace(control->Name, control->Index).second) << control->Name;
}

TEST(MainWindow, ListsAreOfFixedPitchAndTheHelpLineHasSerifs) {
    for (const std::size_t list : {std::size_t{0}, std::size_t{3}}) {
        EXPECT_EQ(Quintave.List1.at(list).Face, Font::Fixed);
        EXPECT_EQ(Quintave.List2.at(list).Face, Font::Fixed);
    }
    EXPECT_EQ(Quintave.SizerTest.Face, Font::Fixed); // it measures for List2
    EXPECT_EQ(Quintave.helpline.Face, Font::Serif);
}

TEST(MainWindow, OnlyTheStartUpFrameIsShownAtFirst) {
    EXPECT_TRUE(Quintave.Frame5.Visible);
    for (const Control *control :
         {&Quintave.editframe, &Quintave.PrintFrame, &Quintave.TableFrame, &Quintave.GrpExit, &Quintave.Dir1,
          &Quintave.List1[3], &Quintave.List2[0], &Quintave.List2[3], &Quintave.SizerTest})
        EXPECT_FALSE(control->Visible) << control->Name;
    EXPECT_TRUE(Quintave.List1[0].Visible);
    for (const auto &box : Quintave.Text1) EXPECT_TRUE(box.Name.empty() || !box.Visible);
    for (const auto &box : Quintave.Text2) EXPECT_TRUE(box.Name.empty() || !box.Visible);
}

TEST(MainWindow, OnlyMemosHaveSeveralLines) {
    for (const auto &box : Quintave.Text1) EXPECT_EQ(box.ManyLines, box.Index == 3 || box.Index == 6) << box.Index;
    for (const auto &box : Quintave.Text2) EXPECT_FALSE(box.ManyLines);
}

TEST(MainWindow, TheSectionPathTakesNoFocus) {
    SetFocus(Quintave.SectionLabel);
    EXPECT_EQ(Focused(), nullptr);
}

TEST(MainWindow, WhatCanHaveTheFocusHasAnAccessibleName) {
    ConnectMainWindow();
    for (const Control *control : Placed()) {
        const bool focusable = control->Type == Kind::Button || control->Type == Kind::List ||
                               control->Type == Kind::TextBox || control->Type == Kind::ComboBox ||
                               control->Type == Kind::ScrollBar;
        if (!focusable || control == &Quintave.Dir1) continue; // which is never shown
        EXPECT_NE(AccessibleName(*control), "") << control->Name;
        EXPECT_EQ(AccessibleName(*control).find('^'), std::string::npos) << control->Name;
    }
    EXPECT_EQ(AccessibleName(Quintave.List1[0]), "Fields");
    EXPECT_EQ(AccessibleName(Quintave.List1[3]), "Group fields");
    EXPECT_EQ(AccessibleName(Quintave.List2[0]), "Choices");
    EXPECT_EQ(AccessibleName(Quintave.List2[3]), "Group choices");
    EXPECT_EQ(AccessibleName(Quintave.Text1[1]), "Value");
    EXPECT_EQ(AccessibleName(Quintave.Text2[5]), "Other value");
    EXPECT_EQ(AccessibleName(Quintave.SectionLabel), "Sections");
    EXPECT_EQ(AccessibleName(Quintave.helpline), "Help line");
    EXPECT_EQ(AccessibleName(Quintave.FIScroll), "Instance shown");
    EXPECT_EQ(AccessibleName(Quintave.FIAdd), "Add instance");
    EXPECT_EQ(AccessibleName(Quintave.FIDel), "Delete instance");
    EXPECT_EQ(AccessibleName(Quintave.TblFldNum), "Occurrence");
    EXPECT_EQ(AccessibleName(Quintave.PrintIndent), "Spaces to indent data");
    EXPECT_EQ(AccessibleName(Quintave.Combo1), "Copies to print");
    EXPECT_EQ(AccessibleName(Quintave.Combo2), "Title/data separator");
    EXPECT_EQ(AccessibleName(Quintave.FldChange[0]), "V-Prev");
}
