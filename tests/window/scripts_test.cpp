// Rows of other scripts: their columns stand where those of the rows around them do.
#include "platform/qt/text.h"
#include "window/templates.h"
#include "window/window_test.h"

#include <QImage>
#include <QListView>

namespace {

using testing::ElementsAre;

class Scripts : public WindowTest {};

std::vector<int> ColumnsOf(std::string_view text) {
    std::vector<int> columns;
    for (const Piece &piece : PiecesOf(text)) columns.push_back(piece.Column);
    return columns;
}

// Where the bar behind the titles stands in a row of a picture: the first dark column in the part of it that has no
// letters.
int BarAt(const QImage &picture, const QRect &row, int from, int to) {
    for (int x = from; x < to; ++x) {
        int dark = 0;
        for (int y = row.top() + 2; y < row.bottom() - 1; ++y) dark += qGray(picture.pixel(x, y)) < 128 ? 1 : 0;
        if (dark * 2 > row.height()) return x;
    }
    return -1;
}

} // namespace

TEST_F(Scripts, ATextIsPaintedInPiecesAtItsColumns) {
    EXPECT_THAT(ColumnsOf("abc"), ElementsAre(0));
    EXPECT_THAT(ColumnsOf("a山田b"), ElementsAre(0, 1, 5));
    EXPECT_THAT(ColumnsOf(" עברית  | שלום"), ElementsAre(0, 8));
    EXPECT_EQ(PiecesOf(" עברית  | שלום")[1].Text, QString("| שלום"));
}

TEST_F(Scripts, TheBarOfEachRowStandsInTheSameColumn) {
    Start({R"(1,30,"TEXT","Title","","")", R"(1,30,"TEXT","山田太郎山田","","")", R"(1,30,"TEXT","שם המחבר","","")",
           R"(1,30,"TEXT","x̌x̌x̌","","")"});
    const QImage picture = Fields().viewport()->grab().toImage();
    const double cell = Fields().fontMetrics().horizontalAdvance('0');
    const int near = static_cast<int>(27 * cell);
    std::vector<int> bars;
    for (int row = 1; row < 4; ++row) { // the first one is selected
        const QRect place = Fields().visualRect(Fields().model()->index(row, 0));
        bars.push_back(BarAt(picture, place, near - static_cast<int>(cell), near + static_cast<int>(2 * cell)));
    }
    EXPECT_GT(bars[0], 0);
    EXPECT_THAT(bars, ElementsAre(bars[0], bars[0], bars[0]));
}
