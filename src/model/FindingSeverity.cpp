#include "model/FindingSeverity.h"

namespace lullwick {

std::optional<FindingSeverity> severityFromRawValue(int value)
{
    if (value < rawValue(FindingSeverity::info) || value > rawValue(FindingSeverity::likely))
        return std::nullopt;
    return FindingSeverity(value);
}

QString label(FindingSeverity severity)
{
    switch (severity) {
    case FindingSeverity::likely:
        return QStringLiteral("Likely");
    case FindingSeverity::possible:
        return QStringLiteral("Possible");
    case FindingSeverity::info:
        return QStringLiteral("For reference");
    }
    Q_UNREACHABLE();
}

QString word(FindingSeverity severity)
{
    switch (severity) {
    case FindingSeverity::likely:
        return QStringLiteral("likely");
    case FindingSeverity::possible:
        return QStringLiteral("possible");
    case FindingSeverity::info:
        return QStringLiteral("info");
    }
    Q_UNREACHABLE();
}

} // namespace lullwick
