#pragma once

#include "model/Finding.h"
#include "profile/ToolPaths.h"
#include "sleep/DesktopSuspend.h"

#include <QList>
#include <QString>
#include <atomic>
#include <optional>

namespace lullwick {

/// What the sleep check found: its findings, most severe first, and why the computer cannot
/// suspend, when a `likely` finding says so.
struct SleepFindings {
    QList<Finding> findings;
    std::optional<QString> cannotSuspend; ///< e.g. "suspend.target is masked"
    bool journalDenied = false;           ///< the system journal's last suspends could not be read

    /// Equal when they say the same things; the findings' ids are new with every check.
    [[nodiscard]] bool sameAs(const SleepFindings &other) const;
};

/// Why the computer may still not sleep when nothing holds a lock: masked sleep targets, what
/// systemd-logind and the kernel offer, the lid and idle policy, the desktop's automatic suspend
/// and what may wake it. Only a Linux system has one.
struct SleepCheck {
    QString standinPath = ToolPaths::pmset();
    QString rootDir = QStringLiteral("/");
    DesktopSuspend::Setup desktop = DesktopSuspend::Setup::ofSession();
    QString journalctlPath = ToolPaths::journalctl();

    /// The check of the current profile's system: nothing on macOS.
    [[nodiscard]] static std::optional<SleepCheck> forProfile();

    /// Runs every source (the stand-in's logind answers first, which may take 5 s at most, and the
    /// system journal's last suspends last) and ranks their findings. Blocks the calling worker
    /// thread; a source that fails adds nothing.
    [[nodiscard]] SleepFindings run(const std::atomic<bool> &stop) const;
    /// The findings of the sources over what has been read, the journal aside.
    [[nodiscard]] SleepFindings evaluate(const SleepEvidence &evidence, const std::atomic<bool> &stop) const;
};

} // namespace lullwick
