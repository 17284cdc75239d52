#pragma once

#include <QString>
#include <optional>

namespace lullwick {

/// One catalog entry's texts: what the process is doing, what it is, and what the user can do.
struct ProcessInfo {
    QString headline;
    QString explanation;
    std::optional<QString> callToAction;

    bool operator==(const ProcessInfo &) const = default;
};

} // namespace lullwick
