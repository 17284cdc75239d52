#include <QApplication>
#include <QWidget>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Lullwick"));

    QWidget window;
    window.setWindowTitle(QStringLiteral("Lullwick"));
    window.resize(640, 520);
    window.show();
    return QApplication::exec();
}
