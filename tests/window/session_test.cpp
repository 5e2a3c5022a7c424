// Starting, leaving and closing the window, and what is no loss of the focus.
#include "window/window_test.h"

#include "main/start_up.h"
#include "model/field_model.h"
#include "platform/front.h"
#include "platform/qt/window.h"
#include "screen/value_entry.h"
#include "window/templates.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDate>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QTest>

#include <algorithm>
#include <filesystem>

namespace {

constexpr int YesNoOrCancel = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;

class Session : public WindowTest {
protected:
    // A value typed but not yet committed.
    void TypeSomething() {
        Start(TextRows({"A", "B"}));
        DoubleClickRow(Fields(), 0);
        Type("Wells");
    }
};

bool IsStarted(const char *name) { return Named(name).isVisible(); }

} // namespace

TEST_F(Session, TheStartUpFrameIsShownFirstWithTheDate) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    WriteTemplate(AllKinds());
    StartUp();
    EXPECT_TRUE(IsStarted("Frame5"));
    EXPECT_FALSE(IsStarted("editframe"));
    EXPECT_FALSE(IsStarted("PrintFrame"));
    EXPECT_EQ(The<QLabel>("DateLabel").text(),
              " " + QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat) + " ");
    EXPECT_EQ(The<QLabel>("Label1").text(), "Quintave");
    EXPECT_FALSE(The<QLabel>("Image1").pixmap().isNull());
    EXPECT_EQ(MainWindow()->windowTitle(), "Quintave");
    EXPECT_FALSE(MainWindow()->windowIcon().isNull());
}

TEST_F(Session, TheWindowsTitleTellsTheReportThatSaveWritesToAndTheTemplate) {
    Start(AllKinds());
    EXPECT_EQ(MainWindow()->windowTitle(), "SITE.FTF - Quintave");
    DoubleClickRow(Fields(), TitleRow);
    Type("Wells\n");
    Dialogs.Pick(folder.Path() + "we[*]lls.rpx");
    Click(Named("CommandSave"));
    EXPECT_EQ(MainWindow()->windowTitle(), "we[*][*]lls.rpx - SITE.FTF - Quintave"); // as the toolkit writes "[*]"
    Click(Named("CommandReset"));
    EXPECT_EQ(MainWindow()->windowTitle(), "SITE.FTF - Quintave");
}

TEST_F(Session, UseQuintaveShowsTheEntryScreenWithTheFocusOnTheFieldList) {
    Start(AllKinds());
    EXPECT_FALSE(IsStarted("Frame5"));
    EXPECT_TRUE(IsStarted("editframe"));
    EXPECT_TRUE(IsStarted("List1_0"));
    EXPECT_FALSE(IsStarted("List1_3"));
    EXPECT_FALSE(IsStarted("TableFrame"));
    EXPECT_FALSE(IsStarted("GrpExit"));
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(The<QGroupBox>("editframe").title(), "[Template: SITE.FTF] - RPX File(s): ");
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Open File");
}

TEST_F(Session, NoHelpWindowIsOpenAtTheStart) {
    Start(AllKinds());
    EXPECT_EQ(QApplication::topLevelWidgets().count(MainWindow()), 1);
    for (const QWidget *window : QApplication::topLevelWidgets())
        EXPECT_TRUE(window == MainWindow() || !window->isVisible()) << window->objectName().toStdString();
    EXPECT_EQ(Named("helpline").property("tag").toString(), "0");
}

TEST_F(Session, AnEmptyTemplateShowsOneRowAndNoMessage) {
    Start({});
    EXPECT_EQ(Fields().model()->rowCount(), 1);
    EXPECT_EQ(RowText(Fields(), 0), "NO DATA FIELDS");
    EXPECT_TRUE(Dialogs.Titles.empty());
}

TEST_F(Session, WithoutATemplateTheFrameSaysSo) {
    folder.Write("quintave.tbl", "\"\",\"gone.ftf\",\"-1\"\r\n");
    StartUp();
    Click(Named("LogoOff"));
    EXPECT_EQ(The<QGroupBox>("editframe").title(),
              "[No Fields Template Loaded -- Click on 'Field Template' to Load a Template!]");
    EXPECT_EQ(RowText(Fields(), 0), "NO DATA FIELDS");
}

TEST_F(Session, AWrongHeaderAtTheStartEndsTheProgramAfterTheMessage) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    folder.Write("SITE.FTF", "\"SOMETHING ELSE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n");
    ASSERT_TRUE(LoadMainWindow({}));
    Dialogs.Press(QMessageBox::Ok);
    ActivateMainWindow();
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"Quintave", "This is not a valid Fields Template File!\n\nPlease Try Again.",
                       QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok}));
}

TEST_F(Session, TheTemplateCommandRefusesAWrongHeaderAndKeepsTheTemplate) {
    folder.Write("BAD.FTF", "\"SOMETHING ELSE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n");
    Start(TextRows({"A", "B"}));
    Dialogs.Pick(folder.Path() + "BAD.FTF");
    Dialogs.Press(QMessageBox::Ok);
    Click(Named("CommandTemplate"));
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"Quintave", "This is not a valid Fields Template File!\n\nPlease Try Again.",
                       QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok}));
    EXPECT_TRUE(MainWindow()->isVisible());
    EXPECT_EQ(Fields().model()->rowCount(), 2);
}

