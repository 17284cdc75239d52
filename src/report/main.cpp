#include "report/ReportRunner.h"

#include <QCoreApplication>
#include <cstdio>

using namespace lullwick;

namespace {

void write(FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("lullwick-report"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LULLWICK_VERSION));

    const ReportOptions::Parsed parsed = ReportOptions::parse(QCoreApplication::arguments());
    switch (parsed.action) {
    case ReportOptions::Action::showHelp:
    case ReportOptions::Action::showVersion:
        write(stdout, parsed.message.toUtf8());
        return ReportOptions::ok;
    case ReportOptions::Action::usageError:
        write(stderr, parsed.message.toUtf8());
        return ReportOptions::usage;
    case ReportOptions::Action::run:
        break;
    }

    ReportRunner runner(parsed.options);
    QCoro::connect(runner.run(), &app, [](const ReportOutcome &outcome) {
        write(stdout, outcome.standardOutput);
        write(stderr, outcome.standardError);
        // Queued: the task may end before the event loop has started, when exit() would be lost.
        QMetaObject::invokeMethod(
            qApp, [status = outcome.exitStatus] { QCoreApplication::exit(status); }, Qt::QueuedConnection);
    });
    return QCoreApplication::exec();
}
