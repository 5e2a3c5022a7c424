// Colours: white with the focus and light grey without, and text that can be read on every background.
#include "window/window_test.h"

#include "help/help_window.h"
#include "platform/dialogs.h"
#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <functional>
#include <map>

namespace {

constexpr double LeastContrast = 4.5; // for text of normal size

const QColor FocusWhite(255, 255, 255);
const QColor RestGrey(192, 192, 192);

QPalette DarkPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(40, 40, 40));
    palette.setColor(QPalette::WindowText, QColor(230, 230, 230));
    palette.setColor(QPalette::Base, QColor(25, 25, 25));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    palette.setColor(QPalette::Button, QColor(50, 50, 50));
    palette.setColor(QPalette::ButtonText, QColor(230, 230, 230));
    palette.setColor(QPalette::Highlight, QColor(42, 90, 160));
    palette.setColor(QPalette::HighlightedText, QColor(255, 255, 255));
    return palette;
}

// The colour that most of a picture has.
QColor Background(const QImage &image) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
    const auto most =
        std::max_element(counts.begin(), counts.end(), [](auto &a, auto &b) { return a.second < b.second; });
    return QColor(most->first);
}

// The contrast of the text in a picture to its background: that of the pixel that differs most.
double TextContrast(const QImage &image) {
    const QColor background = Background(image);
    double best = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) best = std::max(best, Contrast(background, QColor(image.pixel(x, y))));
    return best;
}

QImage PictureOf(const QWidget &widget, QRect part = {}) {
    if (part.isNull()) part = widget.rect();
    QWidget *const window = widget.window();
    return window->grab(QRect(widget.mapTo(window, part.topLeft()), part.size())).toImage();
}

QImage PictureOfRow(const QListView &list, int row) {
    const QRect rect = list.visualRect(list.model()->index(row, 0)).adjusted(3, 1, -3, -1);
    return PictureOf(*list.viewport(), rect & list.viewport()->rect());
}

QColor BackOf(const char *name) { return Named(name).palette().color(QPalette::Base); }

template <class Widget> void ExpectReadable(const QWidget &window, const std::function<QRect(const Widget &)> &partOf) {
    for (const auto *widget : window.findChildren<Widget *>()) {
        const QRect part = partOf(*widget);
        if (!widget->isVisible() || !widget->isEnabled() || part.isEmpty()) continue;
        EXPECT_GE(TextContrast(PictureOf(*widget, part)), LeastContrast) << widget->objectName().toStdString();
    }
}

// Every text of a window but those in lists and boxes.
void ExpectReadable(const QWidget &window = *MainWindow()) {
    ExpectReadable<QLabel>(window, [](const QLabel &label) { return label.text().isEmpty() ? QRect() : label.rect(); });
    ExpectReadable<QPushButton>(window, [](const QPushButton &button) { return button.rect().adjusted(5, 5, -5, -5); });
    ExpectReadable<QGroupBox>(window, [](const QGroupBox &frame) {
        return frame.title().isEmpty() ? QRect() : QRect(12, 0, 90, 2 * frame.fontMetrics().height());
    });
}

struct Painted {
    const char *Name;
    const char *Record; // second line of quintave.tbl
    QColor Expected;    // invalid: as designed
    bool Dark;
};

void PrintTo(const Painted &painted, std::ostream *out) { *out << painted.Name; }

class Colours : public WindowTest {};

class OnColour : public WindowTest, public testing::WithParamInterface<Painted> {};

