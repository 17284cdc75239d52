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

SourceResult<QList<GnomeSessionSource::Inhibitor>> GnomeSessionSource::records(QDeadlineTimer deadline) const
{
    using Result = SourceResult<QList<Inhibitor>>;
    const BusCall bus(m_bus, service, deadline);
    const SourceResult<QVariantList> list = bus.call(QStringLiteral("/org/gnome/SessionManager"), service,
                                                     QStringLiteral("GetInhibitors"), u"ao");
    if (list.state != list.read)
        return {Result::State(list.state), list.message, {}};
    const auto paths = qdbus_cast<QList<QDBusObjectPath>>(list.value.constFirst());

    QList<Inhibitor> inhibitors;
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

        Inhibitor inhibitor{path, values[0].toString(), values[1].toString(), values[2].toUInt(), 0};
        // The application's own process is known only when it registered as a client.
        const QString client = qdbus_cast<QDBusObjectPath>(values[3]).path();
        if (!client.isEmpty() && client != u"/") {
            const SourceResult<QVariantList> pid =
                bus.call(client, QStringLiteral("org.gnome.SessionManager.Client"),
                         QStringLiteral("GetUnixProcessId"), u"u");
            if (pid.endsSource())
                return {Result::State(pid.state), pid.message, {}};
            if (pid.state == pid.read)
                inhibitor.clientPid = pid.value.constFirst().toUInt();
        }
        inhibitors.append(std::move(inhibitor));
    }
    return Result::of(std::move(inhibitors));
}

SourceResult<QList<InhibitorLine>> GnomeSessionSource::inhibitors(QDeadlineTimer deadline) const
{
    using Result = SourceResult<QList<InhibitorLine>>;
    const SourceResult<QList<Inhibitor>> listed = records(deadline);
    if (listed.state != listed.read)
        return {Result::State(listed.state), listed.message, {}};
    const SourceResult<qint64> holder = BusCall(m_bus, service, deadline).ownerPid();
    if (holder.state != holder.read)
        return {Result::State(holder.state), holder.message, {}};
    const QString holderName = m_names.name(holder.value).value_or(service);

    QList<InhibitorLine> lines;
    for (const Inhibitor &inhibitor : listed.value) {
        InhibitorLine line;
        line.pid = holder.value;
        line.processName = holderName;
        line.identifier = inhibitor.path;
        line.typeWord = TypeWords::forGnomeFlags(inhibitor.flags);
        line.reason = inhibitor.reason;
        if (inhibitor.clientPid != 0)
            line.createdFor = inhibitor.clientPid;
        if (!inhibitor.appId.isEmpty())
            line.extras.append(QStringLiteral("Application: ") + inhibitor.appId);
        line.extras.append(QStringLiteral("Inhibits: ") + TypeWords::gnomeFlagNames(inhibitor.flags));
        lines.append(std::move(line));
    }
    return Result::of(std::move(lines));
}

} // namespace lullwick
