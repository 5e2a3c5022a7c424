// Between the program's text (UTF-8, lines ending in CR LF) and the toolkit's.
#pragma once

#include <QPointF>
#include <QString>

#include <string>
#include <string_view>
#include <vector>

class QPainter;

// A text for a box with many lines: CR LF becomes one line break.
QString ToLines(std::string_view text);

// A text of the toolkit's; half a character of two is U+FFFD.
std::string FromToolkit(const QString &text);

// A text for one line: line breaks become blanks, one each.
QString ToOneLine(std::string_view text);

// A text for one line in pieces that are painted each at its column. The text behind a bar is one of its own, so that
// it stays there whichever way the title is read; so are wide characters, which are seldom just twice as wide as
// others.
struct Piece {
    int Column = 0;
    bool Wide = false;
    QString Text;
};

std::vector<Piece> PiecesOf(std::string_view text);

// Paints them on a baseline, in columns of this width.
void PaintInColumns(QPainter &painter, QPointF start, double column, std::string_view text);

// A caption: "&&" means one ampersand. AsLabel for a text that has no mnemonics, AsMnemonic for one that would make one
// of a single ampersand.
QString AsLabel(std::string_view caption);
QString AsMnemonic(std::string_view caption);

// A message: CR LF is one line break, LF CR LF CR two.
QString AsMessage(std::string_view text);
