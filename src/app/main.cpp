#include "app/LullwickApp.h"
#include "platform/AppIdentity.h"
#include "platform/OrderlyQuit.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Lullwick"));
    QApplication::setApplicationVersion(QStringLiteral(LULLWICK_VERSION));
    QApplication::setDesktopFileName(lullwick::AppIdentity::identifier());

    // A signal closes the program as closing the window does: the window and its services go, and
    // with them the tools still running.
    const lullwick::OrderlyQuit quitOnSignals;
    int status = 0;
    {
        lullwick::LullwickApp lullwick;
        lullwick.window().show();
        status = QApplication::exec();
    }
    lullwick::OrderlyQuit::settle();
    return status;
}
