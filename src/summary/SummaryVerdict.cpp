#include "summary/SummaryVerdict.h"

#include "profile/Profile.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace lullwick {

SummaryVerdict SummaryVerdict::of(const AssertionsSnapshot &snapshot)
{
    QList<SleepKind> blocked;
    for (SleepKind kind : allSleepKinds) {
        if (!snapshot.blockers(kind).isEmpty())
            blocked.append(kind);
    }
    return SummaryVerdict(std::move(blocked));
}

SummaryVerdict SummaryVerdict::of(const AssertionsSnapshot &snapshot,
                                  const std::optional<QString> &cannotSuspend)
{
    SummaryVerdict verdict = of(snapshot);
    verdict.m_cannotSuspend = cannotSuspend;
    return verdict;
}

QString SummaryVerdict::text() const
{
    if (m_blocked.isEmpty() && m_cannotSuspend)
        return Profile::current().sleep().verdict.arg(*m_cannotSuspend);
    if (m_blocked.isEmpty())
        return Profile::current().summary().nothingBlocking;
    QStringList labels;
    for (SleepKind kind : m_blocked)
        labels.append(rawValue(kind).toLower());
    return u"Currently blocking: "_s + labels.join(u", "_s) + u'.';
}

} // namespace lullwick
