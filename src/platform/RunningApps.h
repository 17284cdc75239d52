#pragma once

#include "model/RunningAppInfo.h"

#include <QList>
#include <QString>
#include <optional>

namespace lullwick::RunningApps {

/// The regular applications running now, in a stable order: on Apple those the workspace lists
/// with a regular activation policy; on Linux the user's processes that belong to an installed
/// desktop application (XDG desktop entry), named by its localized Name and identified by its
/// desktop-file id. Unfiltered: the program itself and nameless entries are still in the list.
/// On Linux the processes are read from `processRoot`, the system's /proc unless a test or a
/// benchmark supplies a made-up one; Apple builds ask the workspace and ignore it.
[[nodiscard]] QList<RunningAppInfo> current(const QString &processRoot = QStringLiteral("/proc"));

/// This program's own identifier, as `RunningAppInfo::bundleID` would carry it.
[[nodiscard]] std::optional<QString> ownIdentifier();

} // namespace lullwick::RunningApps
