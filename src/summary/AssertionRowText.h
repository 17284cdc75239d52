#pragma once

#include "catalog/ProcessInfo.h"
#include "model/Assertion.h"
#include "summary/ResolvedNames.h"

#include <QString>
#include <optional>

namespace lullwick {

/// What an assertion row says, derived from the assertion, the process catalog and the names
/// resolved so far. Shared by the Summary page's rows and its clipboard text.
struct AssertionRowText {
    QString title;                          ///< the created-for entry's headline, else the primary text
    QString primaryText;                    ///< the own entry's headline, else the fallback reason
    QString processSuffix;                  ///< " (pid 312)—" and the kind's description
    std::optional<qint64> createdForPID;    ///< whom the assertion was created for
    std::optional<QString> createdForLine;  ///< "Created for …", when there is a created-for PID
    std::optional<QString> explanation;     ///< the explaining entry's, unless it equals the primary text
    std::optional<QString> callToAction;    ///< the created-for entry's, else the own entry's
    std::optional<QString> ownCallToAction; ///< the own entry's
    qint64 revealPID = 0;                   ///< the PID the Activity Monitor button copies
    /// Where rows quote holders (Linux): the program or application that took the lock, as the
    /// lock names it.
    std::optional<QString> holder;
    /// Where rows quote holders: the lock's holder and reason in their own words, when they say
    /// something the title does not.
    std::optional<QString> quote;

    /// The row of `assertion` with the names known in `names`.
    [[nodiscard]] static AssertionRowText make(const Assertion &assertion, const ResolvedNames &names);

    /// A friendly "Localized=" value or name of the assertion, else its kind's description.
    [[nodiscard]] static QString fallbackReason(const Assertion &assertion);
    /// The held badge's text: "Held " and the shortened time; empty where the time is not known
    /// and rows say nothing of it.
    [[nodiscard]] static QString heldText(const QString &timeHeld);
    /// Whether the held time says anything; false for the word that says it is not known.
    [[nodiscard]] static bool heldKnown(const QString &timeHeld);
    /// pmset's "hh:mm:ss" held time shortened ("1h 5m", "5m 3s", "42s"); anything else unchanged.
    [[nodiscard]] static QString prettyDuration(const QString &timeHeld);
};

} // namespace lullwick
