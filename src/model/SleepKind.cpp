#include "model/SleepKind.h"

namespace lullwick {

QString rawValue(SleepKind kind)
{
    switch (kind) {
    case SleepKind::idleSystem:
        return QStringLiteral("Idle system sleep");
    case SleepKind::system:
        return QStringLiteral("All system sleep");
    case SleepKind::display:
        return QStringLiteral("Display sleep");
    }
    Q_UNREACHABLE();
}

std::optional<SleepKind> sleepKindFromRawValue(QStringView text)
{
    for (SleepKind kind : allSleepKinds) {
        if (text == rawValue(kind))
            return kind;
    }
    return std::nullopt;
}

} // namespace lullwick
