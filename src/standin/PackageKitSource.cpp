#include "standin/PackageKitSource.h"

#include "standin/BusCall.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QHash>

namespace lullwick {

namespace {

const QString service = QStringLiteral("org.freedesktop.PackageKit");

/// PackageKit's role numbers (PkRoleEnum) of the transactions that install, remove or update.
QString changingRole(uint role)
{
    static const QHash<uint, QString> roles{
        {10, QStringLiteral("install-files")},   {11, QStringLiteral("install-packages")},
        {14, QStringLiteral("remove-packages")}, {22, QStringLiteral("update-packages")},
        {29, QStringLiteral("repair-system")},   {33, QStringLiteral("upgrade-system")},
    };
    return roles.value(role);
}

} // namespace

PackageKitSource::PackageKitSource(QDBusConnection systemBus) : m_bus(std::move(systemBus)) {}

SourceResult<QStringList> PackageKitSource::changingTransactions(QDeadlineTimer deadline) const
{
    using Result = SourceResult<QStringList>;
    const BusCall bus(m_bus, service, deadline);
    // PackageKit is started on demand by the bus: asking a daemon that is not running would start it.
    const SourceResult<qint64> running = bus.ownerPid();
    if (running.state != running.read)
        return {Result::State(running.state), running.message, {}};
    const SourceResult<QVariantList> list = bus.call(QStringLiteral("/org/freedesktop/PackageKit"), service,
                                                     QStringLiteral("GetTransactionList"), u"ao");
    if (list.state != list.read)
        return {Result::State(list.state), list.message, {}};

    QStringList roles;
    for (const QDBusObjectPath &transaction : qdbus_cast<QList<QDBusObjectPath>>(list.value.constFirst())) {
        const SourceResult<QVariantList> role = bus.call(
            transaction.path(), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
            u"v", {service + QStringLiteral(".Transaction"), QStringLiteral("Role")});
        if (role.endsSource())
            return {Result::State(role.state), role.message, {}};
        if (role.state != role.read)
            continue; // finished since the list was made
        if (const QString word =
                changingRole(role.value.constFirst().value<QDBusVariant>().variant().toUInt());
            !word.isEmpty())
            roles.append(word);
    }
    return Result::of(std::move(roles));
}

} // namespace lullwick
