// The window's controls: object names, captions, names for a screen reader, fonts, what is shown at the start.
#include "window/window_test.h"

#include "platform/qt/window.h"

#include <QComboBox>
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>

namespace {

class Controls : public WindowTest {};

struct Caption {
    const char *Name;
    const char *Text; // as drawn
};

constexpr Caption Buttons[] = {
    {"CommandAdd", "^Add/Open File"},
    {"CommandSave", "^Save"},
    {"CommandSaveAs", "SaveAs"},
    {"CommandPrint", "^Print"},
    {"CommandReset", "^Reset/Clear"},
    {"CommandTemplate", "^Field Template"},
    {"CommandQuit", "^Quit"},
    {"CommandMoreHelp", "More Help"},
    {"FIAdd", "Add"},
    {"FIDel", "Delete"},
    {"FldChange_0", "^V-Prev"},
    {"FldChange_1", "^Top"},
    {"FldChange_2", "^Next"},
    {"FldChange_3", "^Bottom"},
    {"TblFldInsert", "^Insert"},
    {"TblFldDelete", "^Delete"},
    {"GrpExit", "^Exit From Group"},
    {"PrintFrameIndent", "NO Section/Field Indent"},
    {"PrintFrameToggler", "Data Starts on Field Title Line"},
    {"PrintFramePrint_0", "PRINT (to default printer)"},
    {"PrintFramePrint_1", "PRINT (one copy to a file)"},
    {"PrintFrameCancel", "Cancel "},
    {"LogoOff", "Use Quintave"},
    {"LogoQuit", "QUIT"},
};

constexpr Caption Labels[] = {
    {"Label2", "Data Level:"},
    {"FILabel_0", "1"},
    {"FILabel_1", "1"},
    {"FIPartner_0", "Field: Instances"},
    {"FIPartner_1", "This: Instance"},
    {"TblLabel", "Instance"},
    {"printLabel", "Waiting for PRINT command"},
    {"Label3_0", "Toggle Titles/Data Layout Options:"},
    {"Label3_1", "Spaces to Indent Data:"},
    {"Label3_2", "Title/Data Separator:"},
    {"Label4_0", "Copies to Print:"},
    {"Label4_1", "Status:"},
    {"Label5_0", "Today's Date (as set on your computer):"},
    {"Label5_1", "Note that Quintave automatically includes this date on all print outs.  If the date is incorrect, "
                 "please quit and correct the problem."},
};

constexpr Caption Frames[] = {
    {"TableFrame", "REPEATABLE GROUP:  CONTACT INFORMATION"},
    {"GrpCommands", "^Group"},
    {"PrintFrame", "PRINTING..."},
    {"Frame5", "Quintave..."},
    {"MultiInstanceFrame", ""},
};

struct Spoken {
    const char *Name;
    const char *Said;
    const char *Key; // its description
};

constexpr Spoken Names[] = {
    {"CommandAdd", "Add/Open File", "Ctrl+A"},
    {"CommandSave", "Save", "Ctrl+S"},
    {"CommandSaveAs", "SaveAs", ""},
    {"CommandPrint", "Print", "Ctrl+P"},
    {"CommandReset", "Reset/Clear", "Ctrl+R"},
    {"CommandTemplate", "Field Template", "Ctrl+F"},
    {"CommandQuit", "Quit", "Ctrl+Q"},
    {"CommandMoreHelp", "More Help", ""},
    {"FldChange_0", "V-Prev", "Ctrl+V"},
    {"FldChange_1", "Top", "Ctrl+T"},
    {"FldChange_2", "Next", "Ctrl+N"},
    {"FldChange_3", "Bottom", "Ctrl+B"},
    {"TblFldInsert", "Insert", "Ctrl+I"},
    {"TblFldDelete", "Delete", "Ctrl+D"},
    {"GrpExit", "Exit From Group", "Ctrl+E"},
    {"LogoOff", "Use Quintave", ""},
    {"LogoQuit", "QUIT", ""},
    {"PrintFramePrint_0", "PRINT (to default printer)", ""},
    {"PrintFramePrint_1", "PRINT (one copy to a file)", ""},
    {"PrintFrameCancel", "Cancel", ""},
    {"PrintFrameIndent", "NO Section/Field Indent", ""},
    {"PrintFrameToggler", "Data Starts on Field Title Line", ""},
    {"List1_0", "Fields", ""},
    {"List1_3", "Group fields", ""},
    {"List2_0", "Choices", ""},
    {"List2_3", "Group choices", ""},
    {"Text1_1", "Value", ""},
    {"Text1_2", "Value", ""},
    {"Text1_3", "Value", ""},
    {"Text1_4", "Value", ""},
    {"Text1_5", "Value", ""},
    {"Text1_6", "Value", ""},
    {"Text2_2", "Other value", ""},
    {"Text2_5", "Other value", ""},
    {"SectionLabel", "Sections", ""},
    {"helpline", "Help line", ""},
    {"FIScroll", "Instance shown", ""},
    {"FIAdd", "Add instance", ""},
    {"FIDel", "Delete instance", ""},
    {"TblFldNum", "Occurrence", ""},
    {"PrintIndent", "Spaces to indent data", ""},
    {"Combo1", "Copies to print", ""},
    {"Combo2", "Title/data separator", ""},
};

const std::vector<std::string> OneField{R"(1,30,"TEXT","Title","","")"};

std::vector<std::string> ItemsOf(const char *name) {
    std::vector<std::string> items;
    const auto &combo = The<QComboBox>(name);
    for (int i = 0; i < combo.count(); ++i) items.push_back(combo.itemText(i).toStdString());
    return items;
}

} // namespace

