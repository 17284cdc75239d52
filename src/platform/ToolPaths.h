#pragma once

#include <QString>
#include <QtGlobal>

#ifndef Q_OS_DARWIN
#include <QCoreApplication>
#endif

namespace lullwick::ToolPaths {

// The fixed locations of the system tools the program runs. Services take these as
// constructor defaults so tests can point them elsewhere; the program never does.
inline QString pmset()
{
#ifdef Q_OS_DARWIN
    return QStringLiteral("/usr/bin/pmset");
#else
    // No pmset here: our stand-in ships in the program's own folder. Found from where the
    // program lies, never from PATH or the environment.
    return QCoreApplication::applicationDirPath() + QStringLiteral("/lullwick-pmset");
#endif
}
inline QString ps()
{
    return QStringLiteral("/bin/ps");
}
inline QString log()
{
    return QStringLiteral("/usr/bin/log");
}
inline QString spindump()
{
    return QStringLiteral("/usr/bin/spindump");
}
/// The system journal's reader, for the last shutdown on Linux.
inline QString journalctl()
{
    return QStringLiteral("/usr/bin/journalctl");
}
/// Where the system leaves shutdown stall reports.
inline QString diagnosticReports()
{
    return QStringLiteral("/Library/Logs/DiagnosticReports");
}

/// The application the rows and the Summary page open to look a process up.
inline QString activityMonitor()
{
    return QStringLiteral("/System/Applications/Utilities/Activity Monitor.app");
}

} // namespace lullwick::ToolPaths
