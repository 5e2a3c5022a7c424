// The least that a program with the toolkit can be: a window with nothing in it, to compare the program's start with.
#include <QApplication>
#include <QWidget>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(800, 700);
    window.show();
    return QApplication::exec();
}
