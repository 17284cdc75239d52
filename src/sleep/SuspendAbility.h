#pragma once

#include "model/Finding.h"
#include "sleep/SleepContext.h"

#include <QList>
#include <optional>

namespace lullwick {

/// What systemd-logind says it can do (CanSuspend, CanHibernate), and for "na" the reason one can
/// see: the kernel's sleep states, kernel lockdown, no swap. A masked target is left to
/// MaskedTargets, so it is said once.
class SuspendAbility {
public:
    SuspendAbility() = delete;

    /// Why the computer cannot suspend, when logind says so and no mask explains it.
    [[nodiscard]] static std::optional<QString> cannotSuspend(const SleepContext &context);
    [[nodiscard]] static QList<Finding> findings(const SleepContext &context);
};

} // namespace lullwick
