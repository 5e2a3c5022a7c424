// The icon: in the program at every size, and the same as the one that is installed for the desktop's menus.
#include "platform/qt/icon.h"

#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

TEST(Icon, IsTheInstalledOneAtEverySize) {
    const QIcon icon = ProgramIcon();
    for (const int size : {16, 24, 32, 48, 64, 96, 128, 192, 256}) {
        const QImage installed(QString(ICON_FOLDER "/%1.png").arg(size));
        ASSERT_EQ(installed.size(), QSize(size, size));
        const QImage shown = icon.pixmap(QSize(size, size), 1.0).toImage();
        constexpr auto Format = QImage::Format_ARGB32_Premultiplied; // what a pixmap holds
        EXPECT_TRUE(shown.convertToFormat(Format) == installed.convertToFormat(Format)) << size;
    }
}

TEST(Icon, IsThatOfTheDesktopEntry) { EXPECT_EQ(QGuiApplication::desktopFileName(), "io.github.quintave.quintave"); }