TEST_F(Session, AnotherTemplateReplacesTheRows) {
    Start(TextRows({"A", "B"}));
    folder.Write("OTHER.FTF", "\"QUINTAVE FIELDS TEMPLATE FILE\",\"QuintaveV2\",\"\",\"\",\"\",\"\"\r\n"
                              "1,30,\"TEXT\",\"Only\",\"\",\"\"\r\n");
    ClickRow(Fields(), 1);
    Dialogs.Pick(folder.Path() + "OTHER.FTF");
    Click(Named("CommandTemplate"));
    EXPECT_EQ(Fields().model()->rowCount(), 1);
    EXPECT_EQ(SelectedRow(Fields()), 0);
    EXPECT_EQ(The<QGroupBox>("editframe").title(), "[Template: OTHER.FTF] - RPX File(s): ");
    EXPECT_EQ(FocusName(), "List1_0");
}

// While it runs, the save that it may offer counts as one of its own.
TEST_F(Session, TheTemplateCommandSavesForItselfUntilItsEnd) {
    TypeSomething();
    const auto cancelWhileSaving = [](QDialog &dialog) {
        EXPECT_EQ(QuitSave, True);
        dialog.reject();
    };
    Dialogs.Press(QMessageBox::Yes);
    Dialogs.Next(cancelWhileSaving);
    Click(Named("CommandTemplate"));
    EXPECT_EQ(QuitSave, False);
    Dialogs.Press(QMessageBox::No);
    Dialogs.Next(cancelWhileSaving);
    Click(Named("CommandTemplate"));
    EXPECT_EQ(Dialogs.Titles.back(), "Select a new FIELDS TEMPLATE File...");
    EXPECT_EQ(QuitSave, False);
}

TEST_F(Session, TheBannerTakesNoFocusAndGoesAway) {
    Start(AllKinds());
    ShowBanner("Quintave - Version 2.0");
    QCoreApplication::processEvents();
    const auto windows = QApplication::topLevelWidgets();
    const auto banner = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        const auto *const label = qobject_cast<const QLabel *>(window);
        return label != nullptr && label->isVisible() && label->text() == "Quintave - Version 2.0";
    });
    EXPECT_NE(banner, windows.end());
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    HideBanner();
    for (const QWidget *window : QApplication::topLevelWidgets())
        EXPECT_TRUE(window == MainWindow() || !window->isVisible());
}

namespace {

// The labels that were shown as windows of their own.
class ShownBanners : public QObject {
public:
    ShownBanners() { qApp->installEventFilter(this); }
    std::vector<std::string> Texts;

protected:
    bool eventFilter(QObject *object, QEvent *event) override {
        const auto *const label = qobject_cast<const QLabel *>(object);
        if (event->type() == QEvent::Show && label != nullptr && label->isWindow())
            Texts.push_back(label->text().toStdString());
        return false;
    }
};

} // namespace

TEST_F(Session, TheBannerStandsWhileATemplateIsLoaded) {
    const ShownBanners banners;
    Start(AllKinds());
    EXPECT_THAT(banners.Texts, testing::ElementsAre("Quintave - Version 2.0"));
    Dialogs.Pick(folder.Path() + "SITE.FTF");
    Click(Named("CommandTemplate"));
    EXPECT_EQ(banners.Texts.size(), 2U);
    for (const QWidget *window : QApplication::topLevelWidgets())
        EXPECT_TRUE(window == MainWindow() || !window->isVisible());
}

TEST_F(Session, ClosingWithUnsavedEntriesAsksAndCancelKeepsTheWindow) {
    TypeSomething();
    Dialogs.Press(QMessageBox::Cancel);
    EXPECT_FALSE(MainWindow()->close());
    EXPECT_EQ(Dialogs.Boxes.back(), (SeenBox{"Done with SESSION", "Do you want to SAVE THE CHANGES you made?",
                                             QMessageBox::NoIcon, YesNoOrCancel, QMessageBox::Yes}));
    EXPECT_TRUE(MainWindow()->isVisible());
    Settle();
    EXPECT_EQ(FocusName(), "List1_0");
    EXPECT_EQ(RowText(Fields(), 0), " A                         | Wells");
}

TEST_F(Session, ClosingAnsweredWithNoEndsWithoutSaving) {
    TypeSomething();
    Dialogs.Press(QMessageBox::No);
    EXPECT_TRUE(MainWindow()->close());
    EXPECT_FALSE(MainWindow()->isVisible());
}

TEST_F(Session, ClosingAnsweredWithYesSavesTheEditThatIsOpen) {
    TypeSomething();
    Dialogs.Press(QMessageBox::Yes);
    Dialogs.Pick(folder.Path() + "kept.rpx");
    EXPECT_TRUE(MainWindow()->close());
    EXPECT_EQ(folder.Read("kept.rpx"), "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"A\",\"Wells\"\r\n");
}

