#include "sleep/MaskedTargets.h"

#include "profile/Profile.h"
#include "sleep/SleepContext.h"

namespace lullwick {

namespace {

const QStringList targets{QStringLiteral("sleep.target"), QStringLiteral("suspend.target"),
                          QStringLiteral("hibernate.target"), QStringLiteral("hybrid-sleep.target"),
                          QStringLiteral("suspend-then-hibernate.target")};
const QString persistent = QStringLiteral("/etc/systemd/system/");
const QString runtime = QStringLiteral("/run/systemd/system/");

bool stopsSuspend(const QString &target)
{
    return target == u"sleep.target" || target == u"suspend.target";
}

} // namespace

QStringList MaskedTargets::masked(const SystemFiles &files)
{
    QStringList found;
    for (const QString &target : targets) {
        if (files.linksToDevNull(persistent + target) || files.linksToDevNull(runtime + target))
            found.append(target);
    }
    return found;
}

std::optional<QString> MaskedTargets::cannotSuspend(const SystemFiles &files)
{
    for (const QString &target : masked(files)) {
        if (stopsSuspend(target))
            return Profile::current().sleep().maskedReason.arg(target);
    }
    return std::nullopt;
}

QList<Finding> MaskedTargets::findings(const SystemFiles &files)
{
    const Profile::Sleep &words = Profile::current().sleep();
    const QStringList found = masked(files);
    if (found.isEmpty())
        return {};
    QStringList suspending;
    QStringList commands;
    bool runtimeOnly = false;
    for (const QString &target : found) {
        if (stopsSuspend(target))
            suspending.append(target);
        const bool inEtc = files.linksToDevNull(persistent + target);
        // Said only when every mask that stops suspend goes away with the next boot.
        if (stopsSuspend(target))
            runtimeOnly = suspending.size() == 1 ? !inEtc : runtimeOnly && !inEtc;
        // A runtime mask is undone with --runtime; a persistent one without.
        commands.append(inEtc ? QStringLiteral("sudo systemctl unmask ") + target
                              : QStringLiteral("sudo systemctl unmask --runtime ") + target);
    }
    if (suspending.isEmpty()) {
        return {Finding::make(FindingSeverity::info, words.targetsSource,
                              words.hibernateMaskedTitle.arg(found.constFirst()), words.hibernateMaskedDetail,
                              words.maskedAdvice.arg(commands.join(QStringLiteral("” and “"))))};
    }
    QString detail = words.maskedDetail.arg(SleepContext::names(found, 5));
    if (runtimeOnly)
        detail += words.maskedUntilBoot;
    return {Finding::make(FindingSeverity::likely, words.targetsSource,
                          words.cannotSuspendTitle.arg(words.maskedReason.arg(suspending.constFirst())),
                          detail, words.maskedAdvice.arg(commands.join(QStringLiteral("” and “"))))};
}

} // namespace lullwick
