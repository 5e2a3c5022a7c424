// Text boxes (views.h). What a pasted text becomes is the program's rule: PastedText in platform/controls.h.
#include "platform/qt/focusable.h"
#include "platform/qt/text.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int LongBoxLines = 2; // from this height on a box of one value wraps its text

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
        if (!ReportKey(of, *event)) return;
        if (KeyCodeOf(*event) != EnterCode)
            QPlainTextEdit::keyPressEvent(event);
        else if (of.ManyLines && !of.ReadOnly)
            insertPlainText("\n");
    }

    bool canInsertFromMimeData(const QMimeData *source) const override { return source->hasText(); }

    void insertFromMimeData(const QMimeData *source) override { InsertForeign(source->text()); }

    void inputMethodEvent(QInputMethodEvent *event) override {
        const QString &composed = event->commitString();
        QInputMethodEvent rest(event->preeditString(), event->attributes());
        if (event->replacementLength() > 0)
            rest.setCommitString("", event->replacementStart(), event->replacementLength());
        QPlainTextEdit::inputMethodEvent(&rest);
        if (composed.isEmpty()) return;
        bool foreign = false;
        PastedText(of, composed.toStdString(), foreign);
        const bool one = composed.toUcs4().size() == 1 && !foreign;
        if (!one || ReportComposed(of, composed)) InsertForeign(composed);
    }

private:
    // A text that did not come by keys: as much of it as a report can hold.
    void InsertForeign(const QString &text) {
        bool foreign = false;
        const std::string bytes = PastedText(of, text.normalized(QString::NormalizationForm_C).toStdString(), foreign);
        textCursor().insertText(ToLines(bytes));
        ensureCursorVisible();
        if (foreign) Report([this] { UserPastedForeign(of); });
    }

    // CR LF counts as two characters, the toolkit's line break as one.
    long CaretInBytes() const { return textCursor().position() + textCursor().blockNumber(); }

    int PositionOfCaret() const {
        const std::string before = of.Text.substr(0, static_cast<std::size_t>(of.Caret));
        return static_cast<int>(of.Caret - std::count(before.begin(), before.end(), '\n'));
    }

    // toPlainText() would turn no-break spaces into blanks.
    std::string TextInBytes(bool &foreign) const {
        return PastedText(of, document()->toRawText().toStdString(), foreign);
    }

    void ReportText() {
        if (IsShowingChanges()) return;
        bool foreign = false;
        const std::string text = TextInBytes(foreign);
        if (text == of.Text) return;
        const long caret = CaretInBytes();
        Report([&] {
            // What is dropped into a box, or put there by a screen reader, is only stored by a box that is left again.
            UserEnters(of);
            UserEdits(of, text, caret);
        });
        // A screen reader can put any text here; what was left out of it must not stay on the screen.
        if (foreign) Report([this] { SetText(of, of.Text, of.Caret); });
    }

    void ShowText() {
        bool foreign = false;
        if (TextInBytes(foreign) != of.Text || foreign) setPlainText(ToLines(of.Text));
        QTextCursor cursor = textCursor();
        cursor.setPosition(std::min(PositionOfCaret(), document()->characterCount() - 1));
        setTextCursor(cursor);
    }
};

} // namespace

View MakeTextView(Control &control, QWidget *parent, int lines) { return ViewOf(new TextEdit(control, parent, lines)); }
