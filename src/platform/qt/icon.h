// The program's icon, which all windows have, and the picture of it inside a window.
#pragma once

#include <QIcon>

QIcon ProgramIcon();

// At a size of which packaging/icons holds the picture, and that of twice the size for a screen of finer pixels.
QPixmap ProgramPicture(int size, double pixelRatio);
