// Saves what an X display shows as a PNG: the screenshots of the program under a virtual display.
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <cstdio>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: grab_screen OUT.png\n");
        return 2;
    }
    const QPixmap shot = QGuiApplication::primaryScreen()->grabWindow(0);
    return shot.save(QString::fromLocal8Bit(argv[1]), "PNG") ? 0 : 1;
}
