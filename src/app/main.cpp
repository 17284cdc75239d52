#include "app/LullwickApp.h"
#include "platform/AppIdentity.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Lullwick"));
    QApplication::setApplicationVersion(QStringLiteral(LULLWICK_VERSION));
    QApplication::setDesktopFileName(lullwick::AppIdentity::identifier());

    lullwick::LullwickApp lullwick;
    lullwick.window().show();
    return QApplication::exec();
}
