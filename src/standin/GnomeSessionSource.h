#pragma once

#include "platform/ProcessNames.h"
#include "standin/InhibitorLine.h"
#include "standin/SourceResult.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QList>

namespace lullwick {

/// GNOME's session manager on the session bus: the inhibitors applications register with it.
class GnomeSessionSource {
public:
    /// One inhibitor as the session manager describes it.
    struct Inhibitor {
        QString path;
        QString appId;
        QString reason;
        quint32 flags = 0;    ///< logout 1, switch user 2, suspend 4, idle 8, automount 16
        qint64 clientPid = 0; ///< the application's process when it registered as a client, else 0
    };

    explicit GnomeSessionSource(QDBusConnection sessionBus, ProcessNames names = ProcessNames());

    /// One line per inhibitor, held by the session manager's process and, when the application
    /// registered as a client, created for the application's process.
    [[nodiscard]] SourceResult<QList<InhibitorLine>>
    inhibitors(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;
    /// The inhibitors in the order the session manager lists them; those released meanwhile are left out.
    [[nodiscard]] SourceResult<QList<Inhibitor>>
    records(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;

private:
    QDBusConnection m_bus;
    ProcessNames m_names;
};

} // namespace lullwick
