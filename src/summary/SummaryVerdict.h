#pragma once

#include "model/AssertionsSnapshot.h"
#include "model/SleepKind.h"

#include <QList>
#include <QString>

namespace lullwick {

/// The one-line judgement over a reading: which kinds of sleep something blocks right now.
class SummaryVerdict {
public:
    /// The kinds of `snapshot` that have blockers, in canonical order.
    [[nodiscard]] static SummaryVerdict of(const AssertionsSnapshot &snapshot);

    /// The blocked kinds, in canonical order; empty when nothing blocks sleep.
    [[nodiscard]] const QList<SleepKind> &blockedKinds() const { return m_blocked; }
    /// That nothing prevents sleep, in the profile's words, or "Currently blocking: …".
    [[nodiscard]] QString text() const;

private:
    explicit SummaryVerdict(QList<SleepKind> blocked) : m_blocked(std::move(blocked)) {}
    QList<SleepKind> m_blocked;
};

} // namespace lullwick
