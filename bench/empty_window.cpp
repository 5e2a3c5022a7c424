// The least that a program with the toolkit can be, to compare the program's start with: a window with nothing in it,
// or, with an argument, with that text in it, for which the toolkit has to find a font.
#include <QApplication>
#include <QLabel>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(800, 700);
    if (argc > 1) new QLabel(QString::fromLocal8Bit(argv[1]), &window);
    window.show();
    return QApplication::exec();
}
