#include "restart/UnsavedWorkFinding.h"

#include "profile/Profile.h"

namespace lullwick {

namespace {

constexpr qsizetype maxListed = 8;

/// "A", "A and B", "A, B and C", "A, B and 2 more".
QString joinedNames(const QStringList &names)
{
    const Profile::RestartEvidence &words = Profile::current().restartEvidence();
    if (names.size() == 1)
        return names.first();
    if (names.size() <= 3)
        return words.namesAnd.arg(names.first(names.size() - 1).join(QStringLiteral(", ")), names.last());
    return words.holdersMore.arg(names.first(2).join(QStringLiteral(", ")),
                                 QString::number(names.size() - 2));
}

} // namespace

QString UnsavedWorkFinding::appName(const InhibitorEvidence::LogoutInhibitor &inhibitor,
                                    const QList<RunningAppInfo> &runningApps)
{
    for (const RunningAppInfo &app : runningApps) {
        const bool sameId = !inhibitor.appId.isEmpty() && app.bundleID == inhibitor.appId;
        const bool sameProcess = inhibitor.pid > 0 && app.pid == inhibitor.pid;
        if (sameId || sameProcess)
            return app.name;
    }
    if (!inhibitor.appId.isEmpty())
        return inhibitor.appId;
    if (!inhibitor.processName.isEmpty())
        return inhibitor.processName;
    return Profile::current().restartEvidence().someApp;
}

std::optional<RestartFinding> UnsavedWorkFinding::from(const InhibitorEvidence &evidence,
                                                       const QList<RunningAppInfo> &runningApps)
{
    if (evidence.logoutInhibitors.isEmpty())
        return std::nullopt;
    const Profile::RestartEvidence &words = Profile::current().restartEvidence();
    QStringList apps, lines;
    for (const InhibitorEvidence::LogoutInhibitor &inhibitor : evidence.logoutInhibitors) {
        const QString name = appName(inhibitor, runningApps);
        if (!apps.contains(name))
            apps.append(name);
        if (lines.size() < maxListed)
            lines.append(inhibitor.reason.isEmpty() ? name : name + QStringLiteral(" — ") + inhibitor.reason);
    }
    if (evidence.logoutInhibitors.size() > maxListed)
        lines.append(words.moreLine.arg(evidence.logoutInhibitors.size() - maxListed));
    return RestartFinding::make(
        RestartSeverity::likely, words.unsavedWorkSource,
        (apps.size() == 1 ? words.unsavedTitle : words.unsavedTitleMany).arg(joinedNames(apps)),
        words.unsavedDetail + QStringLiteral("\n\n") + lines.join(u'\n'), words.unsavedAdvice);
}

} // namespace lullwick
