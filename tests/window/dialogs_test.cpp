// Message boxes, the input box and the file dialogue as windows: what they show, and what ends them.
#include "window/window_test.h"

#include "main/start_up.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QDir>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QUrl>

namespace {

constexpr int Ok = QMessageBox::Ok;
constexpr int OkOrCancel = QMessageBox::Ok | QMessageBox::Cancel;
constexpr int YesOrNo = QMessageBox::Yes | QMessageBox::No;
constexpr int YesNoOrCancel = YesOrNo | QMessageBox::Cancel;

struct Style {
    int Number;
    QMessageBox::Icon Icon;
    int Buttons;
    int Default;
};

constexpr Style Styles[] = {
    {OkOnly, QMessageBox::NoIcon, Ok, QMessageBox::Ok},
    {OkOnly + CriticalIcon, QMessageBox::Critical, Ok, QMessageBox::Ok},
    {OkOnly + InformationIcon, QMessageBox::Information, Ok, QMessageBox::Ok},
    {OkOnly + ExclamationIcon, QMessageBox::Warning, Ok, QMessageBox::Ok},
    {OkCancel + InformationIcon, QMessageBox::Information, OkOrCancel, QMessageBox::Ok},
    {OkCancel + SecondIsDefault, QMessageBox::NoIcon, OkOrCancel, QMessageBox::Cancel},
    {YesNo + QuestionIcon, QMessageBox::Question, YesOrNo, QMessageBox::Yes},
    {YesNo + CriticalIcon, QMessageBox::Critical, YesOrNo, QMessageBox::Yes},
    {YesNo + SecondIsDefault, QMessageBox::NoIcon, YesOrNo, QMessageBox::No},
    {YesNoCancel, QMessageBox::NoIcon, YesNoOrCancel, QMessageBox::Yes},
    {YesNoCancel + SecondIsDefault, QMessageBox::NoIcon, YesNoOrCancel, QMessageBox::No},
};

struct Given {
    int Style;
    QMessageBox::StandardButton Button;
    Answer Expected;
};

constexpr Given Answers[] = {
    {OkOnly, QMessageBox::Ok, OkAnswer},
    {OkCancel, QMessageBox::Ok, OkAnswer},
    {OkCancel, QMessageBox::Cancel, CancelAnswer},
    {YesNo, QMessageBox::Yes, YesAnswer},
    {YesNo, QMessageBox::No, NoAnswer},
    {YesNoCancel, QMessageBox::Yes, YesAnswer},
    {YesNoCancel, QMessageBox::No, NoAnswer},
    {YesNoCancel, QMessageBox::Cancel, CancelAnswer},
};

void PressEscape(QDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }
void CloseBox(QDialog &dialog) { dialog.close(); }

struct WayOut {
    int Style;
    Answer Expected;
};

constexpr WayOut WaysOut[] = {{OkOnly, OkAnswer}, {OkCancel, CancelAnswer}, {YesNoCancel, CancelAnswer}};

class Boxes : public WindowTest {
protected:
    void SetUp() override { Start(TextRows({"A"})); }
};

class FileDialogs : public WindowTest {
protected:
    void SetUp() override {
        folder.Write("old.rpx", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n");
        folder.Write("BIG.RPX", "0,\"QuintaveV2\",\"SITE.FTF\"\r\n");
        Start(TextRows({"A"}));
    }

    // Looks at the next file dialogue and cancels it.
    void Look(std::function<void(QFileDialog &)> look) {
        Dialogs.Next([look = std::move(look)](QDialog &dialog) {
            auto *const files = qobject_cast<QFileDialog *>(&dialog);
            EXPECT_NE(files, nullptr);
            if (files != nullptr) look(*files);
            dialog.reject();
        });
    }
};

class StartingDialogs : public WindowTest {};

} // namespace

TEST_F(Boxes, EachStyleHasItsIconButtonsAndDefault) {
    for (const auto &[number, icon, buttons, standard] : Styles) {
        Dialogs.Press(static_cast<QMessageBox::StandardButton>(standard));
        MsgBox("Text", number, "Title");
        EXPECT_EQ(Dialogs.Boxes.back(), (SeenBox{"Title", "Text", icon, buttons, standard})) << number;
    }
}

TEST_F(Boxes, EachButtonGivesItsAnswer) {
    for (const auto &[style, button, expected] : Answers) {
        Dialogs.Press(button);
        EXPECT_EQ(MsgBox("Text", style, "Title"), expected) << style;
    }
}

TEST_F(Boxes, EnterPressesTheDefaultButton) {
    for (const int style : {YesNoCancel + SecondIsDefault, int{YesNo}}) {
        Dialogs.Next([](QDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
        EXPECT_EQ(MsgBox("Text", style, "Title"), style == YesNo ? YesAnswer : NoAnswer);
    }
}

TEST_F(Boxes, EscapeAndClosingAreCancelOrOk) {
    for (const auto &[style, expected] : WaysOut) {
        Dialogs.Next(PressEscape);
        EXPECT_EQ(MsgBox("Text", style, "Title"), expected) << style;
        Dialogs.Next(CloseBox);
        EXPECT_EQ(MsgBox("Text", style, "Title"), expected) << style;
    }
}

TEST_F(Boxes, AYesNoBoxIsOnlyEndedByItsButtons) {
    Dialogs.Next([](QDialog &dialog) {
        PressEscape(dialog);
        EXPECT_TRUE(dialog.isVisible());
        CloseBox(dialog);
        EXPECT_TRUE(dialog.isVisible());
        dynamic_cast<QMessageBox &>(dialog).button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(MsgBox("Text", YesNo, "Title"), YesAnswer);
}

TEST_F(Boxes, LineBreaksAreDrawnAsLinesAndTextIsNoMarkup) {
    Dialogs.Next([](QDialog &dialog) {
        const auto &box = dynamic_cast<QMessageBox &>(dialog);
        EXPECT_EQ(box.text().toStdString(), "<b>one</b>\ntwo\n\nthree & four");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        auto *const label = dialog.findChild<QLabel *>("qt_msgbox_label");
        EXPECT_GE(label->height(), 4 * QFontMetrics(label->font()).height());
        dialog.accept();
    });
    MsgBox("<b>one</b>\r\ntwo\n\r\n\rthree & four", OkOnly, "Title");
}

TEST_F(Boxes, LettersOfTheCodePageAreShown) {
    Dialogs.Press(QMessageBox::Ok);
    MsgBox("Größe €", OkOnly, "Ä");
    EXPECT_EQ(Dialogs.Boxes.back().Text, "Größe €");
    EXPECT_EQ(Dialogs.Boxes.back().Title, "Ä");
}

TEST_F(Boxes, ABoxBelongsToTheMainWindowAndBlocksIt) {
    Dialogs.Next([](QDialog &dialog) {
        EXPECT_EQ(dialog.parentWidget(), MainWindow());
        EXPECT_TRUE(dialog.isModal());
        dialog.accept();
    });
    MsgBox("Text", OkOnly, "Title");
}

// The title is the stated one alone: the desktop adds a program's display name to titles where it has one.
TEST_F(Boxes, NothingIsAddedToTitles) {
    EXPECT_EQ(QGuiApplication::applicationDisplayName(), QCoreApplication::applicationName());
}

TEST_F(Boxes, AnInputBoxProposesItsDefaultAndGivesWhatIsTyped) {
    Dialogs.Next([](QDialog &dialog) {
        auto *const input = qobject_cast<QInputDialog *>(&dialog);
        ASSERT_NE(input, nullptr);
        EXPECT_EQ(input->windowTitle(), "Where?");
        EXPECT_EQ(input->labelText(), "one\n\ntwo");
        EXPECT_EQ(input->textValue(), "/data/ä");
        input->setTextValue("/other/ö");
        input->accept();
    });
    EXPECT_EQ(InputBox("one\r\n\r\ntwo", "Where?", "/data/ä"), "/other/ö");
}

TEST_F(Boxes, ACancelledInputBoxGivesNothing) {
    Dialogs.Next(PressEscape);
    EXPECT_EQ(InputBox("one", "Where?", "/data"), "");
    Dialogs.Next(CloseBox);
    EXPECT_EQ(InputBox("one", "Where?", "/data"), "");
}

TEST_F(FileDialogs, SaveAsAsksForANameInTheReportDirectory) {
    Look([&](QFileDialog &files) {
        EXPECT_EQ(files.windowTitle(), "Name a Quintave report (*.RPX) output file...");
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(files.fileMode(), QFileDialog::AnyFile);
        EXPECT_FALSE(files.testOption(QFileDialog::DontConfirmOverwrite));
        EXPECT_EQ(files.directory().absolutePath().toStdString() + "/", folder.Path());
        EXPECT_EQ(files.nameFilters(), QStringList({"Quintave Files(*.rpx) (*.rpx)", "All files(*.*) (*)"}));
        EXPECT_TRUE(files.testOption(QFileDialog::HideNameFilterDetails));
        EXPECT_EQ(files.selectedNameFilter(), "Quintave Files(*.rpx)");
        EXPECT_EQ(files.findChild<QLineEdit *>("fileNameEdit")->text(), "");
        EXPECT_EQ(files.defaultSuffix(), "");
    });
    Click(Named("CommandSaveAs"));
}

TEST_F(FileDialogs, SaveAsAsksBeforeItReplacesAFile) {
    DoubleClickRow(Fields(), 0);
    Type("Wells\n");
    Dialogs.Pick(folder.Path() + "old.rpx");
    Dialogs.Press(QMessageBox::Yes);
    Click(Named("CommandSaveAs"));
    ASSERT_EQ(Dialogs.Boxes.size(), 1U);
    EXPECT_EQ(Dialogs.Boxes[0].Buttons, YesOrNo);
    EXPECT_THAT(Dialogs.Boxes[0].Text, testing::HasSubstr("old.rpx"));
    EXPECT_EQ(folder.Read("old.rpx"), "0,\"QuintaveV2\",\"SITE.FTF\"\r\n1,1,\"A\",\"Wells\"\r\n");
}

TEST_F(FileDialogs, SaveAsAddsNoExtensionAndRefusesOtherOnes) {
    Dialogs.Pick(folder.Path() + "plain");
    Dialogs.Press(QMessageBox::Ok);
    Dialogs.Pick(folder.Path() + "kept.Rpx");
    Click(Named("CommandSaveAs"));
    EXPECT_EQ(Dialogs.Boxes.back(), (SeenBox{"Quintave", "You must select a `.RPX' file!\n\nPlease Try Again.",
                                             QMessageBox::NoIcon, Ok, QMessageBox::Ok}));
    EXPECT_FALSE(folder.Has("plain"));
    EXPECT_TRUE(folder.Has("kept.Rpx"));
    EXPECT_EQ(Quintave.editframe.Caption, "[Template: SITE.FTF] - RPX File(s): kept; ");
}

TEST_F(FileDialogs, AddShowsReportsWhateverTheCaseOfTheirNames) {
    Look([](QFileDialog &files) {
        EXPECT_EQ(files.windowTitle(), "Pick a '*.RPX' file to add...");
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(files.nameFilters(), QStringList({"Quintave Files(*.rpx) (*.rpx)", "All files(*.*) (*)"}));
        const auto *const list = files.findChild<QListView *>("listView");
        EXPECT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 2; }));
    });
    Click(Named("CommandAdd"));
}

TEST_F(FileDialogs, TheTemplateDialogOnlyTakesAFileThatExists) {
    Look([](QFileDialog &files) {
        EXPECT_EQ(files.windowTitle(), "Select a new FIELDS TEMPLATE File...");
        EXPECT_EQ(files.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(files.fileMode(), QFileDialog::ExistingFile);
        EXPECT_EQ(files.nameFilters(), QStringList({"Quintave FTF(*.ftf,*.tbl) (*.ftf *.tbl)", "All files(*.*) (*)"}));
        EXPECT_EQ(files.selectedNameFilter(), "Quintave FTF(*.ftf,*.tbl)");
        EXPECT_EQ(files.findChild<QLineEdit *>("fileNameEdit")->text(), "");
    });
    Click(Named("CommandTemplate"));
}

// The desktop's own dialogues would cut the labels and tell small letters from capital ones.
TEST_F(FileDialogs, TheyAreTheToolkitsOwnOnEveryDesktop) {
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs));
    Look([](QFileDialog &files) { EXPECT_NE(files.findChild<QLineEdit *>("fileNameEdit"), nullptr); });
    Click(Named("CommandAdd"));
}

TEST_F(FileDialogs, PlacesAreOfferedBesideTheFiles) {
    ASSERT_TRUE(QDir(QString::fromStdString(folder.Path())).mkdir("templates"));
    CommonDialog dialog{.Title = "Pick", .InitDir = folder.Path(), .Places = {folder.Path() + "templates"}};
    for (int time = 0; time < 2; ++time) {
        Look([&](QFileDialog &files) {
            EXPECT_EQ(files.sidebarUrls(),
                      QList<QUrl>({QUrl("file:"), QUrl::fromLocalFile(QDir::homePath()),
                                   QUrl::fromLocalFile(QString::fromStdString(folder.Path() + "templates"))}));
        });
        ShowOpen(dialog);
    }
    Look([](QFileDialog &files) { EXPECT_EQ(files.sidebarUrls().size(), 2); });
    Click(Named("CommandAdd"));
}

TEST_F(FileDialogs, AProposedNameIsSelectedUpToItsEnding) {
    for (const auto &[name, selected] : {std::pair{"wells.2004.rpx", "wells.2004"}, std::pair{"wells", "wells"}}) {
        CommonDialog dialog{.Title = "Name", .InitDir = folder.Path(), .FileName = name};
        Look([name = name, selected = selected](QFileDialog &files) {
            Settle();
            const auto *const edit = files.findChild<QLineEdit *>("fileNameEdit");
            EXPECT_EQ(edit->text(), name);
            EXPECT_EQ(edit->selectedText(), selected);
        });
        ShowSave(dialog);
    }
}

TEST_F(FileDialogs, ARefusedNameIsProposedAgain) {
    Dialogs.Pick(folder.Path() + "wells");
    Dialogs.Press(QMessageBox::Ok);
    Look([&](QFileDialog &files) {
        EXPECT_EQ(files.directory().absolutePath().toStdString() + "/", folder.Path());
        EXPECT_EQ(files.findChild<QLineEdit *>("fileNameEdit")->text(), "wells");
    });
    Click(Named("CommandSaveAs"));
}

// What is typed counts, whatever is marked in the list at that time.
TEST_F(FileDialogs, AFullPathIsTakenThoughADirectoryIsMarked) {
    ASSERT_TRUE(QDir(QString::fromStdString(folder.Path())).mkdir("reports"));
    CommonDialog dialog{.Title = "Pick", .InitDir = folder.Path(), .Filter = "Reports|*.rpx"};
    Dialogs.Next([&](QDialog &box) {
        const auto *const list = box.findChild<QListView *>("listView");
        auto *const edit = box.findChild<QLineEdit *>("fileNameEdit");
        box.activateWindow();
        edit->setFocus();
        Settle();
        edit->setText(QString::fromStdString(folder.Path() + "old.rpx"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 3; }));
        for (int row = 0; row < 3; ++row) {
            const QModelIndex index = list->model()->index(row, 0, list->rootIndex());
            if (index.data() == "reports")
                list->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        QTest::keyClick(edit, Qt::Key_Return);
        if (box.isVisible()) box.reject();
    });
    ShowOpen(dialog);
    EXPECT_EQ(dialog.FileName, folder.Path() + "old.rpx");
}

// "*.*" means every file here, one without a dot in its name too.
TEST_F(FileDialogs, AllFilesAreThoseWithoutADotToo) {
    folder.Write("README", "text");
    Look([](QFileDialog &files) {
        files.selectNameFilter(files.nameFilters().back());
        const auto *const list = files.findChild<QListView *>("listView");
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
                    if (list->model()->index(row, 0, list->rootIndex()).data() == "README") return true;
                return false;
            },
            2000));
    });
    Click(Named("CommandAdd"));
}

