// The program's icon, drawn: a sheet whose five lines are filled in one after the other.
#include "platform/qt/icon.h"

#include <QPainter>

namespace {

constexpr int Sizes[] = {16, 24, 32, 48, 64, 96, 128, 192, 256};

// Draws on a square of 64 units.
void Draw(QPainter &painter) {
    painter.setPen(QPen(QColor(0x2B, 0x4C, 0x7E), 3));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(9, 4, 46, 56), 5, 5);
    painter.setPen(Qt::NoPen);
    for (int line = 0; line < 5; ++line) {
        const double top = 12 + line * 9.2;
        painter.setBrush(QColor(0x2B, 0x4C, 0x7E));
        painter.drawRect(QRectF(15, top, 11, 5));
        painter.setBrush(line < 3 ? QColor(0x3C, 0x9D, 0x6E) : QColor(0xD5, 0xDD, 0xE8));
        painter.drawRect(QRectF(29, top, line == 1 ? 14 : 20, 5));
    }
}

} // namespace

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : Sizes) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 64.0, size / 64.0);
        Draw(painter);
        icon.addPixmap(pixmap);
    }
    return icon;
}
