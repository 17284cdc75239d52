#include "model/RestartFinding.h"

#include "model/RandomUuid.h"

#include <QHashFunctions>

namespace lullwick {

RestartFinding RestartFinding::make(RestartSeverity severity, QString source, QString title, QString detail,
                                    QString advice)
{
    return {newRandomUuid(),  severity,          std::move(source),
            std::move(title), std::move(detail), std::move(advice)};
}

size_t qHash(const RestartFinding &f, size_t seed) noexcept
{
    // A presence flag before the advice, so that an absent advice and an empty one hash apart.
    if (f.advice)
        return qHashMulti(seed, f.id, rawValue(f.severity), f.source, f.title, f.detail, 1, *f.advice);
    return qHashMulti(seed, f.id, rawValue(f.severity), f.source, f.title, f.detail, 0);
}

} // namespace lullwick
