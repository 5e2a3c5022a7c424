// Text boxes (views.h). What a pasted text becomes is the program's rule: PastedText in platform/controls.h.
#include "platform/characters.h"
#include "platform/qt/focusable.h"
#include "platform/qt/text.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr int LongBoxLines = 2; // from this height on a box of one value wraps its text

// Where one text differs from another: what is gone from the first one there, and what was put in its place.
struct Difference {
    qsizetype At, Gone, Put;
};

Difference DifferenceOf(const QString &before, const QString &after) {
    const auto [b, a] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto [rb, ra] = std::mismatch(std::reverse_iterator(before.end()), std::reverse_iterator(b),
                                        std::reverse_iterator(after.end()), std::reverse_iterator(a));
    return {b - before.begin(), rb.base() - b, ra.base() - a};
}

enum class Edit : std::uint8_t { None, New, Step }; // Step: undo or redo

// A text as the toolkit holds it.
QString Shown(const std::string &text) { return ToLines(text).replace('\n', QChar::ParagraphSeparator); }

class TextEdit : public Focusable<QPlainTextEdit> {
public:
    TextEdit(Control &control, QWidget *parent, int lines) : Focusable(control, parent) {
        setTabChangesFocus(true);
        setReadOnly(control.ReadOnly);
        const bool wraps = control.ManyLines || lines >= LongBoxLines;
        setLineWrapMode(wraps ? WidgetWidth : NoWrap);
        setVerticalScrollBarPolicy(wraps ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        connect(this, &QPlainTextEdit::textChanged, this, [this] { ReportText(); });
        connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] {
            if (!IsShowingChanges()) of.Caret = CaretInBytes();
        });
    }

    void Refresh(unsigned aspects) {
        if (aspects & TextAspect) ShowText();
        if ((aspects & PlaceAspect) && of.Height == 0) setFixedWidth(Pixels(*this, of.Width));
    }

protected:
    void keyPressEvent(QKeyEvent *event) override {
        // An edit of its own comes before what the program would undo by the same key.
        if (StepsByKey(*event)) return;
        if (!ReportKey(of, *event)) return;
        const Integer keyCode = KeyCodeOf(*event);
        // The toolkit knows its shortcuts by Latin letters.
        const bool letter = keyCode >= 'A' && keyCode <= 'Z';
        QKeyEvent key(event->type(), letter ? keyCode : event->key(), event->modifiers(), event->text());
        if (keyCode == EnterCode)
            BreakLine();
        else if (keyCode == BackspaceCode && event->modifiers() == Qt::NoModifier && !of.ReadOnly)
            DeleteBackwards();
        else if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo))
            Step(key.matches(QKeySequence::Undo));
        else
            QPlainTextEdit::keyPressEvent(&key);
    }

    // The toolkit's own menu names keys that mean something else here.
    void contextMenuEvent(QContextMenuEvent *event) override {
        QMenu *const menu = createStandardContextMenu(event->pos());
        menu->setAttribute(Qt::WA_DeleteOnClose);
        for (QAction *action : menu->actions()) CorrectEntry(*action);
        menu->popup(event->globalPos());
    }

    bool canInsertFromMimeData(const QMimeData *source) const override { return source->hasText(); }

    void insertFromMimeData(const QMimeData *source) override { Paste(source->text()); }

    void inputMethodEvent(QInputMethodEvent *event) override {
        const QString &composed = event->commitString();
        QInputMethodEvent rest(event->preeditString(), event->attributes());
        if (event->replacementLength() > 0)
            rest.setCommitString("", event->replacementStart(), event->replacementLength());
        QPlainTextEdit::inputMethodEvent(&rest);
        if (composed.isEmpty()) return;
        if (Length(FromToolkit(composed)) > 1)
            Paste(composed);
        else if (ReportComposed(of, composed))
            Insert(composed);
    }

