#pragma once

#include "model/RestartFinding.h"
#include "model/RunningAppInfo.h"
#include "profile/ToolPaths.h"

#include <QList>
#include <QString>
#include <atomic>

namespace lullwick {

/// Where the Linux restart evidence is read: the pmset stand-in (which asks systemd-logind and the
/// desktop session over D-Bus), the journal reader, and the root of the file system.
struct LinuxRestartSources {
    QString standinPath = ToolPaths::pmset();
    QString journalctlPath = ToolPaths::journalctl();
    QString rootDir = QStringLiteral("/");

    /// The findings of the shutdown locks, the apps with unsaved work, the software updates and
    /// the last shutdown, in that order, at most one each; a source that fails adds nothing.
    /// `journalDenied` tells whether the system journal could not be read for want of the right.
    [[nodiscard]] QList<RestartFinding> findings(const QList<RunningAppInfo> &runningApps,
                                                 const std::atomic<bool> &stop,
                                                 bool *journalDenied = nullptr) const;
    /// The stand-in's argument that asks for the locks and inhibitors held against a restart.
    [[nodiscard]] static QString standinArgument() { return QStringLiteral("--restart-evidence"); }
};

} // namespace lullwick