const Painted Paintings[] = {
    {"DesignLight", "", {}, false},
    {"DesignDark", "", {}, true},
    {"BlackLight", "\"COLOR\",0\r\n", QColor(0, 0, 0), false},
    {"BlackDark", "\"COLOR\",0\r\n", QColor(0, 0, 0), true},
    {"WhiteLight", "\"color\",16777215\r\n", QColor(255, 255, 255), false},
    {"WhiteDark", "\"color\",16777215\r\n", QColor(255, 255, 255), true},
    {"RedLight", "\" color \",255\r\n", QColor(255, 0, 0), false},
    {"RedDark", "\" color \",255\r\n", QColor(255, 0, 0), true},
    {"BlueLight", "\"Color\",16711680\r\n", QColor(0, 0, 255), false},
    {"BlueDark", "\"Color\",16711680\r\n", QColor(0, 0, 255), true},
    {"GreenLight", "\"paint\",255\r\n", QColor(0, 128, 0), false},
    {"GreenDark", "\"paint\",255\r\n", QColor(0, 128, 0), true},
    {"TintLight", "\"COLOR\",15790320\r\n", QColor(240, 240, 240), false},
    {"TintDark", "\"COLOR\",15790320\r\n", QColor(240, 240, 240), true},
};

} // namespace

TEST_P(OnColour, FramesHaveTheTablesColourAndEveryTextCanBeRead) {
    const QPalette light = QApplication::palette();
    if (GetParam().Dark) QApplication::setPalette(DarkPalette());
    folder.Write("quintave.tbl", std::string("\"\",\"site.ftf\",\"-1\"\r\n") + GetParam().Record);
    WriteTemplate(AllKinds());
    StartUp();
    ExpectReadable();
    Click(Named("LogoOff"));
    ExpectReadable();
    if (GetParam().Expected.isValid()) {
        EXPECT_EQ(Background(PictureOf(Named("SectionLabel"))), GetParam().Expected);
        EXPECT_EQ(Named("editframe").palette().color(QPalette::Window), GetParam().Expected);
        EXPECT_EQ(Background(PictureOf(Named("Label2"))), GetParam().Expected);
        EXPECT_EQ(Background(PictureOf(Named("FIPartner_0"))), GetParam().Expected);
        // No rim of the desktop's own colour is left around it.
        EXPECT_EQ(MainWindow()->grab().toImage().pixelColor(1, MainWindow()->height() / 2), GetParam().Expected);
    }
    EXPECT_GE(TextContrast(PictureOfRow(The<QListView>("SectionLabel"), 0)), LeastContrast);
    for (const int row : {TitleRow, AbstractRow}) EXPECT_GE(TextContrast(PictureOfRow(Fields(), row)), LeastContrast);
    Named("CommandSave").setFocus();
    for (const int row : {TitleRow, AbstractRow}) EXPECT_GE(TextContrast(PictureOfRow(Fields(), row)), LeastContrast);
    DoubleClickRow(Fields(), SamplesRow);
    ExpectReadable();
    Click(Named("GrpExit"));
    Dialogs.Press(QMessageBox::Yes);
    Click(Named("CommandPrint"));
    EXPECT_TRUE(Named("PrintFrame").isVisible());
    ExpectReadable();
    EXPECT_GE(TextContrast(PictureOf(Named("Combo1"))), LeastContrast);

    // The desktop changes from light to dark, or back, while the program runs.
    QApplication::setPalette(GetParam().Dark ? light : DarkPalette());
    Settle();
    ExpectReadable();
}

INSTANTIATE_TEST_SUITE_P(Backgrounds, OnColour, testing::ValuesIn(Paintings),
                         [](const auto &painted) { return std::string(painted.param.Name); });

TEST_P(OnColour, MessageInputAndHelpWindowsCanBeRead) {
    if (GetParam().Dark) QApplication::setPalette(DarkPalette());
    folder.Write("quintave.tbl", std::string("\"\",\"site.ftf\",\"-1\"\r\n") + GetParam().Record);
    folder.Write("A.HLP", "About A");
    WriteTemplate({R"(1,30,"TEXT","A","","A.HLP")"});
    StartUp();
    Click(Named("LogoOff"));
    int looked = 0;
    const auto look = [&](QDialog &dialog) {
        ExpectReadable(dialog);
        for (const auto *edit : dialog.findChildren<QLineEdit *>())
            EXPECT_GE(TextContrast(PictureOf(*edit)), LeastContrast);
        ++looked;
        dialog.done(QMessageBox::Cancel);
    };
    for (const int icon : std::initializer_list<int>{0, CriticalIcon, QuestionIcon, ExclamationIcon, InformationIcon}) {
        Dialogs.Next(look);
        MsgBox("Text", YesNoCancel + icon, "Title");
    }
    Dialogs.Next(look);
    InputBox("Prompt", "Title", "/proposal");
    EXPECT_EQ(looked, 6);

    Click(Named("CommandMoreHelp"));
    const QWidget *const text = WidgetOf(Help.HelpText);
    ASSERT_NE(text, nullptr);
    ExpectReadable(*text->window());
    EXPECT_GE(TextContrast(PictureOf(*text)), LeastContrast);
}

