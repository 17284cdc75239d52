#pragma once

#include "profile/Profile.h"

#include <QString>

namespace lullwick::ToolPaths {

// The fixed locations of the system tools the program runs, as the current profile has them.
// Services take these as constructor defaults so tests can point them elsewhere; the program
// never does.
inline QString pmset()
{
    return Profile::current().pmset();
}
inline QString ps()
{
    return Profile::current().ps();
}
inline QString log()
{
    return Profile::current().log();
}
inline QString spindump()
{
    return Profile::current().spindump();
}
/// The system journal's reader, for the last shutdown on Linux.
inline QString journalctl()
{
    return QStringLiteral("/usr/bin/journalctl");
}
/// Where the system leaves shutdown stall reports.
inline QString diagnosticReports()
{
    return Profile::current().diagnosticReports();
}

} // namespace lullwick::ToolPaths
