// The icon: in the program at every size, and the same as the one that is installed for the desktop's menus.
#include "platform/qt/icon.h"

#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

namespace {

// Whether a pixmap shows what is installed at a size.
bool IsInstalled(const QPixmap &shown, int size) {
    const QImage installed(QString(ICON_FOLDER "/%1.png").arg(size));
    constexpr auto Format = QImage::Format_ARGB32_Premultiplied; // what a pixmap holds
    return installed.size() == QSize(size, size) &&
           shown.toImage().convertToFormat(Format) == installed.convertToFormat(Format);
}

} // namespace

TEST(Icon, IsTheInstalledOneAtEverySizeThatWindowManagersDraw) {
    const QIcon icon = ProgramIcon();
    for (const int size : {16, 24, 32, 48, 64}) EXPECT_TRUE(IsInstalled(icon.pixmap(QSize(size, size), 1.0), size));
}

TEST(Icon, IsPaintedFromTheInstalledPictureOfTheScreensPixels) {
    for (const int ratio : {1, 2}) {
        const QPixmap picture = ProgramPicture(128, ratio);
        EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(128, 128));
        QPixmap pixels = picture;
        pixels.setDevicePixelRatio(1);
        EXPECT_TRUE(IsInstalled(pixels, 128 * ratio));
    }
}

TEST(Icon, IsThatOfTheDesktopEntry) { EXPECT_EQ(QGuiApplication::desktopFileName(), "io.github.quintave.quintave"); }
