#pragma once

#include <QString>
#include <optional>

namespace lullwick {

/// One catalog entry's texts: what the process is doing, what it is, and what the user can do.
struct ProcessInfo {
    QString headline;
    QString explanation;
    std::optional<QString> callToAction;
    /// Whether the process holds locks on behalf of other programs (a session manager, a portal,
    /// a wrapper command), so that a lock's own holder and reason say more than the entry does.
    bool proxy = false;

    bool operator==(const ProcessInfo &) const = default;
};

} // namespace lullwick
