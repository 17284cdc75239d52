#pragma once

#include "platform/ProcessNames.h"
#include "standin/InhibitorLine.h"
#include "standin/SourceResult.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QList>

namespace lullwick {

/// KDE's power policy agent (PowerDevil) on the session bus: the inhibitions applications hold.
class KdePolicyAgentSource {
public:
    explicit KdePolicyAgentSource(QDBusConnection sessionBus, ProcessNames names = ProcessNames());

    /// One line per inhibition, held by the agent's process and naming the application.
    [[nodiscard]] SourceResult<QList<InhibitorLine>>
    inhibitors(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;

private:
    QDBusConnection m_bus;
    ProcessNames m_names;
};

} // namespace lullwick
