// The menu of a box by the right mouse button.
#include "window/window_test.h"

#include "window/templates.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>

#include <map>

namespace {

class BoxMenu : public WindowTest {
protected:
    static QMenu &Open(QPlainTextEdit &box) {
        const QPoint at = box.viewport()->rect().center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, box.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(box.viewport(), &event);
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (menu == nullptr) throw std::runtime_error("no menu");
        return *menu;
    }

    // The entries with the keys that they name.
    static std::map<std::string, std::string> Keys(const QMenu &menu) {
        std::map<std::string, std::string> keys;
        for (const QAction *action : menu.actions())
            if (!action->isSeparator())
                keys[action->text().section('\t', 0, 0).remove('&').toStdString()] =
                    action->text().section('\t', 1).toStdString();
        return keys;
    }

    static void Choose(QMenu &menu, const QString &entry) {
        for (QAction *action : menu.actions())
            if (action->text().section('\t', 0, 0).remove('&') == entry) {
                EXPECT_TRUE(action->isEnabled());
                action->trigger();
            }
        menu.close();
        Settle();
    }
};

} // namespace

TEST_F(BoxMenu, NamesKeysThatDoWhatItSays) {
    Start(AllKinds());
    const std::map<std::string, std::string> keys{
        {"Undo", "Ctrl+Z"},     {"Redo", "Ctrl+Shift+Z"}, {"Cut", "Ctrl+X"},  {"Copy", "Ctrl+C"},
        {"Paste", "Shift+Ins"}, {"Delete", ""},           {"Select All", ""},
    };
    DoubleClickRow(Fields(), TitleRow);
    QMenu &menu = Open(Box());
    EXPECT_EQ(Keys(menu), keys);
    menu.close();
    DoubleClickRow(Fields(), SamplesRow);
    DoubleClickRow(The<QListView>("List1_3"), 0);
    QMenu &inGroup = Open(Box("Text1_4"));
    EXPECT_EQ(Keys(inGroup), keys);
    inGroup.close();
    QApplication::clipboard()->setText("5 m");
    Key(Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(Box("Text1_4").toPlainText(), "5 m");
}

TEST_F(BoxMenu, ItsEntriesWork) {
    Start({R"(1,5,"TEXT","A","","")"});
    DoubleClickRow(Fields(), 0);
    QApplication::clipboard()->setText("0123456789");
    Choose(Open(Box()), "Paste");
    EXPECT_EQ(Box().toPlainText(), "01234");
    Choose(Open(Box()), "Undo");
    EXPECT_EQ(Box().toPlainText(), "");
    Choose(Open(Box()), "Redo");
    EXPECT_EQ(Box().toPlainText(), "01234");
    Choose(Open(Box()), "Select All");
    Choose(Open(Box()), "Delete");
    EXPECT_EQ(Box().toPlainText(), "");
}

// The box is not left by opening it: what was typed is still being typed.
TEST_F(BoxMenu, KeepsTheEdit) {
    Start(AllKinds());
    DoubleClickRow(Fields(), TitleRow);
    Type("Wel");
    Open(Box()).close();
    Settle();
    EXPECT_EQ(FocusName(), "Text1_1");
    Type("ls");
    EXPECT_EQ(Box().toPlainText(), "Wells");
    EXPECT_EQ(RowValue[TitleRow], "");
}
