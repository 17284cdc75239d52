#include "restart/RestartVerdict.h"

#include "profile/Profile.h"

namespace lullwick {

RestartVerdict RestartVerdict::of(const RestartAnalysis &analysis)
{
    if (!analysis.likelyFindings().isEmpty())
        return RestartVerdict(likelyCause);
    if (!analysis.possibleFindings().isEmpty())
        return RestartVerdict(worthChecking);
    return RestartVerdict(noObviousBlocker);
}

QString RestartVerdict::text() const
{
    return Profile::current().restart().verdicts[m_case];
}

} // namespace lullwick
