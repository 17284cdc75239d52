#pragma once

#include "model/Finding.h"
#include "sleep/SystemFiles.h"

#include <QList>
#include <QString>
#include <optional>

namespace lullwick {

/// Sleep turned off: the sleep targets that systemd will refuse to start because they are masked
/// (their unit file in /etc/systemd/system or /run/systemd/system links to /dev/null).
class MaskedTargets {
public:
    MaskedTargets() = delete;

    /// The masked targets, in the order sleep.target, suspend.target, hibernate.target,
    /// hybrid-sleep.target, suspend-then-hibernate.target.
    [[nodiscard]] static QStringList masked(const SystemFiles &files);
    /// Why the computer cannot suspend, if a mask makes it so ("suspend.target is masked").
    [[nodiscard]] static std::optional<QString> cannotSuspend(const SystemFiles &files);
    /// `likely` when suspend or sleep is masked; `info` when only hibernation is.
    [[nodiscard]] static QList<Finding> findings(const SystemFiles &files);
};

} // namespace lullwick
