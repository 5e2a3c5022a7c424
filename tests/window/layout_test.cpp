// Where the widgets stand: sizes from twips, the order of the Tab key, nothing cut off at any font size.
#include "window/window_test.h"

#include "main/start_up.h"
#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>

#include <cmath>

namespace {

constexpr int TwipsPerInch = 1440;

class Layout : public WindowTest {
protected:
    // Names of the widgets with the focus, from one on by the Tab key, until it comes round.
    static std::vector<std::string> TabOrder(Qt::Key key = Qt::Key_Tab) {
        std::vector<std::string> names{FocusName()};
        while (names.size() < 40) {
            Key(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
            if (FocusName() == names.front()) break;
            names.push_back(FocusName());
        }
        return names;
    }
};

class AtFontSize : public Layout, public testing::WithParamInterface<int> {
protected:
    AtFontSize() {
        QFont font = QApplication::font();
        font.setPointSize(GetParam());
        QApplication::setFont(font);
    }

    static void ExpectNothingCutOff(const char *screen) {
        SCOPED_TRACE(screen);
        MainWindow()->resize(MainWindow()->minimumSizeHint());
        Settle();
        for (const QWidget *widget : MainWindow()->findChildren<QWidget *>()) ExpectWhole(*widget);
    }

private:
    static void ExpectWhole(const QWidget &widget) {
        if (!widget.isVisible() || widget.window() != MainWindow() || widget.objectName().isEmpty()) return;
        const std::string name = widget.objectName().toStdString();
        const QRect inWindow(widget.mapTo(MainWindow(), QPoint()), widget.size());
        EXPECT_TRUE(MainWindow()->rect().contains(inWindow)) << name << " stands outside the window";
        const auto *const label = dynamic_cast<const QLabel *>(&widget);
        const bool showsText = label != nullptr || dynamic_cast<const QPushButton *>(&widget) != nullptr ||
                               dynamic_cast<const QComboBox *>(&widget) != nullptr;
        if (!showsText) return;
        if (label != nullptr && label->wordWrap()) {
            EXPECT_GE(widget.height(), widget.heightForWidth(widget.width())) << name;
        } else {
            EXPECT_GE(widget.width(), widget.sizeHint().width()) << name;
            EXPECT_GE(widget.height(), widget.sizeHint().height()) << name;
        }
    }
};

// The default fonts of desktops; their lines are up to a third higher or lower. One that is not installed is drawn as
// the one that is.
class InFont : public Layout, public testing::WithParamInterface<const char *> {
protected:
    InFont() {
        QFont font = QApplication::font();
        font.setFamily(GetParam());
        QApplication::setFont(font);
    }
};

void ExpectWholeChoices() {
    const int row = Choices().visualRect(Choices().model()->index(0, 0)).height();
    EXPECT_EQ(Choices().viewport()->height() % row, 0);
    EXPECT_GE(Choices().viewport()->height() / row, 5);
}

int RightEdge(const QWidget &widget) { return widget.mapTo(MainWindow(), QPoint(widget.width(), 0)).x(); }
int LeftEdge(const QWidget &widget) { return widget.mapTo(MainWindow(), QPoint()).x(); }

} // namespace

TEST_F(Layout, AChoiceListIsAsWideAsItsWidestChoiceAndTheMargin) {
    Start(AllKinds());
    ClickRow(Fields(), ColourRow);
    const int dpi = MainWindow()->logicalDpiX();
    const int text = QFontMetrics(Choices().font()).horizontalAdvance("<RESET/CLEAR FIELD ENTRY>");
    const int twips = text * TwipsPerInch / dpi + 320;
    EXPECT_EQ(FieldInfo[RowField[ColourRow]][TypeCode], twips);
    EXPECT_EQ(Choices().width(), twips * dpi / TwipsPerInch);
    EXPECT_EQ(Choices().horizontalScrollBar()->maximum(), 0) << "the widest choice is cut off";
}

TEST_F(Layout, AChoiceListIsNoWiderThanItsLargestWidth) {
    Start({R"(1,200,"LIST","Colour","","")", std::string(120, 'W'), "XXX-1XXX"});
    EXPECT_EQ(Choices().width(), 6528 * MainWindow()->logicalDpiX() / TwipsPerInch);
}

TEST_F(Layout, AChoiceListWithoutChoicesIsTheMarginWide) {
    Start({R"(1,200,"LIST","Colour","","")", "XXX-1XXX"});
    EXPECT_EQ(FieldInfo[1][TypeCode], 320);
    EXPECT_EQ(Choices().width(), 320 * MainWindow()->logicalDpiX() / TwipsPerInch);
}

TEST_F(Layout, TheOtherBoxStandsBelowTheChoicesUpToItsRightEdge) {
    Start(AllKinds());
    DoubleClickRow(Fields(), ColourRow);
    ClickRow(Choices(), 4);
    const QWidget &other = Named("Text2_2");
    ASSERT_TRUE(other.isVisible());
    EXPECT_EQ(LeftEdge(other), LeftEdge(Choices()));
    EXPECT_EQ(RightEdge(other) - LeftEdge(Choices()), 7695 * MainWindow()->logicalDpiX() / TwipsPerInch);
    EXPECT_TRUE(Choices().isVisible());
    EXPECT_FALSE(other.geometry().intersects(Choices().geometry()));
}

TEST_F(Layout, EntryControlsStartAtTheLeftEdgeOfTheFieldList) {
    Start(AllKinds());
    for (const auto &[row, name] : std::vector<std::pair<int, const char *>>{
             {TitleRow, "Text1_1"}, {AbstractRow, "Text1_2"}, {NotesRow, "Text1_3"}, {ColourRow, "List2_0"}}) {
        ClickRow(Fields(), row);
        EXPECT_EQ(LeftEdge(Named(name)), LeftEdge(Fields())) << name;
    }
}

// A double-click on a row must not find another row under the pointer the second time.
TEST_F(Layout, TheFieldListStaysWhereItIsWhileRowsAreSelected) {
    auto lines = AllKinds();
    lines[2] = R"(2,200,"TEXT","Abstract",")" + std::string(60, 'w') + " " + std::string(60, 'w') + "\",\"\"";
    Start(lines);
    MainWindow()->resize(MainWindow()->minimumSizeHint());
    Settle();
    const QRect before(Fields().mapTo(MainWindow(), QPoint()), Fields().size());
    for (int row = TitleRow; row <= SamplesRow; ++row) {
        ClickRow(Fields(), row);
        EXPECT_EQ(QRect(Fields().mapTo(MainWindow(), QPoint()), Fields().size()), before) << row;
    }
}

