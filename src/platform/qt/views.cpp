// The widgets of controls (views.h). Which control stands where, and when views are refreshed: window.cpp.
#include "platform/qt/views.h"

#include "platform/qt/icon.h"
#include "platform/qt/text.h"

#include <QAbstractListModel>
#include <QComboBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionGroupBox>
#include <QStylePainter>
#include <QStyledItemDelegate>
#include <QTextBlock>
#include <QTextDocument>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {

constexpr Integer OtherKey = 255;    // a key of no meaning to the program
constexpr Integer ComposedKey = 229; // a character composed by an input method
constexpr int TwipsPerInch = 1440;
constexpr int BannerPoints = 24;
constexpr int ListPoints = 10;  // of a list, where the user's font is not larger
constexpr int LongBoxLines = 2; // from this height on a box of one value wraps its text
constexpr int ComboCharacters = 7;

// --- Keys
// ---------------------------------------------------------------------------------------------------------------

Integer KeyCodeOf(const QKeyEvent &event) {
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9) || key == Qt::Key_Space)
        return static_cast<Integer>(key);
    switch (key) {
    case Qt::Key_Backspace: return BackspaceCode;
    case Qt::Key_Return:
    case Qt::Key_Enter: return EnterCode;
    case Qt::Key_PageUp: return PageUpKey;
    case Qt::Key_PageDown: return PageUpKey + 1;
    case Qt::Key_End: return PageUpKey + 2;
    case Qt::Key_Home: return PageUpKey + 3;
    case Qt::Key_Left: return PageUpKey + 4;
    case Qt::Key_Up: return PageUpKey + 5;
    case Qt::Key_Right: return PageUpKey + 6;
    case Qt::Key_Down: return DownArrowKey;
    case Qt::Key_Delete: return DeleteKey;
    default: return OtherKey;
    }
}

Integer ShiftStateOf(const QKeyEvent &event) {
    int state = 0;
    if (event.modifiers() & Qt::ShiftModifier) state |= ShiftMask;
    if (event.modifiers() & Qt::ControlModifier) state |= CtrlMask;
    if (event.modifiers() & Qt::AltModifier) state |= AltMask;
    return static_cast<Integer>(state);
}

bool IsModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

// The character that a key gives; "" for none, "\n" for Ctrl+Enter.
std::string CharacterOf(const QKeyEvent &event, Integer keyCode, Integer shift) {
    if (keyCode == EnterCode) return shift == CtrlMask ? "\n" : "\r";
    if (keyCode == BackspaceCode) return "\b";
    if (event.key() == Qt::Key_Escape) return "\x1b";
    const QString text = event.text();
    return text.isEmpty() || text[0].unicode() < ' ' || text[0].unicode() == 0x7F ? "" : text.toStdString();
}

// Reports a key. False where the widget must not act on it.
bool ReportKey(Control &control, const QKeyEvent &event) {
    if (IsModifier(event.key())) return true;
    const Integer keyCode = KeyCodeOf(event);
    const Integer shift = ShiftStateOf(event);
    bool passed = true;
    Report([&] {
        passed = UserKeyDown(control, keyCode, shift);
        if (!passed) return;
        const std::string character = CharacterOf(event, keyCode, shift);
        if (!character.empty()) passed = UserKeyPress(control, character);
    });
    return passed;
}

// What views of all kinds that can have the focus do alike.
template <class Widget> class Focusable : public Widget {
public:
    Focusable(Control &control, QWidget *parent) : Widget(parent), of(control) {}

protected:
    bool event(QEvent *event) override {
        // No shortcut of the toolkit's may come before the program's own table.
        if (event->type() == QEvent::ShortcutOverride) event->accept();
        return Widget::event(event);
    }

    void focusInEvent(QFocusEvent *event) override {
        Widget::focusInEvent(event);
        if (IsShowingChanges() || event->reason() == Qt::ActiveWindowFocusReason ||
            event->reason() == Qt::PopupFocusReason)
            return;
        Report([this] { UserEnters(of); });
    }

    Control &of;
};

// --- Lists and combo boxes
// ----------------------------------------------------------------------------------------------

// The rows of a control, where they are: no copy is kept.
class RowsModel : public QAbstractListModel {
public:
    RowsModel(const Control &control, QObject *parent) : QAbstractListModel(parent), of(control) {}

