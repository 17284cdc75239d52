#include "sleep/SuspendAbility.h"

#include "profile/Profile.h"
#include "sleep/MaskedTargets.h"

namespace lullwick {

namespace {

QStringList kernelStates(const SystemFiles &files)
{
    return files.firstLine(QStringLiteral("/sys/power/state"))
        .value_or(QString())
        .split(u' ', Qt::SkipEmptyParts);
}

bool masked(const SystemFiles &files, const QStringList &targets)
{
    const QStringList found = MaskedTargets::masked(files);
    return std::any_of(targets.cbegin(), targets.cend(), [&](const QString &t) { return found.contains(t); });
}

/// The selected entry of a kernel choice file, "[integrity]" → "integrity".
QString selected(const QString &line)
{
    const qsizetype open = line.indexOf(u'[');
    const qsizetype close = line.indexOf(u']', open);
    return open >= 0 && close > open ? line.sliced(open + 1, close - open - 1) : QString();
}

bool hasSwap(const SystemFiles &files)
{
    const std::optional<QByteArray> swaps = files.read(QStringLiteral("/proc/swaps"));
    // The first line is the header; any other line is a swap area.
    return !swaps || swaps->trimmed().count('\n') > 0;
}

} // namespace

std::optional<QString> SuspendAbility::cannotSuspend(const SleepContext &context)
{
    if (context.evidence.canSuspend != u"na" ||
        masked(context.files, {QStringLiteral("sleep.target"), QStringLiteral("suspend.target")}))
        return std::nullopt;
    const Profile::Sleep &words = Profile::current().sleep();
    const QStringList states = kernelStates(context.files);
    if (!states.isEmpty() && !states.contains(u"mem") && !states.contains(u"freeze"))
        return words.noKernelSuspendReason;
    return words.logindNaReason;
}

QList<Finding> SuspendAbility::findings(const SleepContext &context)
{
    const Profile::Sleep &words = Profile::current().sleep();
    QList<Finding> found;
    if (const std::optional<QString> why = cannotSuspend(context)) {
        const QString states =
            context.files.firstLine(QStringLiteral("/sys/power/state")).value_or(QString());
        found.append(Finding::make(FindingSeverity::likely, words.abilitySource,
                                   words.cannotSuspendTitle.arg(*why), words.noSuspendDetail.arg(states),
                                   words.noSuspendAdvice));
    } else if (context.evidence.canSuspend == u"no") {
        found.append(Finding::make(FindingSeverity::possible, words.abilitySource,
                                   words.suspendNotAllowedTitle, words.suspendNotAllowedDetail,
                                   words.suspendNotAllowedAdvice));
    }
    // Hibernation: only when logind says it can't and no mask says so already.
    if (context.evidence.canHibernate == u"na" &&
        !masked(context.files, {QStringLiteral("hibernate.target"), QStringLiteral("sleep.target")})) {
        QString why = words.hibernateNaReason;
        const QString lockdown = selected(
            context.files.firstLine(QStringLiteral("/sys/kernel/security/lockdown")).value_or(QString()));
        if (lockdown == u"integrity" || lockdown == u"confidentiality")
            why = words.lockdownReason;
        else if (const QStringList states = kernelStates(context.files);
                 !states.isEmpty() && !states.contains(u"disk"))
            why = words.noKernelHibernateReason;
        else if (!hasSwap(context.files))
            why = words.noSwapReason;
        Finding finding = Finding::make(FindingSeverity::info, words.abilitySource,
                                        words.hibernateUnavailableTitle.arg(why),
                                        words.hibernateUnavailableDetail, QString());
        finding.advice.reset(); // nothing to do about it that would be advice
        found.append(std::move(finding));
    }
    return found;
}

} // namespace lullwick
