#pragma once

#include "platform/ProcessNames.h"
#include "standin/InhibitorLine.h"
#include "standin/InhibitorReferences.h"
#include "standin/LogindLock.h"
#include "standin/SourceResult.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QList>
#include <QPair>

namespace lullwick {

/// A setting line: its name and its value as text.
using Setting = QPair<QString, QString>;

/// systemd-logind on the system bus: the system-wide inhibitor locks and the idle and lid settings.
class LogindSource {
public:
    explicit LogindSource(QDBusConnection systemBus, ProcessNames names = ProcessNames(),
                          InhibitorReferences references = InhibitorReferences());

    /// One line per lock, in the order logind lists them.
    [[nodiscard]] SourceResult<QList<InhibitorLine>>
    inhibitors(QDeadlineTimer deadline = QDeadlineTimer::Forever);
    /// The locks as logind lists them.
    [[nodiscard]] SourceResult<QList<LogindLock>>
    locks(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;
    /// The idle, lid and key settings in force, and what is inhibited right now.
    [[nodiscard]] SourceResult<QList<Setting>>
    settings(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;

private:
    QDBusConnection m_bus;
    ProcessNames m_names;
    InhibitorReferences m_references;
};

} // namespace lullwick