TEST_F(Colours, ListsAndBoxesAreWhiteWithTheFocusAndLightGreyWithout) {
    Start(AllKinds());
    EXPECT_EQ(BackOf("List1_0"), FocusWhite);
    EXPECT_EQ(BackOf("Text1_1"), RestGrey);
    const std::vector<std::pair<int, const char *>> rows{
        {TitleRow, "Text1_1"}, {AbstractRow, "Text1_2"}, {NotesRow, "Text1_3"}, {ColourRow, "List2_0"}};
    for (const auto &[row, name] : rows) {
        DoubleClickRow(Fields(), row);
        EXPECT_EQ(FocusName(), name);
        EXPECT_EQ(BackOf("List1_0"), RestGrey) << name;
        EXPECT_EQ(BackOf(name), FocusWhite) << name;
        EXPECT_EQ(Background(PictureOf(Named(name))), FocusWhite) << name;
        Key(Qt::Key_Tab);
        EXPECT_EQ(BackOf(name), RestGrey) << name;
        EXPECT_EQ(Background(PictureOf(Named(name))), RestGrey) << name;
    }
}

TEST_F(Colours, GroupListsAndBoxesDoTheSame) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    auto &members = The<QListView>("List1_3");
    EXPECT_EQ(BackOf("List1_3"), FocusWhite);
    const std::vector<std::pair<int, const char *>> rows{{0, "Text1_4"}, {1, "List2_3"}, {2, "Text1_6"}};
    for (const auto &[row, name] : rows) {
        DoubleClickRow(members, row);
        EXPECT_EQ(BackOf("List1_3"), RestGrey) << name;
        EXPECT_EQ(BackOf(name), FocusWhite) << name;
        Key(Qt::Key_Tab);
        EXPECT_EQ(BackOf(name), RestGrey) << name;
    }
}

TEST_F(Colours, SelectedTextInABoxCanBeReadOnAPaleColourOfSelections) {
    for (const QColor &selection : {QColor(61, 174, 233), QColor(20, 40, 90)}) {
        QPalette palette = DarkPalette();
        palette.setColor(QPalette::Highlight, selection);
        QApplication::setPalette(palette);
        if (MainWindow() == nullptr) Start(AllKinds());
        DoubleClickRow(Fields(), TitleRow);
        Type("W");
        Key(Qt::Key_Home, Qt::ShiftModifier);
        EXPECT_TRUE(Box().textCursor().hasSelection());
        const QRect letter =
            Box().cursorRect().adjusted(1, 0, QFontMetrics(Box().font()).horizontalAdvance('W') - 2, 0);
        EXPECT_EQ(Background(PictureOf(*Box().viewport(), letter)), selection);
        EXPECT_GE(TextContrast(PictureOf(*Box().viewport(), letter)), LeastContrast);
        Key(Qt::Key_Return, Qt::NoModifier, "\r");
    }
}

TEST_F(Colours, TextInBoxesCanBeReadUnderADarkPalette) {
    QApplication::setPalette(DarkPalette());
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("Wells");
    EXPECT_GE(TextContrast(PictureOf(*Box().viewport())), LeastContrast);
    Key(Qt::Key_Tab);
    EXPECT_GE(TextContrast(PictureOf(*Box().viewport())), LeastContrast);
    DoubleClickRow(Fields(), ColourRow);
    for (const int row : {0, 1}) EXPECT_GE(TextContrast(PictureOfRow(Choices(), row)), LeastContrast);
}
