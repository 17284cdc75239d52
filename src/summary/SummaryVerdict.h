#pragma once

#include "model/AssertionsSnapshot.h"
#include "model/SleepKind.h"

#include <QList>
#include <QString>
#include <optional>

namespace lullwick {

/// The one-line judgement over a reading: which kinds of sleep something blocks right now.
class SummaryVerdict {
public:
    /// The kinds of `snapshot` that have blockers, in canonical order.
    [[nodiscard]] static SummaryVerdict of(const AssertionsSnapshot &snapshot);
    /// The same, saying also why the computer cannot suspend when nothing blocks it (the sleep
    /// check's reason, e.g. "suspend.target is masked").
    [[nodiscard]] static SummaryVerdict of(const AssertionsSnapshot &snapshot,
                                           const std::optional<QString> &cannotSuspend);

    /// The blocked kinds, in canonical order; empty when nothing blocks sleep.
    [[nodiscard]] const QList<SleepKind> &blockedKinds() const { return m_blocked; }
    /// Whether the computer sleeps as far as the verdict can tell: nothing blocks it and nothing
    /// stops it from suspending.
    [[nodiscard]] bool isClear() const { return m_blocked.isEmpty() && !m_cannotSuspend; }
    /// That nothing prevents sleep, in the profile's words; that nothing holds a lock but the
    /// computer cannot suspend; or "Currently blocking: …".
    [[nodiscard]] QString text() const;

private:
    explicit SummaryVerdict(QList<SleepKind> blocked) : m_blocked(std::move(blocked)) {}
    QList<SleepKind> m_blocked;
    std::optional<QString> m_cannotSuspend;
};

} // namespace lullwick