// A lone "&" in a button would be drawn as an underline; "^" is drawn as it stands, and neither makes an Alt key.
TEST_F(Controls, ButtonsShowTheirCaptionsAndHaveNoAccessKey) {
    Start(OneField);
    for (const auto &[name, text] : Buttons) {
        EXPECT_EQ(The<QPushButton>(name).text(), QString(text)) << name;
        EXPECT_TRUE(The<QPushButton>(name).shortcut().isEmpty()) << name;
    }
}

TEST_F(Controls, LabelsShowTheirTexts) {
    Start(OneField);
    for (const auto &[name, text] : Labels) EXPECT_EQ(The<QLabel>(name).text(), QString(text)) << name;
}

TEST_F(Controls, FramesShowTheirCaptions) {
    Start(OneField);
    for (const auto &[name, text] : Frames) EXPECT_EQ(The<QGroupBox>(name).title(), QString(text)) << name;
    EXPECT_EQ(The<QGroupBox>("editframe").title(), "[Template: SITE.FTF] - RPX File(s): ");
}

TEST_F(Controls, EveryControlHasAWidgetOfItsNameAndKind) {
    Start(OneField);
    for (const char *name : {"List1_0", "List1_3", "List2_0", "List2_3", "SectionLabel"})
        EXPECT_NE(dynamic_cast<QListView *>(&Named(name)), nullptr) << name;
    for (const char *name :
         {"Text1_1", "Text1_2", "Text1_3", "Text1_4", "Text1_5", "Text1_6", "Text2_2", "Text2_5", "PrintIndent"})
        EXPECT_NE(dynamic_cast<QPlainTextEdit *>(&Named(name)), nullptr) << name;
    for (const char *name : {"TblFldNum", "Combo1", "Combo2"})
        EXPECT_NE(dynamic_cast<QComboBox *>(&Named(name)), nullptr) << name;
    for (const char *name :
         {"DataLevelLabel", "helpline", "SizerTest", "DateLabel", "Image1", "Label1", "Label6", "Label7", "Label9"})
        EXPECT_NE(dynamic_cast<QLabel *>(&Named(name)), nullptr) << name;
    EXPECT_EQ(The<QScrollBar>("FIScroll").orientation(), Qt::Horizontal);
    EXPECT_EQ(The<QScrollBar>("FIScroll").minimum(), 1);
    EXPECT_FALSE(Named("SizerTest").isVisible());
    EXPECT_FALSE(Named("Dir1").isVisible());
    EXPECT_EQ(Named("Dir1").property("tag").toString().toStdString(), folder.Path());
    EXPECT_FALSE(Named("Timer1").isVisible());
}

TEST_F(Controls, AScreenReaderSaysANameAndTheKeyOfEachControl) {
    Start(OneField);
    for (const auto &[name, said, key] : Names) {
        EXPECT_EQ(Named(name).accessibleName(), QString(said)) << name;
        EXPECT_EQ(Named(name).accessibleDescription(), QString(key)) << name;
    }
}

TEST_F(Controls, APointerThatRestsOnAButtonIsToldWhatItDoesAndItsKey) {
    Start(OneField);
    for (const auto *button : MainWindow()->findChildren<QPushButton *>()) {
        const QString hint = button->toolTip();
        const QString key = button->accessibleDescription();
        EXPECT_GE(hint.split(' ').size(), 2) << button->objectName().toStdString();
        EXPECT_TRUE(key.isEmpty() || hint.endsWith(" (" + key + ")")) << hint.toStdString();
        EXPECT_EQ(!key.isEmpty(), button->text().startsWith('^')) << hint.toStdString();
    }
}

