#pragma once

#include "model/RestartFinding.h"
#include "model/RunningAppInfo.h"
#include "restart/InhibitorEvidence.h"

#include <QList>
#include <optional>

namespace lullwick {

/// The apps that hold the desktop session's logout (and so a restart) with unsaved work.
class UnsavedWorkFinding {
public:
    UnsavedWorkFinding() = delete;

    /// One `likely` finding naming the apps, or nothing when none holds logout. `runningApps`
    /// gives the names people know the apps by.
    [[nodiscard]] static std::optional<RestartFinding> from(const InhibitorEvidence &evidence,
                                                            const QList<RunningAppInfo> &runningApps);
    /// The app's name as its desktop entry gives it, found by its id or its process; else its id,
    /// else its process name.
    [[nodiscard]] static QString appName(const InhibitorEvidence::LogoutInhibitor &inhibitor,
                                         const QList<RunningAppInfo> &runningApps);
};

} // namespace lullwick