TEST_F(Layout, TheFieldListIsAsWideAfterAVisitToAGroupAsBefore) {
    Start(AllKinds());
    MainWindow()->resize(MainWindow()->minimumSizeHint());
    Settle();
    const QSize window = MainWindow()->size();
    const QRect before(Fields().mapTo(MainWindow(), QPoint()), Fields().size());
    DoubleClickRow(Fields(), SamplesRow);
    Click(Named("GrpExit"));
    EXPECT_EQ(QRect(Fields().mapTo(MainWindow(), QPoint()), Fields().size()), before);
    EXPECT_EQ(MainWindow()->size(), window);
}

// The second click of a double-click on "OTHER..." must still find it.
TEST_F(Layout, TheChoicesStayWhereTheyAreWhenTheOtherBoxOpens) {
    Start(AllKinds());
    ClickRow(Fields(), ColourRow);
    const QRect before = Choices().geometry();
    EXPECT_GE(Choices().viewport()->height(), 5 * Choices().visualRect(Choices().model()->index(0, 0)).height());
    ClickRow(Choices(), 4);
    ASSERT_TRUE(Named("Text2_2").isVisible());
    EXPECT_EQ(Choices().geometry(), before);
}

TEST_F(Layout, ARowOfDashesIsShownWhole) {
    Start(AllKinds());
    MainWindow()->resize(MainWindow()->minimumSizeHint());
    Settle();
    EXPECT_EQ(Fields().horizontalScrollBar()->maximum(), 0);
}

TEST_F(Layout, TheTabKeyFollowsTheStartUpFrame) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    WriteTemplate(TextRows({"A"}));
    StartUp();
    EXPECT_EQ(FocusName(), "LogoOff");
    EXPECT_THAT(TabOrder(), testing::ElementsAre("LogoOff", "LogoQuit"));
}

TEST_F(Layout, TheTabKeyFollowsTheEntryScreen) {
    Start(AllKinds());
    EXPECT_EQ(FocusName(), "List1_0");
    const std::vector<std::string> order{"List1_0",      "FIScroll",     "FIAdd",           "FIDel",
                                         "Text1_1",      "CommandAdd",   "CommandSave",     "CommandSaveAs",
                                         "CommandPrint", "CommandReset", "CommandTemplate", "CommandQuit"};
    EXPECT_EQ(TabOrder(), order);
    std::vector<std::string> backwards(order.rbegin(), order.rend() - 1);
    backwards.insert(backwards.begin(), "List1_0");
    EXPECT_EQ(TabOrder(Qt::Key_Backtab), backwards);
}

TEST_F(Layout, TheTabKeyFollowsAnOpenGroupAndPassesTheFieldListBy) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    EXPECT_EQ(FocusName(), "List1_3");
    EXPECT_THAT(TabOrder(), testing::ElementsAre("List1_3", "FldChange_0", "FldChange_1", "FldChange_2", "FldChange_3",
                                                 "TblFldInsert", "TblFldDelete", "TblFldNum", "GrpExit", "Text1_4",
                                                 "CommandAdd", "CommandSave", "CommandSaveAs", "CommandPrint",
                                                 "CommandReset", "CommandTemplate", "CommandQuit"));
}

