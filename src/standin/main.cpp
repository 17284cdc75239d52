// lullwick-pmset: the stand-in for pmset on Linux, started by Lullwick from its own folder.

#include "standin/PMSetStandin.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    // Standard error carries our own one-line diagnostics, which the program shows the user when
    // a run fails. Qt's internal warnings have no place there: Qt 6.4's D-Bus thread, for one, can
    // warn about metatypes while the process exits.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return lullwick::PMSetStandin::run(QCoreApplication::arguments().mid(1), out, err);
}
