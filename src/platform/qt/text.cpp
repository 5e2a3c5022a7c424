// Text between program and toolkit (text.h).
#include "platform/qt/text.h"

#include "platform/characters.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

QString Decoded(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

} // namespace

QString ToLines(std::string_view text) { return Decoded(text).replace("\r\n", "\n"); }

std::string FromToolkit(const QString &text) {
    if (text.isValidUtf16()) return text.toStdString();
    QString whole = text;
    for (qsizetype i = 0; i < whole.size(); ++i) {
        const bool pair = i + 1 < whole.size() && whole[i].isHighSurrogate() && whole[i + 1].isLowSurrogate();
        if (pair)
            ++i;
        else if (whole[i].isSurrogate())
            whole[i] = QChar::ReplacementCharacter;
    }
    return whole.toStdString();
}

QString ToOneLine(std::string_view text) {
    return Decoded(text).replace("\r\n", " ").replace('\r', ' ').replace('\n', ' ');
}

QString AsLabel(std::string_view caption) { return Decoded(caption).replace("&&", "&"); }

QString AsMnemonic(std::string_view caption) { return AsLabel(caption).replace("&", "&&"); }

QString AsMessage(std::string_view text) {
    return Decoded(text).replace("\n\r\n\r", "\n\n").replace("\r\n", "\n").replace('\r', '\n');
}

std::vector<Piece> PiecesOf(std::string_view text) {
    const std::string line = ToOneLine(text).toStdString();
    std::vector<Piece> pieces;
    std::size_t column = 0;
    for (std::size_t at = 0; at < line.size();) {
        const std::string character = line.substr(at, CharacterLength(line, at));
        const std::size_t columns = Columns(character);
        const bool wide = columns > 1;
        if (pieces.empty() || wide != pieces.back().Wide || character == "|")
            pieces.push_back({static_cast<int>(column), wide, ""});
        pieces.back().Text += QString::fromStdString(character);
        column += columns;
        at += character.size();
    }
    return pieces;
}

void PaintInColumns(QPainter &painter, QPointF start, double column, std::string_view text) {
    const QFont font = painter.font();
    for (const Piece &piece : PiecesOf(text)) {
        if (piece.Wide) {
            const double room = column * static_cast<double>(Columns(piece.Text.toStdString()));
            const double taken = QFontMetricsF(font, painter.device()).horizontalAdvance(piece.Text);
            QFont fitting = font;
            fitting.setStretch(qBound(50, qRound(100 * room / std::max(taken, 1.0)), 200));
            painter.setFont(fitting);
        }
        painter.drawText(start + QPointF(piece.Column * column, 0), piece.Text);
        painter.setFont(font);
    }
}
