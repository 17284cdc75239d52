#include "model/AssertionsSnapshot.h"

#include <QSet>

namespace lullwick {

namespace {

bool isSystemSleepKind(const AssertionKind &kind)
{
    return kind.kindCase() == AssertionKind::preventSystemSleep ||
           kind.kindCase() == AssertionKind::denySystemSleepLegacy;
}

bool isIdleSleepKind(const AssertionKind &kind)
{
    return kind.kindCase() == AssertionKind::preventUserIdleSystemSleep ||
           kind.kindCase() == AssertionKind::noIdleSleepLegacy;
}

} // namespace

QList<Assertion> AssertionsSnapshot::blockers(SleepKind kind) const
{
    QSet<qint64> systemSleepPIDs;
    for (const Assertion &a : assertions) {
        if (isSystemSleepKind(a.kind))
            systemSleepPIDs.insert(a.pid);
    }

    QList<Assertion> result;
    for (const Assertion &a : assertions) {
        if (!a.kind.blockedSleepKinds().contains(kind))
            continue;
        // The process is already listed by its system-sleep assertion.
        if (isIdleSleepKind(a.kind) && systemSleepPIDs.contains(a.pid))
            continue;
        result.append(a);
    }
    return result;
}

QList<Assertion> AssertionsSnapshot::nonBlockingAssertions() const
{
    QList<Assertion> result;
    for (const Assertion &a : assertions) {
        if (a.kind.blockedSleepKinds().isEmpty())
            result.append(a);
    }
    return result;
}

} // namespace lullwick
