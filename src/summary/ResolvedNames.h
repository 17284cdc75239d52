#pragma once

#include <QHash>
#include <QString>

namespace lullwick {

/// Process names by PID, for the processes that assertions were created on behalf of.
using ResolvedNames = QHash<qint64, QString>;

} // namespace lullwick
