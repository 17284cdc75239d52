#include "model/Finding.h"

#include "model/RandomUuid.h"

#include <QHashFunctions>
#include <algorithm>

namespace lullwick {

Finding Finding::make(FindingSeverity severity, QString source, QString title, QString detail, QString advice)
{
    return {newRandomUuid(),  severity,          std::move(source),
            std::move(title), std::move(detail), std::move(advice)};
}

size_t qHash(const Finding &f, size_t seed) noexcept
{
    // A presence flag before the advice, so that an absent advice and an empty one hash apart.
    if (f.advice)
        return qHashMulti(seed, f.id, rawValue(f.severity), f.source, f.title, f.detail, 1, *f.advice);
    return qHashMulti(seed, f.id, rawValue(f.severity), f.source, f.title, f.detail, 0);
}

void rankBySeverity(QList<Finding> &findings)
{
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding &a, const Finding &b) { return a.severity > b.severity; });
}

} // namespace lullwick
