#include "standin/SleepQuestions.h"

#include "platform/ProcessNames.h"
#include "sleep/SleepEvidence.h"
#include "standin/BusCall.h"
#include "standin/LogindSource.h"

#include <QDBusArgument>

namespace lullwick {

namespace {

const QString service = QStringLiteral("org.freedesktop.login1");
const QString path = QStringLiteral("/org/freedesktop/login1");
const QString manager = QStringLiteral("org.freedesktop.login1.Manager");

void say(QTextStream &err, const QString &message)
{
    err << "lullwick-pmset: " << message << Qt::endl;
}

} // namespace

void SleepQuestions::write(const std::optional<QDBusConnection> &systemBus, const QDeadlineTimer &deadline,
                           QTextStream &out, QTextStream &err)
{
    if (!systemBus) {
        out.flush();
        return;
    }
    const BusCall logind(*systemBus, service, deadline);
    for (const auto &[method, record] :
         {std::pair{QStringLiteral("CanSuspend"), QStringLiteral("can-suspend")},
          std::pair{QStringLiteral("CanHibernate"), QStringLiteral("can-hibernate")}}) {
        const SourceResult<QVariantList> answer = logind.call(path, manager, method, u"s");
        if (answer.state != answer.read) {
            say(err, answer.message);
            if (answer.endsSource())
                break;
            continue;
        }
        out << SleepEvidence::line({record, answer.value.constFirst().toString()});
    }

    const SourceResult<QVariantList> reply =
        logind.call(path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"),
                    u"a{sv}", {manager});
    if (reply.state == reply.read) {
        const QVariantMap properties = qdbus_cast<QVariantMap>(reply.value.constFirst());
        for (const QString &name : SleepEvidence::logindProperties()) {
            // logind.conf's names: times there are in seconds, the bus gives microseconds.
            const bool time = name.endsWith(QStringLiteral("Sec"));
            const auto it = properties.constFind(time ? name.chopped(3) + QStringLiteral("USec") : name);
            if (it == properties.cend())
                continue; // an older logind
            QString value;
            if (time)
                value = QString::number(it->toULongLong() / 1000000);
            else if (it->typeId() == QMetaType::Bool)
                value = it->toBool() ? QStringLiteral("yes") : QStringLiteral("no");
            else
                value = it->toString();
            out << SleepEvidence::line({QStringLiteral("logind"), name, value});
        }
    } else {
        say(err, reply.message);
    }

    const SourceResult<QList<LogindLock>> locks = LogindSource(*systemBus).locks(deadline);
    if (locks.state != locks.read)
        say(err, locks.message);
    const ProcessNames names;
    for (const LogindLock &lock : locks.value) {
        // A delay lock on the lid means nothing; only a blocking one takes the lid from logind.
        if (!lock.what.split(u':').contains(u"handle-lid-switch") || !lock.mode.startsWith(u"block"))
            continue;
        out << SleepEvidence::line({QStringLiteral("lid-handler"), lock.who, lock.why,
                                    QString::number(lock.pid), names.name(lock.pid).value_or(QString())});
    }
    out.flush();
}

} // namespace lullwick
