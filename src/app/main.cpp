#include "app/LullwickApp.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Lullwick"));
    QApplication::setApplicationVersion(QStringLiteral(LULLWICK_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("io.github.lullwick.Lullwick"));

    lullwick::LullwickApp lullwick;
    lullwick.window().show();
    return QApplication::exec();
}
