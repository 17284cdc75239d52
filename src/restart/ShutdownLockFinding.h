#pragma once

#include "model/RestartFinding.h"
#include "restart/InhibitorEvidence.h"

#include <optional>

namespace lullwick {

/// The systemd-logind locks held against shutdown, as one finding: `likely` when any lock blocks,
/// `info` when they only delay.
class ShutdownLockFinding {
public:
    ShutdownLockFinding() = delete;

    [[nodiscard]] static std::optional<RestartFinding> from(const InhibitorEvidence &evidence);
    /// What a lock's holder is called in a title: the name it gave logind, else its process name.
    /// (The list under the title tells each holder by the catalog's headline, where it has one.)
    [[nodiscard]] static QString holderName(const InhibitorEvidence::ShutdownLock &lock);
};

} // namespace lullwick