TEST_F(Controls, NothingThatCanHaveTheFocusIsWithoutAName) {
    Start(OneField);
    for (const auto *widget : MainWindow()->findChildren<QWidget *>()) {
        // The toolkit's own parts are the view of a closed combo box and the scroll areas' viewports.
        const bool ownPart = widget->window() != MainWindow() || widget->objectName().startsWith("qt_");
        if (widget->focusPolicy() == Qt::NoFocus || ownPart) continue;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    }
}

TEST_F(Controls, ANewCaptionChangesTheSpokenNameToo) {
    Start(OneField);
    DoubleClickRow(Fields(), 0);
    Type("x");
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Merge File");
    EXPECT_EQ(Named("CommandAdd").accessibleName(), "Add/Merge File");
    EXPECT_EQ(Named("CommandAdd").accessibleDescription(), "Ctrl+A");
}

TEST_F(Controls, ListsAreInAFixedPitchAndTheHelpLineInASerifFont) {
    Start(OneField);
    for (const char *name : {"List1_0", "List1_3", "List2_0", "List2_3", "SizerTest"}) {
        const QFontMetrics metrics(Named(name).font());
        EXPECT_TRUE(QFontInfo(Named(name).font()).fixedPitch()) << name;
        EXPECT_EQ(metrics.horizontalAdvance("iiiiiiiiii"), metrics.horizontalAdvance("WWWWWWWWWW")) << name;
    }
    EXPECT_EQ(Named("helpline").font().styleHint(), QFont::Serif);
    const QString family = QFontInfo(Named("helpline").font()).family();
    EXPECT_TRUE(family.contains("Serif") || family.contains("Roman") || family.contains("Times"))
        << family.toStdString();
}

// A choice list's width is measured in the font it is drawn in.
TEST_F(Controls, TheMeasuringLabelHasTheChoiceListsFont) {
    Start(OneField);
    EXPECT_EQ(Named("SizerTest").font(), Named("List2_0").font());
}

TEST_F(Controls, AnAmpersandInATextIsDrawnOnceAndIsNoAccessKey) {
    Start({R"(1,30,"TEXT","A","Salt & pepper","")", R"(2,20,"GROUP START","Me & you","","")",
           R"(3,9,"TEXT","Part","","")", R"(2,1,"GROUP END","","","")"});
    EXPECT_EQ(The<QLabel>("helpline").text(), "Salt & pepper");
    EXPECT_EQ(The<QLabel>("helpline").textFormat(), Qt::PlainText);
    DoubleClickRow(Fields(), 1);
    // In a frame's title the toolkit draws "&&" as one.
    EXPECT_EQ(The<QGroupBox>("TableFrame").title(), "REPEATED GROUP: Me && you");
}

TEST_F(Controls, PrintListsHoldTheirRowsWithTheirSelection) {
    Start(OneField);
    EXPECT_THAT(ItemsOf("Combo1"), testing::ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9"));
    EXPECT_EQ(The<QComboBox>("Combo1").currentText(), "1");
    EXPECT_THAT(ItemsOf("Combo2"), testing::ElementsAre("' '", "'| '", "': '", "'> '", "' - '", "' = '"));
    EXPECT_EQ(The<QComboBox>("Combo2").currentText(), "'| '");
}

// Programs that look at the window from outside find a control's tag as a property of its widget.
TEST_F(Controls, TagsArePropertiesOfTheWidgets) {
    folder.Write("SITE.HLP", "help");
    Start({R"(1,-1,"TEXT","Section","","")", R"(2,30,"TEXT","A","","SITE.HLP")", R"(2,30,"LIST","B","","")", "Red",
           "XXX-1XXX"});
    EXPECT_EQ(Named("SectionLabel").property("tag").toString(), "-1|1|4");
    EXPECT_EQ(Named("List1_3").property("tag").toString(), "-1");
    EXPECT_EQ(Named("CommandMoreHelp").property("tag").toString().toStdString(), folder.Path() + "SITE.HLP");
    ClickRow(Fields(), 1);
    EXPECT_EQ(Named("CommandMoreHelp").property("tag").toString().toStdString(), folder.Path());
    EXPECT_EQ(Named("List2_0").property("tag").toString().toStdString(), folder.Path() + "LST00003.XXX");
}
