#include "restart/UnsavedWorkFinding.h"

#include "restart/LinuxRestartWording.h"

namespace lullwick {

namespace {

constexpr qsizetype maxListed = 8;

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
    return QStringLiteral("An app");
}

std::optional<RestartFinding> UnsavedWorkFinding::from(const InhibitorEvidence &evidence,
                                                       const QList<RunningAppInfo> &runningApps)
{
    if (evidence.logoutInhibitors.isEmpty())
        return std::nullopt;
    QStringList apps, lines;
    for (const InhibitorEvidence::LogoutInhibitor &inhibitor : evidence.logoutInhibitors) {
        const QString name = appName(inhibitor, runningApps);
        if (!apps.contains(name))
            apps.append(name);
        if (lines.size() < maxListed)
            lines.append(inhibitor.reason.isEmpty() ? name : name + QStringLiteral(" — ") + inhibitor.reason);
    }
    if (evidence.logoutInhibitors.size() > maxListed)
        lines.append(LinuxRestartWording::moreLine(evidence.logoutInhibitors.size() - maxListed));
    return RestartFinding::make(RestartSeverity::likely, LinuxRestartWording::unsavedWorkSource(),
                                LinuxRestartWording::unsavedWorkTitle(apps),
                                LinuxRestartWording::unsavedWorkDetail() + QStringLiteral("\n\n") +
                                    lines.join(u'\n'),
                                LinuxRestartWording::unsavedWorkAdvice());
}

} // namespace lullwick
