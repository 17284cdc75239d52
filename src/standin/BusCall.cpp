#include "standin/BusCall.h"

#include <QDBusError>

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

bool meansSilent(const QString &errorName)
{
    // NoReply is what the bus library says when our own timeout ran out.
    return errorName == u"org.freedesktop.DBus.Error.NoReply" ||
           errorName == u"org.freedesktop.DBus.Error.Timeout";
}

} // namespace

BusCall::BusCall(QDBusConnection bus, QString service, QDeadlineTimer deadline)
    : m_bus(std::move(bus)), m_service(std::move(service)), m_deadline(deadline)
{}

SourceResult<QVariantList> BusCall::call(const QString &path, const QString &interface, const QString &method,
                                         QStringView signature, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_service, path, interface, method);
    message.setArguments(arguments);
    const QString what = QStringLiteral("%1 of %2 at %3").arg(method, m_service, path);
    const QString silence = what + QStringLiteral(": no answer in time, so nothing from it");
    if (m_deadline.hasExpired())
        return SourceResult<QVariantList>::silent(silence);
    // Without a deadline, the bus library's own default (25 s) applies.
    const int timeoutMs = m_deadline.isForever() ? -1 : int(qMax<qint64>(1, m_deadline.remainingTime()));
    const QDBusMessage reply = m_bus.call(message, QDBus::Block, timeoutMs);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        const QString text = QStringLiteral("%1: %2 (%3)").arg(what, reply.errorMessage(), reply.errorName());
        if (meansSilent(reply.errorName()))
            return SourceResult<QVariantList>::silent(silence);
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
    // Asked of the bus itself, under the same deadline as the service's own calls.
    const SourceResult<QVariantList> reply =
        BusCall(m_bus, QStringLiteral("org.freedesktop.DBus"), m_deadline)
            .call(QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
                  QStringLiteral("GetConnectionUnixProcessID"), u"u", {m_service});
    if (reply.state == reply.read)
        return SourceResult<qint64>::of(reply.value.constFirst().toUInt());
    const QString text = QStringLiteral("no process for %1: %2").arg(m_service, reply.message);
    return {SourceResult<qint64>::State(reply.state), text, 0};
}

} // namespace lullwick
