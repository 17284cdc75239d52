#include "standin/PMSetStandin.h"

#include "standin/AssertionListing.h"
#include "standin/GnomeSessionSource.h"
#include "standin/KdePolicyAgentSource.h"
#include "standin/LogindSource.h"
#include "standin/PowerSettings.h"
#include "standin/RestartEvidence.h"
#include "standin/SleepQuestions.h"

#include <QDBusConnection>
#include <QDBusError>

namespace lullwick {

namespace {

/// Until when one source may take: its own limit, cut short by what is left of the listing's.
QDeadlineTimer sourceDeadline(const QDeadlineTimer &listing)
{
    return qMin(QDeadlineTimer(PMSetStandin::sourceLimitMs), listing);
}

/// Says on standard error why a source gave nothing, and remembers whether any source failed.
class Diagnostics {
public:
    explicit Diagnostics(QTextStream &err) : m_err(err) {}

    /// The source's value, or an empty one after saying why there is none.
    template <typename T> T take(SourceResult<T> result)
    {
        if (result.state != result.read)
            say(result.message);
        m_failed |= result.state == result.failed;
        return std::move(result.value);
    }
    void say(const QString &message) { m_err << "lullwick-pmset: " << message << Qt::endl; }
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    QTextStream &m_err;
    bool m_failed = false;
};

/// The bus, or nothing after saying that it is not there.
std::optional<QDBusConnection> connected(QDBusConnection bus, QStringView name, Diagnostics &diagnostics)
{
    if (bus.isConnected())
        return bus;
    diagnostics.say(
        QStringLiteral("no %1 bus, so none of its inhibitors: %2").arg(name, bus.lastError().message()));
    return std::nullopt;
}

} // namespace

int PMSetStandin::run(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    Diagnostics diagnostics(err);
    const QDeadlineTimer listing(listingLimitMs);
    if (arguments == QStringList{QStringLiteral("--restart-evidence")}) {
        // Each source stands alone here: what one could not read leaves the others' lines whole.
        const auto systemBus = connected(QDBusConnection::systemBus(), u"system", diagnostics);
        const auto sessionBus = connected(QDBusConnection::sessionBus(), u"session", diagnostics);
        RestartEvidence::write(
            systemBus, sessionBus, [&listing] { return sourceDeadline(listing); }, out, err);
        return 0;
    }
    if (arguments == QStringList{QStringLiteral("--sleep-evidence")}) {
        const auto systemBus = connected(QDBusConnection::systemBus(), u"system", diagnostics);
        SleepQuestions::write(systemBus, sourceDeadline(listing), out, err);
        return 0;
    }
    const bool assertions = arguments == QStringList{QStringLiteral("-g"), QStringLiteral("assertions")};
    if (!assertions && arguments != QStringList{QStringLiteral("-g")}) {
        err << "usage: lullwick-pmset -g [assertions] | --restart-evidence | --sleep-evidence" << Qt::endl;
        return 2;
    }

    QString text;
    const auto systemBus = connected(QDBusConnection::systemBus(), u"system", diagnostics);
    if (assertions) {
        QList<InhibitorLine> lines;
        if (systemBus)
            lines += diagnostics.take(LogindSource(*systemBus).inhibitors(sourceDeadline(listing)));
        if (const auto sessionBus = connected(QDBusConnection::sessionBus(), u"session", diagnostics)) {
            lines += diagnostics.take(GnomeSessionSource(*sessionBus).inhibitors(sourceDeadline(listing)));
            lines += diagnostics.take(KdePolicyAgentSource(*sessionBus).inhibitors(sourceDeadline(listing)));
        }
        text = AssertionListing::text(lines);
    } else {
        const QList<Setting> states = diagnostics.take(PowerSettings().sleepStates());
        text = PowerSettings::text(
            states, systemBus ? diagnostics.take(LogindSource(*systemBus).settings(sourceDeadline(listing)))
                              : QList<Setting>());
    }
    // Half an answer would pass for a whole one: a failed source fails the run.
    if (diagnostics.failed())
        return 1;
    out << text;
    out.flush();
    return 0;
}

} // namespace lullwick