private:
    // Ctrl+Z and Ctrl+Y where the box has something to undo, to do again.
    bool StepsByKey(const QKeyEvent &event) {
        const Integer key = event.modifiers() == Qt::ControlModifier ? KeyCodeOf(event) : Integer{0};
        return (key == 'Z' || key == 'Y') && Step(key == 'Z');
    }

    void BreakLine() {
        if (!of.ManyLines || of.ReadOnly) return;
        insertPlainText("\n");
        ensureCursorVisible();
    }

    // A text that did not come by keys.
    void Insert(const QString &text) {
        textCursor().insertText(ToLines(PastedText(of, FromToolkit(text))));
        ensureCursorVisible();
    }

    void Paste(const QString &text) {
        Insert(text);
        Report([&] { UserPasted(of, FromToolkit(text)); });
    }

    // A letter with its marks goes as a whole, as it does forwards.
    void DeleteBackwards() {
        QTextCursor cursor = textCursor();
        if (!cursor.hasSelection()) cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        ensureCursorVisible();
    }

    long CaretInBytes() const { return static_cast<long>(InBytes(Raw().left(textCursor().position())).size()); }

    int PositionOfCaret() const {
        return static_cast<int>(Shown(of.Text.substr(0, static_cast<std::size_t>(of.Caret))).size());
    }

    // toPlainText() would turn no-break spaces into blanks.
    QString Raw() const { return document()->toRawText(); }

    static std::string InBytes(QString raw) { return FromToolkit(raw.replace(QChar::ParagraphSeparator, "\r\n")); }

    // The text with what the user has put in as a value holds it; what was there before stays as it is, and so does
    // what comes back by undo. A mark that was typed behind its letter becomes one with it. Hands out where the caret
    // stands then; it stays as it is in a text that is just so.
    std::string TextInBytes(const QString &now, long &caret) const {
        const Difference changed = DifferenceOf(known, now);
        const QString put = now.mid(changed.At, changed.Put);
        std::string before = InBytes(now.left(changed.At));
        const std::string behind = InBytes(now.mid(changed.At + changed.Put));
        std::string fitting = edit == Edit::Step ? InBytes(put) : PastedText(of, FromToolkit(put));
        if (edit != Edit::Step && !put.isEmpty() && put[0].category() == QChar::Mark_NonSpacing) {
            const std::size_t letter = LastCharacters(before, 1).size();
            fitting = Composed(before.substr(before.size() - letter) + fitting);
            before.resize(before.size() - letter);
        }
        if (before + fitting != InBytes(now.left(changed.At) + put))
            caret = static_cast<long>(before.size() + fitting.size());
        return before + fitting + behind;
    }

    void ReportText() {
        if (IsShowingChanges()) return;
        const QString now = Raw();
        long caret = CaretInBytes();
        const std::string text = TextInBytes(now, caret);
        const bool converted = text != InBytes(now);
        known = now;
        const QScopedValueRollback answering(edit, edit == Edit::None ? Edit::New : edit);
        Report([&] {
            // What is dropped into a box, or put there by a screen reader, is only stored by a box that is left again.
            UserEnters(of);
            if (text != of.Text) UserEdits(of, text, caret);
            // What was left out of the text must not stay on the screen.
            if (converted || text != of.Text) SetText(of, of.Text, of.Caret);
        });
    }

    bool ShowsText() const { return Shown(of.Text) == known; }

    // Undo or redo, up to a text that the program takes and that is another one: its corrections are steps, too. False
    // where there is none.
    bool Step(bool back) {
        const std::string before = of.Text;
        bool more = true;
        while (more && (back ? document()->isUndoAvailable() : document()->isRedoAvailable())) {
            const QScopedValueRollback stepping(edit, Edit::Step);
            back ? undo() : redo();
            more = !ShowsText() || of.Text == before;
        }
        const QScopedValueRollback answering(edit, Edit::New);
        if (!ShowsText()) Report([this] { SetText(of, of.Text, of.Caret); });
        return of.Text != before;
    }

    // A text of the program's begins a new history, its correction of an edit does not.
    void ShowText() {
        if (edit != Edit::Step) Fill(Shown(of.Text));
    }

    void Fill(const QString &text) {
        if (edit != Edit::None)
            Correct(text);
        else if (text != Raw())
            setPlainText(ToLines(of.Text));
        else
            document()->clearUndoRedoStacks();
        known = Raw();
        QTextCursor cursor = textCursor();
        cursor.setPosition(std::min(PositionOfCaret(), document()->characterCount() - 1));
        setTextCursor(cursor);
    }

    void CorrectEntry(QAction &entry) {
        const QString name = entry.objectName();
        if (name == "select-all") NameKey(entry, {});
        if (name == "edit-paste") NameKey(entry, Qt::SHIFT | Qt::Key_Insert);
        if (name == "edit-redo") NameKey(entry, Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
        if (name != "edit-undo" && name != "edit-redo") return;
        entry.disconnect();
        connect(&entry, &QAction::triggered, this, [this, back = name == "edit-undo"] { Step(back); });
    }

    static void NameKey(QAction &entry, const QKeySequence &key) {
        const QString shown = key.toString(QKeySequence::NativeText);
        entry.setText(entry.text().section('\t', 0, 0) + (shown.isEmpty() ? "" : '\t' + shown));
    }

    void Correct(const QString &text) {
        const Difference wrong = DifferenceOf(Raw(), text);
        QTextCursor cursor(document());
        cursor.setPosition(static_cast<int>(wrong.At));
        cursor.setPosition(static_cast<int>(wrong.At + wrong.Gone), QTextCursor::KeepAnchor);
        if (cursor.hasSelection() || wrong.Put > 0) cursor.insertText(text.mid(wrong.At, wrong.Put));
    }

    QString known;          // the text as it was looked at last
    Edit edit = Edit::None; // what the program answers now by its changes
};

} // namespace

View MakeTextView(Control &control, QWidget *parent, int lines) { return ViewOf(new TextEdit(control, parent, lines)); }
