#pragma once

#include "sleep/SleepEvidence.h"
#include "sleep/SystemFiles.h"

#include <QStringList>

namespace lullwick {

/// What every source of the sleep check may look at: the files, logind's answers, and where the
/// computer is now.
struct SleepContext {
    SystemFiles files{QStringLiteral("/")};
    SleepEvidence evidence;
    bool pluggedIn = true; ///< logind's OnExternalPower, else the power supplies
    bool docked = false;
    bool hasLid = false;

    /// The words for where the computer is now: "while docked", "while plugged in" or "on battery".
    [[nodiscard]] QString where() const;

    /// "A, B and C", or "A, B, C and 2 more" past `shown` names.
    [[nodiscard]] static QString names(const QStringList &names, qsizetype shown = 3);
    /// A length of time in plain words: "20 minutes", "1 hour", "90 seconds".
    [[nodiscard]] static QString duration(qint64 seconds);
};

} // namespace lullwick
