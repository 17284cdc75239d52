#include "restart/LastShutdownFinding.h"

#include "model/TextRules.h"
#include "platform/ChildProcess.h"
#include "platform/JournalJson.h"
#include "profile/Profile.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QRegularExpression>
#include <QSet>

namespace lullwick {

namespace {

constexpr qsizetype maxLineBytes = 64 * 1024; // a real entry of these fields is far shorter
constexpr qsizetype maxUnits = 64;
constexpr qsizetype maxKilledPerUnit = 64;
constexpr qsizetype maxUnitsListed = 6;
constexpr qsizetype maxProcessesListed = 6;

// Processes that are only the frame around the one that hung: the user's service manager and its
// PAM helper, login shells and the programs that start sessions.
const QSet<QString> framework{
    QStringLiteral("systemd"),     QStringLiteral("(sd-pam)"),    QStringLiteral("sd-pam"),
    QStringLiteral("sshd"),        QStringLiteral("login"),       QStringLiteral("su"),
    QStringLiteral("sudo"),        QStringLiteral("bash"),        QStringLiteral("sh"),
    QStringLiteral("dash"),        QStringLiteral("zsh"),         QStringLiteral("fish"),
    QStringLiteral("dbus-daemon"), QStringLiteral("dbus-broker"),
};

struct Killed {
    qint64 pid = 0;
    QString name;
};
struct HungUnit {
    QString unit;
    QList<Killed> killed;
};

bool isStopTimeout(QStringView message)
{
    return (message.startsWith(u"State 'stop") && message.contains(u"' timed out.")) ||
           message.startsWith(u"Stopping timed out.") || message.startsWith(u"Failed with result 'timeout'");
}

QString processLine(const Killed &killed)
{
    return killed.name + QStringLiteral(" (") +
           Profile::current().restartEvidence().pidNumber.arg(killed.pid) + u')';
}

QString unitLine(const HungUnit &hung)
{
    QStringList processes;
    for (const Killed &killed : hung.killed.first(qMin(hung.killed.size(), maxProcessesListed)))
        processes.append(processLine(killed));
    if (hung.killed.size() > maxProcessesListed)
        processes.append(
            Profile::current().restartEvidence().andMore.arg(hung.killed.size() - maxProcessesListed));
    if (processes.isEmpty())
        return hung.unit;
    return hung.unit + QStringLiteral(": ") + processes.join(QStringLiteral(", "));
}

} // namespace

QStringList LastShutdownFinding::journalctlArguments()
{
    return {QStringLiteral("--boot=-1"),
            QStringLiteral("--output=json"),
            QStringLiteral("--output-fields=MESSAGE,UNIT"),
            QStringLiteral("--lines=5000"),
            QStringLiteral("--no-pager"),
            QStringLiteral("_PID=1")};
}

std::optional<RestartFinding> LastShutdownFinding::read(const QString &journalctlPath,
                                                        const std::atomic<bool> &stop, bool *journalDenied)
{
    const ChildProcessResult run = ChildProcess::run(journalctlPath, journalctlArguments(), &stop);
    if (journalDenied)
        *journalDenied = run.started && JournalJson::accessDenied(run.standardError);
    if (!run.started || run.exitStatus != 0)
        return std::nullopt;
    return fromJournal(run.standardOutput);
}

std::optional<RestartFinding> LastShutdownFinding::fromJournal(QByteArrayView jsonLines)
{
    // A process name may hold anything, parentheses and line breaks included.
    static const QRegularExpression killing(
        QStringLiteral("^Killing process (\\d+) \\((.*)\\) with signal SIGKILL"),
        QRegularExpression::DotMatchesEverythingOption);
    QList<HungUnit> hung;
    for (qsizetype start = 0; start < jsonLines.size();) {
        qsizetype end = jsonLines.indexOf('\n', start);
        if (end < 0)
            end = jsonLines.size();
        const QByteArrayView line = jsonLines.sliced(start, end - start);
        start = end + 1;
        if (line.isEmpty() || line.size() > maxLineBytes)
            continue;
        const QJsonObject entry = QJsonDocument::fromJson(line.toByteArray()).object();
        QString message = JournalJson::text(entry.value(QLatin1String("MESSAGE")));
        QString unit = entry.value(QLatin1String("UNIT")).toString();
        // systemd starts a unit's messages with the unit's name.
        if (!unit.isEmpty() && message.startsWith(unit + QStringLiteral(": ")))
            message.remove(0, unit.size() + 2);
        unit = text::singleLine(unit, 120);
        if (unit.isEmpty())
            continue;

        const auto it =
            std::find_if(hung.begin(), hung.end(), [&](const HungUnit &h) { return h.unit == unit; });
        if (isStopTimeout(message)) {
            if (it == hung.end() && hung.size() < maxUnits)
                hung.append({unit, {}});
            continue;
        }
        // Only a kill that follows the unit's timeout says who hung.
        if (it == hung.end() || it->killed.size() >= maxKilledPerUnit)
            continue;
        const QRegularExpressionMatch match = killing.match(message);
        if (!match.hasMatch())
            continue;
        const std::optional<qint64> pid = text::toInt64(match.capturedView(1));
        const QString name = text::singleLine(match.capturedView(2), 64);
        if (pid && *pid > 0 && !name.isEmpty())
            it->killed.append({*pid, name});
    }
    if (hung.isEmpty())
        return std::nullopt;

    // Name the first process that is not merely the frame around it, in the first unit that has one.
    QString unit = hung.constFirst().unit;
    QString process;
    for (bool skipFramework : {true, false}) {
        for (const HungUnit &h : std::as_const(hung)) {
            const auto named = std::find_if(h.killed.cbegin(), h.killed.cend(), [&](const Killed &k) {
                return !skipFramework || !framework.contains(k.name);
            });
            if (named != h.killed.cend()) {
                unit = h.unit;
                process = named->name;
                break;
            }
        }
        if (!process.isEmpty())
            break;
    }

    const Profile::RestartEvidence &words = Profile::current().restartEvidence();
    QStringList lines;
    for (const HungUnit &h : hung.first(qMin(hung.size(), maxUnitsListed)))
        lines.append(unitLine(h));
    if (hung.size() > maxUnitsListed)
        lines.append(words.moreLine.arg(hung.size() - maxUnitsListed));
    return RestartFinding::make(RestartSeverity::possible, words.lastShutdownSource,
                                process.isEmpty() ? words.lastShutdownUnitTitle.arg(unit)
                                                  : words.lastShutdownTitle.arg(process, unit),
                                words.lastShutdownDetail + QStringLiteral("\n\n") + lines.join(u'\n'),
                                words.lastShutdownAdvice.arg(process.isEmpty() ? unit : process));
}

} // namespace lullwick