    int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(of.Rows.size());
    }

    QVariant data(const QModelIndex &index, int role) const override {
        if (role != Qt::DisplayRole || index.row() >= rowCount()) return {};
        return ToOneLine(of.Rows[static_cast<std::size_t>(index.row())]);
    }

    void Refresh(unsigned aspects, const std::vector<Integer> &rows) {
        if (aspects & RowsAspect) {
            beginResetModel();
            endResetModel();
        } else if (aspects & RowAspect) {
            for (const Integer row : rows) emit dataChanged(index(row), index(row));
        }
    }

private:
    const Control &of;
};

// Draws a selected row in a text colour that can be read on the desktop's colour of selected rows.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        const bool active = (option->state & QStyle::State_Active) != 0;
        const QPalette::ColorGroup group = active ? QPalette::Active : QPalette::Inactive;
        option->palette.setColor(group, QPalette::HighlightedText,
                                 ReadableOn(option->palette.color(group, QPalette::Highlight)));
    }
};

class ListRows : public Focusable<QListView> {
public:
    ListRows(Control &control, QWidget *parent) : Focusable(control, parent), rows(new RowsModel(control, this)) {
        setModel(rows);
        setItemDelegate(new RowDelegate(this));
        setUniformItemSizes(true);
        setEditTriggers(NoEditTriggers);
        setTextElideMode(Qt::ElideNone); // rows are cut by the program's own rule
        setSelectionMode(control.TakesFocus ? SingleSelection : NoSelection);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }

    void Refresh(unsigned aspects) {
        rows->Refresh(aspects, of.ChangedRows);
        if (aspects & (RowsAspect | IndexAspect)) ShowSelection();
        if (aspects & PlaceAspect) setFixedWidth(Pixels(*this, of.Width));
    }

    void keyboardSearch(const QString & /*text*/) override {}

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override {
        QListView::currentChanged(current, previous);
        if (IsShowingChanges() || current.row() == of.ListIndex) return;
        selected = true;
        Report([&] { UserSelects(of, ToInteger(current.row())); });
    }

    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override {
        // From no row at all the toolkit goes to the first one by every key.
        if (action == MoveEnd && !currentIndex().isValid()) return rows->index(rows->rowCount() - 1);
        return QListView::moveCursor(action, modifiers);
    }

    void keyPressEvent(QKeyEvent *event) override {
        const Integer keyCode = KeyCodeOf(*event);
        const bool moves = keyCode >= PageUpKey && keyCode <= DownArrowKey;
        if (ReportKey(of, *event) && moves) QListView::keyPressEvent(event);
    }

    void mousePressEvent(QMouseEvent *event) override {
        Report([this] { UserPressesMouse(of); });
        selected = false;
        QListView::mousePressEvent(event);
        const QModelIndex at = indexAt(event->position().toPoint());
        // A click on the row that is selected already is a click all the same.
        if (of.TakesFocus && at.isValid() && !selected && event->button() == Qt::LeftButton)
            Report([&] { UserSelects(of, ToInteger(at.row())); });
    }

    void mouseDoubleClickEvent(QMouseEvent *event) override {
        const bool onRow = indexAt(event->position().toPoint()).isValid();
        if (of.TakesFocus && onRow && event->button() == Qt::LeftButton) Report([this] { UserDoubleClicks(of); });
    }

private:
    void ShowSelection() {
        const QModelIndex index = of.ListIndex < 0 ? QModelIndex() : rows->index(of.ListIndex);
        if (!index.isValid()) clearSelection();
        setCurrentIndex(index);
        if (index.isValid()) scrollTo(index);
    }

    RowsModel *rows;
    bool selected = false; // the present mouse press has selected another row
};

class ComboRows : public Focusable<QComboBox> {
public:
    ComboRows(Control &control, QWidget *parent) : Focusable(control, parent), rows(new RowsModel(control, this)) {
        setModel(rows);
        setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
        setMinimumContentsLength(ComboCharacters);
        connect(this, &QComboBox::activated, this, [this](int row) {
            if (row != of.ListIndex) Report([&] { UserSelects(of, ToInteger(row)); });
        });
    }

    void Refresh(unsigned aspects) {
        rows->Refresh(aspects, of.ChangedRows);
        if (aspects & (RowsAspect | IndexAspect)) setCurrentIndex(of.ListIndex);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (ReportKey(of, *event)) QComboBox::keyPressEvent(event);
    }

