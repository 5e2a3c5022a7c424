// The program's icon and picture, of packaging/icons, which the desktop shows in its menus too.
#include "platform/qt/icon.h"

namespace {

QString PictureOf(int size) { return QString(":/icons/%1.png").arg(size); }

} // namespace

// All of its sizes are read, and sent to the window system, as soon as a window is shown: larger ones than window
// managers draw would be a quarter of what a start costs.
QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64}) icon.addFile(PictureOf(size));
    return icon;
}

QPixmap ProgramPicture(int size, double pixelRatio) {
    QPixmap picture(PictureOf(pixelRatio > 1 ? 2 * size : size));
    picture.setDevicePixelRatio(static_cast<double>(picture.width()) / size);
    return picture;
}
