#include "standin/GnomeSessionSource.h"

#include "standin/BusCall.h"
#include "standin/TypeWords.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <array>

namespace lullwick {

namespace {

const QString service = QStringLiteral("org.gnome.SessionManager");
const QString inhibitorInterface = QStringLiteral("org.gnome.SessionManager.Inhibitor");

// What each inhibitor is asked, in the order the values are used below.
constexpr std::array<std::pair<QStringView, QStringView>, 4> getters{{
    {u"GetAppId", u"s"},
    {u"GetReason", u"s"},
    {u"GetFlags", u"u"},
    {u"GetClientId", u"o"},
}};

} // namespace

GnomeSessionSource::GnomeSessionSource(QDBusConnection sessionBus, ProcessNames names)
    : m_bus(std::move(sessionBus)), m_names(std::move(names))
{}

SourceResult<QList<InhibitorLine>> GnomeSessionSource::inhibitors(QDeadlineTimer deadline) const
{
    using Result = SourceResult<QList<InhibitorLine>>;
    const BusCall bus(m_bus, service, deadline);
    const SourceResult<QVariantList> list = bus.call(QStringLiteral("/org/gnome/SessionManager"), service,
                                                     QStringLiteral("GetInhibitors"), u"ao");
    if (list.state != list.read)
        return {Result::State(list.state), list.message, {}};
    const auto paths = qdbus_cast<QList<QDBusObjectPath>>(list.value.constFirst());
    const SourceResult<qint64> holder = bus.ownerPid();
    if (holder.state != holder.read)
        return {Result::State(holder.state), holder.message, {}};
    const QString holderName = m_names.name(holder.value).value_or(service);

    QList<InhibitorLine> lines;
    for (const QDBusObjectPath &object : paths) {
        const QString path = object.path();
        QVariantList values;
        // An inhibitor released since the list was made is gone: skip it, as if listed a moment later.
        bool gone = false;
        for (const auto &[method, signature] : getters) {
            const SourceResult<QVariantList> reply =
                bus.call(path, inhibitorInterface, method.toString(), signature);
            if (reply.endsSource())
                return {Result::State(reply.state), reply.message, {}};
            gone = reply.state == reply.missing;
            if (gone)
                break;
            values.append(reply.value.constFirst());
        }
        if (gone)
            continue;

        InhibitorLine line;
        line.pid = holder.value;
        line.processName = holderName;
        line.identifier = path;
        const quint32 flags = values[2].toUInt();
        line.typeWord = TypeWords::forGnomeFlags(flags);
        line.reason = values[1].toString();

        // The application's own process is known only when it registered as a client.
        const QString client = qdbus_cast<QDBusObjectPath>(values[3]).path();
        if (!client.isEmpty() && client != u"/") {
            const SourceResult<QVariantList> pid =
                bus.call(client, QStringLiteral("org.gnome.SessionManager.Client"),
                         QStringLiteral("GetUnixProcessId"), u"u");
            if (pid.endsSource())
                return {Result::State(pid.state), pid.message, {}};
            if (pid.state == pid.read && pid.value.constFirst().toUInt() != 0)
                line.createdFor = pid.value.constFirst().toUInt();
        }
        if (const QString app = values[0].toString(); !app.isEmpty())
            line.extras.append(QStringLiteral("Application: ") + app);
        line.extras.append(QStringLiteral("Inhibits: ") + TypeWords::gnomeFlagNames(flags));
        lines.append(std::move(line));
    }
    return Result::of(std::move(lines));
}

} // namespace lullwick
