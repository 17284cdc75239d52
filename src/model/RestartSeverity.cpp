#include "model/RestartSeverity.h"

namespace lullwick {

std::optional<RestartSeverity> restartSeverityFromRawValue(int value)
{
    if (value < rawValue(RestartSeverity::info) || value > rawValue(RestartSeverity::likely))
        return std::nullopt;
    return RestartSeverity(value);
}

QString label(RestartSeverity severity)
{
    switch (severity) {
    case RestartSeverity::likely:
        return QStringLiteral("Likely");
    case RestartSeverity::possible:
        return QStringLiteral("Possible");
    case RestartSeverity::info:
        return QStringLiteral("For reference");
    }
    Q_UNREACHABLE();
}

} // namespace lullwick
