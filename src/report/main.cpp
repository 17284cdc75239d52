#include "model/TextRules.h"
#include "platform/OrderlyQuit.h"
#include "report/ReportFile.h"
#include "report/ReportRunner.h"

#include <QCoreApplication>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

using namespace lullwick;

namespace {

/// A standard stream that was closed would otherwise be reused by the next file we open, and the
/// report would land in it. Holding its place with a read-only null device makes writes fail.
void holdClosedStandardStreams()
{
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(fd, F_GETFD) == -1 && errno == EBADF)
            ::open("/dev/null", O_RDONLY); // takes the lowest free number: this one
    }
}

/// Writes all of `bytes`; false, with errno set, when the stream did not take them.
bool write(FILE *stream, const QByteArray &bytes)
{
    const size_t size = size_t(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0;
}

/// What a terminal can show: control characters become visible escapes, tabs and line feeds stay.
QByteArray forTerminal(const QByteArray &utf8)
{
    return text::escapedControls(QString::fromUtf8(utf8), u"\t\n").toUtf8();
}

/// Writes the report; on failure says so once on standard error and gives the status to exit with.
int writeReport(const QByteArray &bytes, int status)
{
    if (write(stdout, bytes))
        return status;
    const QByteArray why = std::strerror(errno);
    write(stderr, "lullwick-report: could not write the report: " + why + '\n');
    return ReportOptions::writeFailed;
}

/// Replaces `path` with the report; on failure says so once on standard error.
int writeReportFile(const QString &path, const QByteArray &bytes, int status)
{
    const std::optional<QString> error = ReportFile::replace(path, bytes);
    if (!error)
        return status;
    write(stderr, "lullwick-report: could not write the report to " + text::singleLine(path, 200).toUtf8() +
                      ": " + error->toUtf8() + '\n');
    return ReportOptions::writeFailed;
}

} // namespace

int main(int argc, char **argv)
{
    holdClosedStandardStreams();
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("lullwick-report"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LULLWICK_VERSION));

    const ReportOptions::Parsed parsed = ReportOptions::parse(QCoreApplication::arguments());
    switch (parsed.action) {
    case ReportOptions::Action::showHelp:
    case ReportOptions::Action::showVersion:
        return writeReport(parsed.message.toUtf8(), ReportOptions::ok);
    case ReportOptions::Action::usageError:
        write(stderr, parsed.message.toUtf8());
        return ReportOptions::usage;
    case ReportOptions::Action::run:
        break;
    }

    // A signal ends the event loop; the runner goes first, and its services end the tools still
    // running, as when the report is done.
    const OrderlyQuit quitOnSignals;
    int status = 0;
    {
        ReportRunner runner(parsed.options);
        const QString outputFile = parsed.options.outputFile;
        // The metrics' format escapes what it must; changing it would make it unreadable.
        const bool escapeOut = !parsed.options.json && parsed.options.mode != ReportOptions::Mode::metrics &&
                               outputFile.isEmpty() && ::isatty(STDOUT_FILENO);
        runner.start([escapeOut, outputFile](const ReportOutcome &outcome) {
            int exitStatus = outcome.exitStatus;
            if (outputFile.isEmpty()) {
                exitStatus =
                    writeReport(escapeOut ? forTerminal(outcome.standardOutput) : outcome.standardOutput,
                                outcome.exitStatus);
            } else if (!outcome.standardOutput.isEmpty()) { // a failed reading leaves the old file
                exitStatus = writeReportFile(outputFile, outcome.standardOutput, outcome.exitStatus);
            }
            write(stderr,
                  ::isatty(STDERR_FILENO) ? forTerminal(outcome.standardError) : outcome.standardError);
            // Queued: the reading may end before the event loop has started, when exit() would be lost.
            QMetaObject::invokeMethod(
                qApp, [exitStatus] { QCoreApplication::exit(exitStatus); }, Qt::QueuedConnection);
        });
        status = QCoreApplication::exec();
    }
    OrderlyQuit::settle();
    return status;
}
