#pragma once

#include <QString>

namespace lullwick::ToolPaths {

// The fixed locations of the system tools the program runs. Services take these as
// constructor defaults so tests can point them elsewhere; the program never does.
inline QString pmset()
{
    return QStringLiteral("/usr/bin/pmset");
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
/// Where the system leaves shutdown stall reports.
inline QString diagnosticReports()
{
    return QStringLiteral("/Library/Logs/DiagnosticReports");
}

} // namespace lullwick::ToolPaths
