#include "standin/LogindSource.h"

#include "standin/BusCall.h"
#include "standin/TypeWords.h"

#include <QDBusArgument>
#include <QDBusVariant>

namespace lullwick {

namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString path = QStringLiteral("/org/freedesktop/login1");
const QString manager = QStringLiteral("org.freedesktop.login1.Manager");

QList<LogindLock> locksOf(const QDBusArgument &argument)
{
    QList<LogindLock> locks;
    argument.beginArray();
    while (!argument.atEnd()) {
        LogindLock lock;
        argument.beginStructure();
        argument >> lock.what >> lock.who >> lock.why >> lock.mode >> lock.uid >> lock.pid;
        argument.endStructure();
        locks.append(std::move(lock));
    }
    argument.endArray();
    return locks;
}

} // namespace

LogindSource::LogindSource(QDBusConnection systemBus, ProcessNames names, InhibitorReferences references)
    : m_bus(std::move(systemBus)), m_names(std::move(names)), m_references(std::move(references))
{}

SourceResult<QList<LogindLock>> LogindSource::locks(QDeadlineTimer deadline) const
{
    using Result = SourceResult<QList<LogindLock>>;
    const SourceResult<QVariantList> reply =
        BusCall(m_bus, service, deadline).call(path, manager, QStringLiteral("ListInhibitors"), u"a(ssssuu)");
    if (reply.state != reply.read)
        return {Result::State(reply.state), reply.message, {}};
    return Result::of(locksOf(reply.value.constFirst().value<QDBusArgument>()));
}

SourceResult<QList<InhibitorLine>> LogindSource::inhibitors(QDeadlineTimer deadline)
{
    using Result = SourceResult<QList<InhibitorLine>>;
    const SourceResult<QList<LogindLock>> listed = locks(deadline);
    if (listed.state != listed.read)
        return {Result::State(listed.state), listed.message, {}};

    const QDateTime now = QDateTime::currentDateTimeUtc();
    QList<InhibitorLine> lines;
    for (const LogindLock &lock : listed.value) {
        InhibitorLine line;
        line.pid = lock.pid;
        // A lock outlives its taker when the taker hands its reference on and exits; who took it
        // is then the best name there is.
        line.processName = m_names.name(lock.pid).value_or(lock.who);
        line.identifier = QStringLiteral("login1");
        if (const auto reference = m_references.take(lock)) {
            line.identifier += u':' + reference->id;
            if (reference->created.isValid())
                line.heldSeconds = reference->created.secsTo(now);
        }
        // systemd-inhibit holds its lock for the command it runs, its child: name that process
        // as the one the lock was created for, as a proxy's assertion does.
        // systemd-inhibit takes its lock as it starts and holds it until it ends, so the lock is
        // as old as the process, which dates it where logind's own records cannot be read.
        if (line.processName == u"systemd-inhibit") {
            line.createdFor = m_names.firstChild(lock.pid);
            if (!line.heldSeconds)
                line.heldSeconds = m_names.ageSeconds(lock.pid);
        }
        line.typeWord = TypeWords::forLogindLock(lock.what, lock.mode);
        line.reason = lock.why;
        line.extras = {QStringLiteral("Who: %1 (uid %2)").arg(lock.who, QString::number(lock.uid)),
                       QStringLiteral("Mode: ") + lock.mode, QStringLiteral("What: ") + lock.what};
        lines.append(std::move(line));
    }
    return Result::of(std::move(lines));
}

SourceResult<QList<Setting>> LogindSource::settings(QDeadlineTimer deadline) const
{
    using Result = SourceResult<QList<Setting>>;
    const SourceResult<QVariantList> reply =
        BusCall(m_bus, service, deadline)
            .call(path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"), u"a{sv}",
                  {manager});
    if (reply.state != reply.read)
        return {Result::State(reply.state), reply.message, {}};
    const QVariantMap properties = qdbus_cast<QVariantMap>(reply.value.constFirst());

    // The names of logind.conf, where a user changes them; times there are in seconds.
    static const QStringList names{
        QStringLiteral("IdleAction"),
        QStringLiteral("IdleActionUSec"),
        QStringLiteral("HandleLidSwitch"),
        QStringLiteral("HandleLidSwitchExternalPower"),
        QStringLiteral("HandleLidSwitchDocked"),
        QStringLiteral("HandlePowerKey"),
        QStringLiteral("HandleSuspendKey"),
        QStringLiteral("HandleHibernateKey"),
        QStringLiteral("InhibitDelayMaxUSec"),
        QStringLiteral("IdleHint"),
        QStringLiteral("BlockInhibited"),
        QStringLiteral("DelayInhibited"),
    };
    QList<Setting> settings;
    for (const QString &name : names) {
        const auto it = properties.constFind(name);
        if (it == properties.cend())
            continue; // an older logind
        if (name.endsWith(QStringLiteral("USec"))) {
            settings.append(
                {name.chopped(4) + QStringLiteral("Sec"), QString::number(it->toULongLong() / 1000000)});
        } else if (it->typeId() == QMetaType::Bool) {
            settings.append({name, it->toBool() ? QStringLiteral("yes") : QStringLiteral("no")});
        } else {
            settings.append({name, it->toString()});
        }
    }
    return Result::of(std::move(settings));
}

} // namespace lullwick
