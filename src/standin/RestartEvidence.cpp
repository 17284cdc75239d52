#include "standin/RestartEvidence.h"

#include "platform/ProcessNames.h"
#include "restart/InhibitorEvidence.h"
#include "standin/GnomeSessionSource.h"
#include "standin/LogindSource.h"
#include "standin/PackageKitSource.h"

namespace lullwick {

namespace {

constexpr quint32 gnomeLogoutFlag = 1;

void say(QTextStream &err, const QString &message)
{
    err << "lullwick-pmset: " << message << Qt::endl;
}

} // namespace

void RestartEvidence::write(const std::optional<QDBusConnection> &systemBus,
                            const std::optional<QDBusConnection> &sessionBus,
                            const std::function<QDeadlineTimer()> &sourceDeadline, QTextStream &out,
                            QTextStream &err)
{
    const ProcessNames names;
    const auto nameOf = [&names](qint64 pid) { return names.name(pid).value_or(QString()); };
    if (systemBus) {
        const LogindSource logind(*systemBus);
        const SourceResult<QList<LogindLock>> locks = logind.locks(sourceDeadline());
        if (locks.state != locks.read)
            say(err, locks.message);
        for (const LogindLock &lock : locks.value) {
            if (!lock.what.split(u':').contains(u"shutdown"))
                continue;
            // systemd-inhibit holds its lock for the command it runs: that is the process to name.
            qint64 pid = lock.pid;
            if (nameOf(pid) == u"systemd-inhibit")
                pid = names.firstChild(pid).value_or(pid);
            out << InhibitorEvidence::line({QStringLiteral("shutdown-lock"), lock.mode, lock.who, lock.why,
                                            QString::number(pid), nameOf(pid)});
        }
        const SourceResult<QList<Setting>> settings = logind.settings(sourceDeadline());
        if (settings.state != settings.read)
            say(err, settings.message);
        for (const Setting &setting : settings.value) {
            if (setting.first == u"InhibitDelayMaxSec")
                out << InhibitorEvidence::line({QStringLiteral("inhibit-delay-max"), setting.second});
        }
        const SourceResult<QStringList> transactions =
            PackageKitSource(*systemBus).changingTransactions(sourceDeadline());
        if (transactions.state != transactions.read)
            say(err, transactions.message);
        for (const QString &role : transactions.value)
            out << InhibitorEvidence::line({QStringLiteral("package-transaction"), role});
    }
    if (sessionBus) {
        const SourceResult<QList<GnomeSessionSource::Inhibitor>> inhibitors =
            GnomeSessionSource(*sessionBus).records(sourceDeadline());
        if (inhibitors.state != inhibitors.read)
            say(err, inhibitors.message);
        for (const GnomeSessionSource::Inhibitor &inhibitor : inhibitors.value) {
            if (!(inhibitor.flags & gnomeLogoutFlag))
                continue;
            out << InhibitorEvidence::line({QStringLiteral("logout-inhibitor"), inhibitor.appId,
                                            inhibitor.reason, QString::number(inhibitor.clientPid),
                                            nameOf(inhibitor.clientPid)});
        }
    }
    out.flush();
}

} // namespace lullwick
