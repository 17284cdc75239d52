#pragma once

#include "standin/SourceResult.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QString>
#include <QVariantList>

namespace lullwick {

/// One blocking D-Bus method call, its outcome sorted the way the stand-in reports sources.
class BusCall {
public:
    /// Calls made through this object wait for answers until `deadline` at the latest.
    BusCall(QDBusConnection bus, QString service, QDeadlineTimer deadline = QDeadlineTimer::Forever);

    /// Calls `method` and checks that the reply has `signature`. A service, object, interface or
    /// method that is not there makes the result `missing`; no answer before the deadline makes it
    /// `unanswered`; any other error, or a reply of another type, makes it `failed`.
    [[nodiscard]] SourceResult<QVariantList> call(const QString &path, const QString &interface,
                                                  const QString &method, QStringView signature,
                                                  const QVariantList &arguments = {}) const;

    /// The process that owns the service's name on the bus.
    [[nodiscard]] SourceResult<qint64> ownerPid() const;

private:
    QDBusConnection m_bus;
    QString m_service;
    QDeadlineTimer m_deadline;
};

} // namespace lullwick
