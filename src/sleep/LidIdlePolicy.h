#pragma once

#include "model/Finding.h"
#include "sleep/SleepContext.h"

#include <QList>

namespace lullwick {

/// systemd-logind's lid and idle policy: the HandleLidSwitch setting that applies now (docked,
/// on external power, or neither), a desktop program holding the lid lock instead, and
/// IdleAction. Lid findings only on a computer with a lid.
class LidIdlePolicy {
public:
    LidIdlePolicy() = delete;

    /// The logind setting that decides the lid now, from Docked and OnExternalPower.
    [[nodiscard]] static QString lidSetting(const SleepContext &context);
    [[nodiscard]] static QList<Finding> findings(const SleepContext &context);
};

} // namespace lullwick
