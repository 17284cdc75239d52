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

/// The application the rows and the Summary page open to look a process up.
inline QString activityMonitor()
{
    return QStringLiteral("/System/Applications/Utilities/Activity Monitor.app");
}

} // namespace lullwick::ToolPaths