TEST_F(FileDialogs, ACancelledDialogTellsNothing) {
    for (const char *button : {"CommandAdd", "CommandSaveAs", "CommandSave", "CommandTemplate"}) {
        Dialogs.CancelFile();
        Click(Named(button));
    }
    EXPECT_EQ(Dialogs.Titles.size(), 4U);
    EXPECT_TRUE(Dialogs.Boxes.empty());
}

TEST_F(FileDialogs, NamesOutsideTheCodePageArePossible) {
    Dialogs.Pick(folder.Path() + "Ωμέγα.rpx");
    Click(Named("CommandSaveAs"));
    EXPECT_TRUE(folder.Has("Ωμέγα.rpx"));
}

TEST_F(StartingDialogs, WithoutATableTheDirectoryIsAskedForUntilTheUserGivesUp) {
    Dialogs.Next([&](QDialog &dialog) {
        auto *const input = qobject_cast<QInputDialog *>(&dialog);
        ASSERT_NE(input, nullptr);
        EXPECT_EQ(input->windowTitle(), "Quintave.Tbl Location?");
        EXPECT_EQ(input->labelText(), "What is the Resource Directory for Quintave?\n\n(i.e., where is Quintave.Tbl "
                                      "located?)\n\n(e.g., 'd:\\quintave\\')");
        EXPECT_EQ(input->textValue().toStdString(), folder.Path());
        input->setTextValue("/nowhere");
        input->accept();
    });
    Dialogs.Press(QMessageBox::No);
    EXPECT_FALSE(LoadMainWindow({}));
    EXPECT_EQ(Dialogs.Boxes.back(),
              (SeenBox{"BAD DRIVE/DIRECTORY INFORMATION!",
                       "WARNING! Quintave resources were not found in the directory you specified (/nowhere/).  The "
                       "Quintave.Tbl file must be loaded!  Try Again?",
                       QMessageBox::Critical, YesOrNo, QMessageBox::Yes}));
}
