// Characters that are composed, by a dead key, the Compose key or an input method, on the lists.
#include "window/window_test.h"

#include "window/templates.h"

#include <QApplication>
#include <QInputMethodEvent>

namespace {

class ComposedInput : public WindowTest {
protected:
    // The toolkit asks the widget with the focus before it lets keys be composed.
    static bool Composes() {
        QInputMethodQueryEvent query(Qt::ImEnabled);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &query);
        return query.value(Qt::ImEnabled).toBool() &&
               QApplication::focusWidget()->testAttribute(Qt::WA_InputMethodEnabled);
    }

    static void Compose(const QString &text) {
        QInputMethodEvent unfinished("´", {});
        QCoreApplication::sendEvent(QApplication::focusWidget(), &unfinished);
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
        Settle();
    }

    // A list of choices, the second of which begins with a letter that has an accent.
    void StartWithChoices() {
        Start({R"(1,20,"LIST","Letter","","")", "Eta", "École", "Maple", "Mango", "XXX-1XXX",
               R"(1,30,"TEXT","Title","","")"});
    }
};

const SeenBox QuoteRefused{
    "Quintave",
    "the 'double quote' or 'seconds' symbol is a reserved character in Quintave and is not allowed as input. Please "
    "choose another character or spell out the appropriate word.",
    QMessageBox::NoIcon, QMessageBox::Ok, QMessageBox::Ok};

} // namespace

TEST_F(ComposedInput, TheListsTakeItOnEveryRow) {
    Start(AllKinds());
    for (int row = TitleRow; row <= SamplesRow; ++row) {
        EXPECT_EQ(SelectedRow(Fields()), row);
        EXPECT_TRUE(Composes()) << row;
        Key(Qt::Key_Down);
    }
    DoubleClickRow(Fields(), ColourRow);
    EXPECT_EQ(FocusName(), "List2_0");
    EXPECT_TRUE(Composes());
    ClickRow(Choices(), 1);
    EXPECT_TRUE(Composes());
    DoubleClickRow(Fields(), SamplesRow);
    EXPECT_EQ(FocusName(), "List1_3");
    EXPECT_TRUE(Composes());
}

TEST_F(ComposedInput, OnTheFieldListALetterBeginsTheValue) {
    Start(AllKinds());
    Compose("é");
    EXPECT_EQ(FocusName(), "Text1_1");
    Type("a\n");
    EXPECT_EQ(RowValue[TitleRow], "éa");
}

TEST_F(ComposedInput, OnTheFieldListAllLettersOfAWordAreTaken) {
    Start(AllKinds());
    Compose("Ha\u0308user");
    EXPECT_EQ(Box().toPlainText(), "Häuser");
    EXPECT_EQ(FocusName(), "Text1_1");
}

TEST_F(ComposedInput, WhatIsRefusedAsAKeyIsRefused) {
    Start(AllKinds());
    Dialogs.Press(QMessageBox::Ok);
    Compose("\"");
    EXPECT_EQ(Dialogs.Boxes.back(), QuoteRefused);
    EXPECT_EQ(Box().toPlainText(), "");
}

TEST_F(ComposedInput, LettersOfAllScriptsBeginTheValue) {
    Start(AllKinds());
    Compose(QString("日本x\u030C"));
    EXPECT_EQ(Box().toPlainText(), QString("日本x\u030C"));
    EXPECT_TRUE(Dialogs.Titles.empty());
}

TEST_F(ComposedInput, ALetterOfAnyScriptSelectsItsChoice) {
    Start(
        {R"(1,20,"LIST","Letter","","")", "Eta", "Ωmega", "Żółty", "日本", "XXX-1XXX", R"(1,30,"TEXT","Title","","")"});
    Compose("ż");
    EXPECT_EQ(RowValue[0], "Żółty");
    ClickRow(Fields(), 0);
    Compose("日");
    EXPECT_EQ(RowValue[0], "日本");
    DoubleClickRow(Fields(), 0);
    Compose("ω");
    EXPECT_EQ(RowValue[0], "Ωmega");
}

TEST_F(ComposedInput, OnAFieldWithChoicesItSelectsTheChoice) {
    StartWithChoices();
    Compose("É");
    EXPECT_EQ(RowValue[0], "École");
}

TEST_F(ComposedInput, OnTheChoicesItSelectsTheChoice) {
    StartWithChoices();
    DoubleClickRow(Fields(), 0);
    EXPECT_EQ(FocusName(), "List2_0");
    Compose("é");
    EXPECT_EQ(RowValue[0], "École");
}

TEST_F(ComposedInput, InAGroupTooALetterBeginsTheValue) {
    Start(AllKinds());
    DoubleClickRow(Fields(), SamplesRow);
    Compose("ñ");
    EXPECT_EQ(FocusName(), "Text1_4");
    EXPECT_EQ(Box("Text1_4").toPlainText(), "ñ");
}