    // A wheel that passes over the box on its way down the window must not choose anything.
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }

private:
    RowsModel *rows;
};

// --- Text boxes
// ---------------------------------------------------------------------------------------------------------

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
        const QString composed = event->commitString();
        QInputMethodEvent rest(event->preeditString(), event->attributes());
        if (event->replacementLength() > 0)
            rest.setCommitString("", event->replacementStart(), event->replacementLength());
        QPlainTextEdit::inputMethodEvent(&rest);
        if (composed.isEmpty()) return;
        bool foreign = false;
        PastedText(of, composed.toStdString(), foreign);
        bool taken = true;
        if (composed.toUcs4().size() == 1 && !foreign)
            Report([&] { taken = UserKeyDown(of, ComposedKey, 0) && UserKeyPress(of, composed.toStdString()); });
        if (taken) InsertForeign(composed);
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

// --- The other kinds
// ------------------------------------------------------------------------------------------------------

class Button : public Focusable<QPushButton> {
public:
    Button(Control &control, QWidget *parent) : Focusable(control, parent) {
        setAutoDefault(false);
        connect(this, &QPushButton::clicked, this, [this] { Report([this] { UserPresses(of); }); });
    }

    void Refresh(unsigned aspects) {
        if (!(aspects & TextAspect)) return;
        setText(AsMnemonic(of.Caption));
        setAccessibleName(QString::fromStdString(AccessibleName(of)));
    }

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (!ReportKey(of, *event)) return;
        if (KeyCodeOf(*event) == EnterCode)
            click();
        else
            QPushButton::keyPressEvent(event);
    }
};

class Scroll : public Focusable<QScrollBar> {
public:
    Scroll(Control &control, QWidget *parent) : Focusable(control, parent) {
        setOrientation(Qt::Horizontal);
        setFocusPolicy(Qt::StrongFocus);
        setMinimum(1);
        setPageStep(1);
        connect(this, &QScrollBar::valueChanged, this, [this](int value) {
            if (!IsShowingChanges() && value != of.Value) Report([&] { UserScrolls(of, ToInteger(value)); });
        });
    }

    void Refresh(unsigned aspects) {
        if (!(aspects & RangeAspect)) return;
        setMaximum(of.Max);
        setValue(of.Value);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (!ReportKey(of, *event)) return;
        // The toolkit's scroll bars, which never have the focus, take these two keys the other way round.
        if (event->key() == Qt::Key_Left)
            triggerAction(SliderSingleStepSub);
        else if (event->key() == Qt::Key_Right)
            triggerAction(SliderSingleStepAdd);
        else
            QScrollBar::keyPressEvent(event);
    }
};

View MakeLabel(Control &control, QWidget *parent, int columns) {
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    // A text of more than a few words breaks where the window ends.
    label->setWordWrap(columns > 0 || control.Face == Font::Serif);
    return {label, [&control, label](unsigned aspects) {
                if (aspects & TextAspect) label->setText(AsLabel(control.Caption));
            }};
}

// A frame whose inside keeps its colour: the desktop's style may tint what it frames.
class FrameBox : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QStyleOptionGroupBox option;
        initStyleOption(&option);
        const auto partRect = [&](QStyle::SubControl part) {
            return style()->subControlRect(QStyle::CC_GroupBox, &option, part, this);
        };
        QStylePainter painter(this);
        QColor line = palette().color(QPalette::WindowText);
        line.setAlphaF(0.3F);
        painter.setPen(line);
        painter.setClipRegion(QRegion(rect()) - partRect(QStyle::SC_GroupBoxLabel));
        painter.drawRect(partRect(QStyle::SC_GroupBoxFrame).adjusted(0, 0, -1, -1));
        painter.setClipping(false);
        option.subControls = QStyle::SC_GroupBoxLabel;
        painter.drawComplexControl(QStyle::CC_GroupBox, option);
    }
};

View MakeFrame(Control &control, QWidget *parent) {
    auto *frame = new FrameBox(parent);
    return {frame, [&control, frame](unsigned aspects) {
                if (aspects & TextAspect) frame->setTitle(AsMnemonic(control.Caption));
            }};
}

View MakeImage(QWidget *parent) {
    auto *image = new QLabel(parent);
    image->setPixmap(ProgramIcon().pixmap(QSize(96, 96), image->devicePixelRatioF()));
    return {image, [](unsigned) {}};
}

