#pragma once

#include "standin/SourceResult.h"

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QStringList>

namespace lullwick {

/// PackageKit on the system bus: the transactions under way that change what is installed.
class PackageKitSource {
public:
    explicit PackageKitSource(QDBusConnection systemBus);

    /// What each such transaction does ("install-packages", "update-packages", …), in the order
    /// PackageKit lists them. Asks only a PackageKit that is running: a question never starts it.
    [[nodiscard]] SourceResult<QStringList>
    changingTransactions(QDeadlineTimer deadline = QDeadlineTimer::Forever) const;

private:
    QDBusConnection m_bus;
};

} // namespace lullwick
