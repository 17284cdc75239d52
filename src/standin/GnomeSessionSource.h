#pragma once

#include "standin/InhibitorLine.h"
#include "standin/ProcessNames.h"
#include "standin/SourceResult.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QList>

namespace lullwick {

/// GNOME's session manager on the session bus: the inhibitors applications register with it.
class GnomeSessionSource {
public:
    explicit GnomeSessionSource(QDBusConnection sessionBus, ProcessNames names = ProcessNames());

    /// One line per inhibitor, held by the session manager's process and, when the application
    /// registered as a client, created for the application's process.
    [[nodiscard]] SourceResult<QList<InhibitorLine>> inhibitors(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;

private:
    QDBusConnection m_bus;
    ProcessNames m_names;
};

} // namespace lullwick
