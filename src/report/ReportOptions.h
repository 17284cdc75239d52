#pragma once

#include "model/SleepKind.h"

#include <QString>
#include <QStringList>

namespace lullwick {

/// What `lullwick-report` was asked to do, read from its command line.
struct ReportOptions {
    /// Which tab's text to print, or the metrics for a Prometheus textfile collector.
    enum class Mode : quint8 { summary, restart, details, metrics };
    /// What the command line asks for beyond the report itself.
    enum class Action : quint8 { run, showHelp, showVersion, usageError };
    /// The process's exit statuses.
    enum ExitStatus : int { ok = 0, blocked = 1, usage = 2, pmsetFailed = 3, writeFailed = 4 };
    // A signal that ends the report (SIGTERM, SIGINT, SIGHUP) makes the status 128 + its number.

    /// The outcome of reading a command line.
    struct Parsed;

    Mode mode = Mode::summary;
    bool json = false;
    /// The sleep kinds whose blocking makes the exit status 1; empty: blocking never does.
    SleepKindSet failIfBlocked;
    /// Where to write the report instead of standard output; empty: standard output.
    QString outputFile;

    /// Reads `arguments` (the program's name first).
    [[nodiscard]] static Parsed parse(const QStringList &arguments);
    /// The word the command line and the JSON use for `kind`: "idle", "system" or "display".
    [[nodiscard]] static QString word(SleepKind kind);
};

struct ReportOptions::Parsed {
    Action action = Action::run;
    ReportOptions options;
    QString message; ///< the help text, the version line, or the error followed by the usage
};

} // namespace lullwick
