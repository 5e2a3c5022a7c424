// The row at the lower edge of a list, of which only a part is seen: it is the one that the mouse takes.
#include "window/window_test.h"

#include "platform/qt/window.h"
#include "window/templates.h"

#include <QApplication>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace {

constexpr int Rows = 60;

QRect PlaceOf(const QListView &list, int row) { return list.visualRect(list.model()->index(row, 0)); }

// The row of which a part is seen at the lower edge; -1 where all rows end there.
int CutRow(const QListView &list) {
    const QRect seen = list.viewport()->rect();
    for (int row = 0; row < list.model()->rowCount(); ++row)
        if (PlaceOf(list, row).intersects(seen) && !seen.contains(PlaceOf(list, row))) return row;
    return -1;
}

QPoint PointOf(const QListView &list, int row) {
    return PlaceOf(list, row).intersected(list.viewport()->rect()).center();
}

void Notch(QListView &list) {
    const QPoint at = list.viewport()->rect().center();
    QWheelEvent event(at, list.viewport()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list.viewport(), &event);
    Settle();
}

class CutRows : public WindowTest {
protected:
    // The list ends in the middle of a row.
    static void CutInHalf(const QListView &list) {
        const int row = PlaceOf(list, 0).height();
        const int over = list.viewport()->height() % row;
        MainWindow()->resize(MainWindow()->width(), MainWindow()->height() + row / 2 - over);
        Settle();
        ASSERT_EQ(list.viewport()->height() % row, row / 2);
        ASSERT_GT(CutRow(list), 0);
    }

    static std::vector<std::string> Titles(int count) {
        std::vector<std::string> titles;
        for (int row = 0; row < count; ++row) titles.push_back("Row " + std::to_string(row));
        return titles;
    }

    void StartWith(int rows) {
        Start(TextRows(Titles(rows)));
        CutInHalf(Fields());
    }

    // The row is selected, for the eye and for the program, and no row has moved.
    static void ExpectTaken(const QListView &list, int row, const QRect &place) {
        EXPECT_EQ(SelectedRow(list), row);
        EXPECT_EQ(CurrentField, row);
        EXPECT_EQ(PlaceOf(list, row), place);
    }

    static void ClickCutRow(QListView &list) {
        const int row = CutRow(list);
        const QRect place = PlaceOf(list, row);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, PointOf(list, row));
        Settle();
        ExpectTaken(list, row, place);
    }
};

} // namespace

TEST_F(CutRows, AClickTakesTheRowUnderThePointer) {
    StartWith(Rows);
    ClickCutRow(Fields());
    const int row = CurrentField;
    Type("X\n");
    EXPECT_EQ(RowValue[static_cast<Integer>(row)], "X");
}

TEST_F(CutRows, AClickAfterTheWheelTakesTheRowUnderThePointer) {
    StartWith(Rows);
    for (int notch = 0; notch < 3; ++notch) {
        Notch(Fields());
        ClickCutRow(Fields());
    }
}

// Nothing stands below it that the list could scroll to.
TEST_F(CutRows, TheLastRowCanBeClickedToo) {
    Start(TextRows(Titles(18)));
    const int row = PlaceOf(Fields(), 0).height();
    const int missing = 17 * row + row / 2 - Fields().viewport()->height();
    MainWindow()->resize(MainWindow()->width(), MainWindow()->height() + missing);
    Settle();
    ASSERT_EQ(CutRow(Fields()), 17);
    ClickCutRow(Fields());
}

TEST_F(CutRows, ADoubleClickOpensTheRowUnderThePointer) {
    StartWith(Rows);
    const int row = CutRow(Fields());
    QTest::mouseClick(Fields().viewport(), Qt::LeftButton, {}, PointOf(Fields(), row));
    QTest::mouseDClick(Fields().viewport(), Qt::LeftButton, {}, PointOf(Fields(), row));
    Settle();
    EXPECT_EQ(FocusName(), "Text1_1");
    Type("X\n");
    EXPECT_EQ(RowValue[static_cast<Integer>(row)], "X");
}

TEST_F(CutRows, ADragTakesTheRowOnWhichItEnds) {
    StartWith(Rows);
    const int row = CutRow(Fields());
    const QRect place = PlaceOf(Fields(), row);
    QTest::mousePress(Fields().viewport(), Qt::LeftButton, {}, PointOf(Fields(), row - 3));
    for (const int over : {row - 2, row - 1, row, row})
        QTest::mouseMove(Fields().viewport(), PointOf(Fields(), over) + QPoint(over % 2, 0));
    QTest::mouseRelease(Fields().viewport(), Qt::LeftButton, {}, PointOf(Fields(), row));
    Settle();
    ExpectTaken(Fields(), row, place);
}

TEST_F(CutRows, ADragBelowTheListScrollsIt) {
    StartWith(Rows);
    const int row = CutRow(Fields());
    const int height = PlaceOf(Fields(), 0).height();
    QTest::mousePress(Fields().viewport(), Qt::LeftButton, {}, PointOf(Fields(), row - 3));
    for (int below = 1; below < 6; ++below)
        QTest::mouseMove(Fields().viewport(), PointOf(Fields(), row) + QPoint(0, height));
    QTest::mouseRelease(Fields().viewport(), Qt::LeftButton, {}, PointOf(Fields(), row) + QPoint(0, height));
    Settle();
    EXPECT_GT(Fields().verticalScrollBar()->value(), 0);
    EXPECT_EQ(SelectedRow(Fields()), CurrentField);
    EXPECT_GT(CurrentField, row);
}

TEST_F(CutRows, TheListOfAGroupDoesTheSame) {
    std::vector<std::string> lines{R"(1,20,"GROUP START","Samples","","")"};
    for (const std::string &title : Titles(Rows)) lines.push_back("2,8,\"TEXT\",\"" + title + "\",\"\",\"\"");
    lines.emplace_back(R"(1,1,"GROUP END","","","")");
    Start(lines);
    DoubleClickRow(Fields(), 0);
    auto &members = The<QListView>("List1_3");
    CutInHalf(members);
    ClickCutRow(members);
    Notch(members);
    ClickCutRow(members);
}

// Keys scroll the row that they reach wholly into view, as ever.
TEST_F(CutRows, KeysShowTheRowAsAWhole) {
    StartWith(Rows);
    ClickCutRow(Fields());
    Key(Qt::Key_Down);
    EXPECT_TRUE(Fields().viewport()->rect().contains(PlaceOf(Fields(), CurrentField)));
    Key(Qt::Key_Up);
    EXPECT_TRUE(Fields().viewport()->rect().contains(PlaceOf(Fields(), CurrentField)));
}
