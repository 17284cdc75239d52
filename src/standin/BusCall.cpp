#include "standin/BusCall.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusReply>

namespace lullwick {

namespace {

bool meansAbsent(const QString &errorName)
{
    // Spawn errors: the bus knows the service but cannot start it (logind without systemd).
    static const QStringList absent{
        QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"),
        QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"),
        QStringLiteral("org.freedesktop.DBus.Error.UnknownObject"),
        QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface"),
        QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"),
    };
    return absent.contains(errorName) ||
           errorName.startsWith(QStringLiteral("org.freedesktop.DBus.Error.Spawn."));
}

} // namespace

BusCall::BusCall(QDBusConnection bus, QString service) : m_bus(std::move(bus)), m_service(std::move(service))
{}

SourceResult<QVariantList> BusCall::call(const QString &path, const QString &interface, const QString &method,
                                         QStringView signature, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_service, path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage reply = m_bus.call(message, QDBus::Block);
    const QString what = QStringLiteral("%1 of %2 at %3").arg(method, m_service, path);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        const QString text = QStringLiteral("%1: %2 (%3)").arg(what, reply.errorMessage(), reply.errorName());
        return meansAbsent(reply.errorName()) ? SourceResult<QVariantList>::absent(text)
                                              : SourceResult<QVariantList>::failure(text);
    }
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != signature) {
        return SourceResult<QVariantList>::failure(
            QStringLiteral("%1: malformed reply of type \"%2\", expected \"%3\"")
                .arg(what, reply.signature(), signature.toString()));
    }
    return SourceResult<QVariantList>::of(reply.arguments());
}

SourceResult<qint64> BusCall::ownerPid() const
{
    const QDBusReply<uint> reply = m_bus.interface()->servicePid(m_service);
    if (reply.isValid())
        return SourceResult<qint64>::of(reply.value());
    const QString text = QStringLiteral("no process for %1: %2 (%3)")
                             .arg(m_service, reply.error().message(), reply.error().name());
    return meansAbsent(reply.error().name()) ? SourceResult<qint64>::absent(text)
                                             : SourceResult<qint64>::failure(text);
}

} // namespace lullwick
