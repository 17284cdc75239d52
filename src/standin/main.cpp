// lullwick-pmset: the stand-in for pmset on Linux, started by Lullwick from its own folder.

#include "standin/PMSetStandin.h"

#include <QCoreApplication>
#include <chrono>
#include <thread>
#include <unistd.h>

int main(int argc, char *argv[])
{
    // Standard error carries our own one-line diagnostics, which the program shows the user when
    // a run fails. Qt's internal warnings have no place there: Qt 6.4's D-Bus thread, for one, can
    // warn about metatypes while the process exits.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    // The listing's own limits cover the calls; this covers the rest, stuck somewhere we cannot
    // interrupt (inside the bus library's connection set-up). The thread ends with the process.
    static_assert(lullwick::PMSetStandin::giveUpMs == 8000, "the message says 8 s");
    std::thread([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(lullwick::PMSetStandin::giveUpMs));
        static constexpr char message[] = "lullwick-pmset: no listing within 8 s; a bus does not answer\n";
        [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, message, sizeof message - 1);
        ::_exit(1);
    }).detach();
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return lullwick::PMSetStandin::run(QCoreApplication::arguments().mid(1), out, err);
}