TEST_F(Layout, TheTabKeyReachesChoicesOtherBoxAndMoreHelp) {
    folder.Write("COLOUR.HLP", "Colours");
    auto lines = AllKinds();
    lines[4] = R"(2,20,"LIST","Colour","","COLOUR.HLP")";
    Start(lines);
    DoubleClickRow(Fields(), ColourRow);
    ClickRow(Choices(), 4);
    Fields().setFocus();
    const auto order = TabOrder();
    EXPECT_THAT(std::vector<std::string>(order.begin() + 4, order.begin() + 7),
                testing::ElementsAre("CommandMoreHelp", "List2_0", "Text2_2"));
}

TEST_F(Layout, NoChoiceIsCutInHalf) {
    Start(AllKinds());
    ClickRow(Fields(), ColourRow);
    ExpectWholeChoices();
}

TEST_F(Layout, NoChoiceIsCutInHalfAboveTheScrollBarOfALongOne) {
    auto lines = AllKinds();
    lines.insert(lines.begin() + 6, {std::string(100, 'w'), "a", "b", "c", "d", "e", "f"});
    Start(lines);
    ClickRow(Fields(), ColourRow);
    EXPECT_GT(Choices().horizontalScrollBar()->maximum(), 0);
    ExpectWholeChoices();
}

// The path cannot be scrolled by keys.
TEST_F(Layout, ALongHeadingIsShownWholeInTheSectionPath) {
    auto lines = AllKinds();
    lines[0] = R"(1,-1,"TEXT","Identification of the data set and of all the people who made it","","")";
    Start(lines);
    ClickRow(Fields(), TitleRow);
    auto &path = The<QListView>("SectionLabel");
    const QRect first = path.visualRect(path.model()->index(0, 0));
    EXPECT_EQ(path.horizontalScrollBar()->maximum(), 0);
    EXPECT_GE(first.height(), path.fontMetrics().height() + path.fontMetrics().lineSpacing());
    EXPECT_LE(first.bottom(), path.viewport()->height());
}

TEST_F(Layout, TheNamesOfManyReportsDoNotWidenTheWindow) {
    Start(AllKinds());
    const int before = MainWindow()->minimumSizeHint().width();
    SetCaption(Quintave.editframe, std::string(500, 'w'));
    ShowChanges();
    Settle();
    EXPECT_EQ(MainWindow()->minimumSizeHint().width(), before);
}

TEST_F(Layout, TheScrollBarShowsThatItHasTheFocus) {
    Start(AllKinds());
    ClickRow(Fields(), TitleRow);
    auto &bar = The<QScrollBar>("FIScroll");
    const QImage without = bar.grab().toImage();
    bar.setFocus(Qt::TabFocusReason);
    const QImage with = bar.grab().toImage();
    const QColor mark = bar.palette().color(QPalette::Highlight);
    for (const QPoint edge : {QPoint(bar.width() / 2, 1), QPoint(bar.width() / 2, bar.height() - 2)}) {
        EXPECT_EQ(with.pixelColor(edge), mark);
        EXPECT_NE(without.pixelColor(edge), mark);
    }
}

TEST_P(InFont, TheSmallestWindowFitsASmallScreen) {
    Start(AllKinds());
    const QSize least = MainWindow()->minimumSizeHint();
    EXPECT_LE(least.width(), 960);
    EXPECT_LE(least.height(), 540);
    EXPECT_LE(MainWindow()->width(), 960);
    EXPECT_LE(MainWindow()->height(), 540);
}

TEST_P(AtFontSize, NothingIsCutOff) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    auto lines = AllKinds();
    lines[1] =
        R"(2,30,"TEXT","Title","Name the data set so that a stranger can tell what it holds, where it was taken and )"
        R"(when; a good title is read before anything else and often instead of it.","")";
    WriteTemplate(lines);
    StartUp();
    ExpectNothingCutOff("start-up frame");
    Click(Named("LogoOff"));
    for (int row = TitleRow; row <= SamplesRow; ++row) {
        ClickRow(Fields(), row);
        ExpectNothingCutOff(("row " + std::to_string(row)).c_str());
    }
    DoubleClickRow(Fields(), SamplesRow);
    ExpectNothingCutOff("group");
    Click(Named("GrpExit"));
    Dialogs.Press(QMessageBox::Yes);
    Click(Named("CommandPrint"));
    ExpectNothingCutOff("print panel");
}

// The lists' fixed-pitch font follows the size that the user needs to read.
TEST_P(AtFontSize, ListsAreNotSmallerThanTheUsersFont) {
    Start(AllKinds());
    for (const char *name : {"List1_0", "List2_0", "SectionLabel", "Text1_1", "helpline", "CommandAdd"})
        EXPECT_GE(std::lround(QFontInfo(Named(name).font()).pointSizeF()), GetParam()) << name;
}

INSTANTIATE_TEST_SUITE_P(Families, InFont,
                         testing::Values("Sans Serif", "DejaVu Sans", "Liberation Sans", "Nimbus Sans"));
INSTANTIATE_TEST_SUITE_P(Sizes, AtFontSize, testing::Values(9, 10, 11, 12, 14, 16, 18));
