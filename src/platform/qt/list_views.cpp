// Lists and combo boxes: views over the control's own rows (views.h).
#include "platform/qt/focusable.h"
#include "platform/qt/text.h"

#include <QAbstractListModel>
#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QStyledItemDelegate>

namespace {

constexpr int ComboCharacters = 7;

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