View MakeTimer(Control &control, QWidget *parent) {
    auto *widget = new QWidget(parent);
    widget->hide();
    auto *timer = new QTimer(widget);
    QObject::connect(timer, &QTimer::timeout, widget, [&control] { Report([&] { UserTicks(control); }); });
    return {widget, [&control, timer](unsigned) { control.Enabled ? timer->start() : timer->stop(); }};
}

template <class Widget> View ViewOf(Widget *widget) {
    return {widget, [widget](unsigned aspects) { widget->Refresh(aspects); }};
}

View MakeWidget(Control &control, QWidget *parent, int columns, int lines) {
    switch (control.Type) {
    case Kind::Frame: return MakeFrame(control, parent);
    case Kind::Label: return MakeLabel(control, parent, columns);
    case Kind::Button: return ViewOf(new Button(control, parent));
    case Kind::List: return ViewOf(new ListRows(control, parent));
    case Kind::TextBox: return ViewOf(new TextEdit(control, parent, lines));
    case Kind::ComboBox: return ViewOf(new ComboRows(control, parent));
    case Kind::ScrollBar: return ViewOf(new Scroll(control, parent));
    case Kind::Image: return MakeImage(parent);
    case Kind::Timer:
    case Kind::Form: break;
    }
    return MakeTimer(control, parent);
}

QFont FixedFont(int points) {
    QFont font("Courier", points);
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    if (QFontInfo(font).fixedPitch()) return font;
    font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(points);
    return font;
}

QFont FontOf(Font face, QFont font) {
    const int users = QFontInfo(font).pointSize();
    switch (face) {
    case Font::Fixed: return FixedFont(std::max(ListPoints, users));
    case Font::Serif: {
        QFont serif("Liberation Serif", users + 1);
        serif.setStyleHint(QFont::Serif);
        return serif;
    }
    case Font::Banner:
        font.setPointSize(BannerPoints);
        font.setBold(true);
        return font;
    case Font::Plain: break;
    }
    return font;
}

void SetLeastSize(QWidget &widget, const Control &control, int columns, int lines) {
    const QFontMetrics metrics(widget.font());
    const int frame = metrics.height() / 2 + 2;
    if (columns > 0) widget.setMinimumWidth(metrics.horizontalAdvance('0') * columns + frame);
    if (lines <= 0) return;
    widget.setMinimumHeight(metrics.lineSpacing() * lines + frame);
    if (control.Type == Kind::TextBox) widget.setFixedHeight(metrics.lineSpacing() * lines + frame + 2);
    // A choice must stay under the pointer for a double-click while the box for another value opens below the list.
    if (control.Type == Kind::List && columns == 0) widget.setFixedHeight(widget.minimumHeight());
}

QString ObjectName(const Control &control) {
    const QString name = QString::fromUtf8(control.Name.data(), static_cast<qsizetype>(control.Name.size()));
    return control.Index < 0 ? name : name + "_" + QString::number(control.Index);
}

} // namespace

View MakeView(Control &control, QWidget *parent, int columns, int lines) {
    View view = MakeWidget(control, parent, columns, lines);
    QWidget &widget = *view.Widget;
    widget.setObjectName(ObjectName(control));
    widget.setFont(FontOf(control.Face, widget.font()));
    SetLeastSize(widget, control, columns, lines);
    if (!control.Title.empty()) widget.setAccessibleName(QString::fromStdString(AccessibleName(control)));
    const QString key = QString::fromStdString(KeyOf(control));
    if (control.Type == Kind::Button && !key.isEmpty()) {
        widget.setAccessibleDescription(key);
        widget.setToolTip(key);
    }
    return view;
}

int Pixels(const QWidget &widget, long twips) { return static_cast<int>(twips * widget.logicalDpiX() / TwipsPerInch); }

QColor ReadableOn(const QColor &background) {
    const auto linear = [](float c) { return c <= 0.03928F ? c / 12.92F : std::pow((c + 0.055F) / 1.055F, 2.4F); };
    const float luminance = 0.2126F * linear(background.redF()) + 0.7152F * linear(background.greenF()) +
                            0.0722F * linear(background.blueF());
    // Where black and white have the same contrast.
    return luminance > 0.179F ? Qt::black : Qt::white;
}
