#pragma once

#include "model/Finding.h"
#include "sleep/SystemFiles.h"

#include <QList>

namespace lullwick {

/// What the kernel offers: suspend-to-idle only, or chosen while deep sleep is offered
/// (/sys/power/mem_sleep), and failed suspends (/sys/power/suspend_stats).
class KernelSleepStates {
public:
    KernelSleepStates() = delete;

    [[nodiscard]] static QList<Finding> findings(const SystemFiles &files);
};

} // namespace lullwick
