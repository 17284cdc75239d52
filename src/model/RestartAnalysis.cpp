#include "model/RestartAnalysis.h"

namespace lullwick {

namespace {

QList<RestartFinding> withSeverity(const QList<RestartFinding> &findings, RestartSeverity severity)
{
    QList<RestartFinding> selected;
    for (const RestartFinding &f : findings) {
        if (f.severity == severity)
            selected.append(f);
    }
    return selected;
}

} // namespace

QList<RestartFinding> RestartAnalysis::likelyFindings() const
{
    return withSeverity(findings, RestartSeverity::likely);
}

QList<RestartFinding> RestartAnalysis::possibleFindings() const
{
    return withSeverity(findings, RestartSeverity::possible);
}

} // namespace lullwick
