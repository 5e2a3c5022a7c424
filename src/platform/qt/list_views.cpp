// Lists and combo boxes: views over the control's own rows (views.h).
#include "platform/characters.h"
#include "platform/qt/focusable.h"
#include "platform/qt/text.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int ComboCharacters = 7;
constexpr int PathMargin = 4; // pixels beside a heading
constexpr int LeastPath = 8;  // characters of a heading in a line, however deep it stands

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
            longest = 0;
            for (const std::string &row : of.Rows) longest = std::max(longest, Columns(row));
            endResetModel();
        } else if (aspects & RowAspect) {
            const auto [first, last] = std::minmax_element(rows.begin(), rows.end());
            emit dataChanged(index(*first), index(*last));
        }
    }

    // Columns of the longest row.
    int Longest() const { return static_cast<int>(longest); }

private:
    const Control &of;
    std::size_t longest = 0;
};

// Tells the width of the longest row, and keeps columns straight.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // The list takes all rows to be as large as the first one, and would not scroll to the end of a longer one.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override {
        const int longest = static_cast<const RowsModel *>(index.model())->Longest();
        const int missing = longest - static_cast<int>(Columns(index.data().toString().toStdString()));
        // The margin behind a row need not be seen.
        const int margin = option.widget->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &option) + 1;
        const int width = option.fontMetrics.horizontalAdvance(QString(std::max(missing, 0), '0'));
        return QStyledItemDelegate::sizeHint(option, index) + QSize(width - margin, 0);
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override {
        const std::string text = index.data().toString().toStdString();
        if (IsAscii(text)) return QStyledItemDelegate::paint(painter, option, index);
        QStyleOptionViewItem row(option);
        initStyleOption(&row, index);
        row.text.clear();
        const QStyle &style = *option.widget->style();
        style.drawControl(QStyle::CE_ItemViewItem, &row, painter, option.widget);
        const QPalette::ColorGroup group = option.state & QStyle::State_Active ? QPalette::Normal : QPalette::Inactive;
        const bool selected = option.state & QStyle::State_Selected;
        const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
        painter->save();
        painter->setClipRect(option.rect);
        painter->setFont(option.font);
        painter->setPen(option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
        const int top = option.rect.top() + (option.rect.height() - option.fontMetrics.height()) / 2;
        const double cell = QFontMetricsF(option.font).horizontalAdvance('0');
        PaintInColumns(*painter, QPointF(option.rect.left() + margin, top + option.fontMetrics.ascent()), cell, text);
        painter->restore();
    }
};

// Draws the path of headings: one that is too long goes on in the next line, under its own first letter.
class PathDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override {
        const auto *const list = static_cast<const QListView *>(option.widget);
        return {0, Measure(option.fontMetrics, list->viewport()->width(), index).height()};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override {
        const QRect place = Measure(option.fontMetrics, option.rect.width(), index).translated(option.rect.topLeft());
        painter->setPen(option.palette.color(QPalette::Text));
        painter->setFont(option.font);
        painter->drawText(place, Qt::TextWordWrap, index.data().toString().trimmed());
    }

private:
    // Where a heading stands in a row of this width.
    static QRect Measure(const QFontMetrics &metrics, int width, const QModelIndex &index) {
        const QString text = index.data().toString();
        const qsizetype blanks = text.size() - QString(text + '.').trimmed().size() + 1;
        const int left = metrics.horizontalAdvance(' ') * static_cast<int>(blanks) + PathMargin;
        const QRect room(left, 0, std::max(width - left - PathMargin, metrics.horizontalAdvance('0') * LeastPath), 0);
        const QRect taken = metrics.boundingRect(room, Qt::TextWordWrap, text.trimmed());
        return {left, 0, room.width(), std::max(taken.height(), metrics.lineSpacing())};
    }
};

class ListRows : public Focusable<QListView> {
public:
    ListRows(Control &control, QWidget *parent) : Focusable(control, parent), rows(new RowsModel(control, this)) {
        setModel(rows);
        // What is only looked at cannot be scrolled by keys, so it must not need it.
        if (control.TakesFocus)
            setItemDelegate(new RowDelegate(this));
        else
            setItemDelegate(new PathDelegate(this));
        setUniformItemSizes(control.TakesFocus);
        setResizeMode(control.TakesFocus ? Fixed : Adjust);
        setEditTriggers(NoEditTriggers);
        setTextElideMode(Qt::ElideNone); // rows are cut by the program's own rule
        setSelectionMode(control.TakesFocus ? SingleSelection : NoSelection);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    }

    void Refresh(unsigned aspects) {
        rows->Refresh(aspects, of.ChangedRows);
        if (aspects & PlaceAspect) setFixedWidth(Pixels(*this, of.Width));
        if (minimumHeight() == maximumHeight() && (aspects & (RowsAspect | PlaceAspect))) ShowWholeRows();
        if (aspects & (RowsAspect | IndexAspect)) ShowSelection();
    }

    void keyboardSearch(const QString & /*text*/) override {}

