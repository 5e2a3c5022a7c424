// The program's icon: the pictures of packaging/icons, which the desktop shows in its menus too.
#include "platform/qt/icon.h"

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 96, 128, 192, 256}) icon.addFile(QString(":/icons/%1.png").arg(size));
    return icon;
}