TEST_F(Session, ClosingIsRefusedWhereTheSaveIsCancelled) {
    TypeSomething();
    Dialogs.Press(QMessageBox::Yes);
    Dialogs.CancelFile();
    EXPECT_FALSE(MainWindow()->close());
    EXPECT_TRUE(MainWindow()->isVisible());
}

TEST_F(Session, ClosingWithoutEntriesOrFromTheStartUpFrameAsksNothing) {
    folder.Write("quintave.tbl", "\"\",\"site.ftf\",\"-1\"\r\n");
    WriteTemplate(AllKinds());
    StartUp();
    EXPECT_TRUE(MainWindow()->close());
    EXPECT_TRUE(Dialogs.Titles.empty());
    EXPECT_FALSE(folder.Has("LST00005.XXX"));
}

TEST_F(Session, QuitAsksWithItsOwnWords) {
    TypeSomething();
    Dialogs.Press(QMessageBox::Cancel);
    Click(Named("CommandQuit"));
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"Quit Quintave", "Do you want to SAVE this field information before you QUIT?",
                       QMessageBox::NoIcon, YesNoOrCancel, QMessageBox::Yes}));
    EXPECT_TRUE(MainWindow()->isVisible());
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Session, ResetAsksWithNoAsItsDefault) {
    TypeSomething();
    Dialogs.Press(QMessageBox::No);
    Click(Named("CommandReset"));
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"CLEAR ALL FIELDS (Reset)", "Do you want to SAVE these field settings before you RESET?",
                       QMessageBox::NoIcon, YesNoOrCancel, QMessageBox::No}));
    EXPECT_EQ(RowText(Fields(), 0), " A                         | ");
    EXPECT_EQ(The<QPushButton>("CommandAdd").text(), "^Add/Open File");
    EXPECT_EQ(The<QGroupBox>("editframe").title(), "[Template: SITE.FTF] - RPX File(s): ");
    EXPECT_EQ(FocusName(), "List1_0");
}

TEST_F(Session, AMessageBoxIsNoLossOfTheFocus) {
    TypeSomething();
    Dialogs.Next([](QDialog &dialog) {
        EXPECT_EQ(Focused(), &Quintave.Text1[1]);
        EXPECT_EQ(RowText(Fields(), 0), " A                         | ") << "committed by the message";
        EXPECT_EQ(EntryFlag, True);
        dialog.accept();
    });
    Type("|");
    EXPECT_EQ(Box().toPlainText(), "Wells");
    EXPECT_EQ(FocusName(), "Text1_1");
    Type(" 2\n");
    EXPECT_EQ(RowText(Fields(), 0), " A                         | Wells 2");
}

TEST_F(Session, AnotherProgramsWindowIsNoLossOfTheFocus) {
    TypeSomething();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(Focused(), &Quintave.Text1[1]);
    EXPECT_EQ(RowText(Fields(), 0), " A                         | ");
    EXPECT_EQ(Named("Text1_1").palette().color(QPalette::Base), QColor(255, 255, 255));
    other.hide();
    Settle();
    EXPECT_EQ(FocusName(), "Text1_1");
    EXPECT_EQ(EntryFlag, True);
    Type("!");
    EXPECT_EQ(Box().toPlainText(), "Wells!");
}

TEST_F(Session, AContextMenuIsNoLossOfTheFocus) {
    TypeSomething();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), Box().mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(Box().viewport(), &event);
    QCoreApplication::processEvents();
    auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(Focused(), &Quintave.Text1[1]);
    EXPECT_EQ(RowText(Fields(), 0), " A                         | ");
    menu->close();
    Settle();
    EXPECT_EQ(FocusName(), "Text1_1");
    EXPECT_EQ(EntryFlag, True);
}

TEST_F(Session, LeavingABoxByTabOrByAClickElsewhereCommits) {
    TypeSomething();
    Key(Qt::Key_Tab);
    EXPECT_EQ(RowText(Fields(), 0), " A                         | Wells");
    DoubleClickRow(Fields(), 0);
    Type(" 2");
    ClickRow(Fields(), 1);
    EXPECT_EQ(RowText(Fields(), 0), " A                         | Wells 2");
    EXPECT_EQ(SelectedRow(Fields()), 1);
}

TEST_F(Session, AWriteErrorIsToldWithItsAdvice) {
    TypeSomething();
    std::filesystem::create_symlink("/dev/full", folder.Path() + "full.rpx");
    Dialogs.Pick(folder.Path() + "full.rpx");
    Dialogs.Press(QMessageBox::Yes); // replaces the file
    Dialogs.Press(QMessageBox::Ok);
    Dialogs.CancelFile();
    Click(Named("CommandSaveAs"));
    const SeenBox &box = Dialogs.Boxes.back();
    EXPECT_EQ(box.Text, "Error: 61 - Disk full\nError writing to this file! (read only file or drive? full drive? "
                        "file locked? wrong privileges?). Correct the problem and try again, or 'SaveAs' to a "
                        "different file name or location.");
    EXPECT_EQ(box.Icon, QMessageBox::Critical);
    EXPECT_EQ(box.Title, "Quintave");
    EXPECT_EQ(box.Buttons, QMessageBox::Ok);
}