    // What is seen of a row under a pressed mouse stays there: the toolkit would go on with the row that came under it.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override {
        if (!mouseWorks || !visualRect(index).intersects(viewport()->rect())) QListView::scrollTo(index, hint);
    }

    // All rows are equally high and as wide as the longest may be: the toolkit's list would lay out every one of them
    // anew because one has another text.
    void dataChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) override {
        QAbstractItemView::dataChanged(first, last, roles); // NOLINT(bugprone-parent-virtual-call)
    }

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override {
        QListView::currentChanged(current, previous);
        TakeComposedInput();
        if (IsShowingChanges() || current.row() == of.ListIndex) return;
        selected = true;
        Report([&] { UserSelects(of, ToInteger(current.row())); });
    }

    void selectionChanged(const QItemSelection &now, const QItemSelection &before) override {
        QListView::selectionChanged(now, before);
        if (!IsShowingChanges()) QTimer::singleShot(0, this, [this] { FollowSelection(); });
    }

    // The toolkit would take the selection away from a row that is clicked with Ctrl.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index, const QEvent *event) const override {
        const bool clicked =
            of.TakesFocus && index.isValid() && event != nullptr && event->type() == QEvent::MouseButtonPress;
        return clicked ? QItemSelectionModel::ClearAndSelect : QListView::selectionCommand(index, event);
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

    void focusInEvent(QFocusEvent *event) override {
        Focusable::focusInEvent(event);
        TakeComposedInput();
    }

    // The first character may move the focus: what follows it is for what has the focus then.
    void inputMethodEvent(QInputMethodEvent *event) override {
        const std::string composed = Composed(FromToolkit(event->commitString()));
        const QString text = QString::fromStdString(composed);
        event->accept();
        if (text.isEmpty()) return;
        const QString first = QString::fromStdString(std::string(FirstCharacters(composed, 1)));
        ReportComposed(of, first);
        QWidget *const next = QApplication::focusWidget();
        if (first == text || next == nullptr) return;
        QInputMethodEvent rest;
        rest.setCommitString(text.mid(first.size()));
        QCoreApplication::sendEvent(next, &rest);
    }

    void mousePressEvent(QMouseEvent *event) override {
        const QScopedValueRollback working(mouseWorks, true);
        Report([this] { UserPressesMouse(of); });
        selected = false;
        QListView::mousePressEvent(event);
        const QModelIndex at = indexAt(event->position().toPoint());
        // A click on the row that is selected already is a click all the same.
        if (of.TakesFocus && at.isValid() && !selected && event->button() == Qt::LeftButton)
            Report([&] { UserSelects(of, ToInteger(at.row())); });
    }

    void mouseMoveEvent(QMouseEvent *event) override {
        const QScopedValueRollback working(mouseWorks, true);
        QListView::mouseMoveEvent(event);
    }

    void mouseDoubleClickEvent(QMouseEvent *event) override {
        const bool onRow = indexAt(event->position().toPoint()).isValid();
        if (of.TakesFocus && onRow && event->button() == Qt::LeftButton) Report([this] { UserDoubleClicks(of); });
    }

private:
    // The toolkit takes it away from a list whose rows cannot be edited.
    void TakeComposedInput() { setAttribute(Qt::WA_InputMethodEnabled, of.TakesFocus); }

    // An assistive program selects a row without making it the current one, which the user's hand does.
    void FollowSelection() {
        const QModelIndexList chosen = selectionModel()->selectedIndexes();
        if (chosen.size() != 1 || chosen.front().row() == of.ListIndex) return;
        setFocus(Qt::OtherFocusReason);
        setCurrentIndex(chosen.front());
    }

    // Of a list of fixed height no row is cut in half.
    void ShowWholeRows() {
        if (room == 0) room = height();
        doItemsLayout();
        const int around =
            2 * frameWidth() + (horizontalScrollBar()->maximum() > 0 ? horizontalScrollBar()->height() : 0);
        const int row = std::max(1, sizeHintForRow(0));
        setFixedHeight(around + (room - around) / row * row);
    }

    // Of choices the next ones are to be seen too, or the first ones where none is chosen.
    void ShowSelection() {
        const QModelIndex index = of.ListIndex < 0 ? QModelIndex() : rows->index(of.ListIndex);
        if (!index.isValid()) clearSelection();
        const QRect place = visualRect(index);
        const bool seen = place.top() >= 0 && place.bottom() <= viewport()->rect().bottom();
        setCurrentIndex(index);
        if (index.isValid())
            scrollTo(index, seen || room == 0 ? EnsureVisible : PositionAtCenter);
        else if (room > 0)
            scrollToTop();
    }

    RowsModel *rows;
    int room = 0;          // height that a list of fixed height may take; 0 before it is known
    bool selected = false; // the present mouse press has selected another row
    bool mouseWorks = false;
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

} // namespace

View MakeListView(Control &control, QWidget *parent) { return ViewOf(new ListRows(control, parent)); }

View MakeComboView(Control &control, QWidget *parent) {
    auto *const combo = new ComboRows(control, parent);
    // To a screen reader the toolkit names a combo box by its chosen row; only a label can say what it is for.
    auto *const name = new QLabel(QString::fromStdString(AccessibleName(control)), parent);
    name->setBuddy(combo);
    name->hide();
    return ViewOf(combo);
}
