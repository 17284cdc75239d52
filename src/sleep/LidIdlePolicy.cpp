#include "sleep/LidIdlePolicy.h"

#include "model/TextRules.h"
#include "profile/Profile.h"

namespace lullwick {

namespace {

// What logind can do on the lid or idleness that leaves the computer awake.
const QStringList stayAwake{QStringLiteral("ignore"), QStringLiteral("lock")};
// What idleness may make logind do that ends a session's waking time.
const QStringList sleeping{QStringLiteral("suspend"), QStringLiteral("hibernate"),
                           QStringLiteral("hybrid-sleep"), QStringLiteral("suspend-then-hibernate"),
                           QStringLiteral("poweroff")};

QString handlerName(const SleepEvidence::LidHandler &handler)
{
    if (!handler.who.isEmpty())
        return handler.who;
    return handler.processName.isEmpty() ? Profile::current().restartEvidence().someProgram
                                         : handler.processName;
}

} // namespace

QString LidIdlePolicy::lidSetting(const SleepContext &context)
{
    if (context.docked)
        return QStringLiteral("HandleLidSwitchDocked");
    return context.pluggedIn ? QStringLiteral("HandleLidSwitchExternalPower")
                             : QStringLiteral("HandleLidSwitch");
}

QList<Finding> LidIdlePolicy::findings(const SleepContext &context)
{
    const Profile::Sleep &words = Profile::current().sleep();
    const SleepEvidence &evidence = context.evidence;
    QList<Finding> found;
    if (context.hasLid) {
        if (!evidence.lidHandlers.isEmpty()) {
            const SleepEvidence::LidHandler &handler = evidence.lidHandlers.constFirst();
            const QString name = handlerName(handler);
            found.append(
                Finding::make(FindingSeverity::info, words.lidSource, words.lidHandlerTitle.arg(name),
                              words.lidHandlerDetail.arg(name, handler.why), words.lidHandlerAdvice));
        } else {
            const QString setting = lidSetting(context);
            const QString action = evidence.logind.value(setting);
            if (stayAwake.contains(action))
                found.append(Finding::make(FindingSeverity::possible, words.lidSource,
                                           words.lidIgnoredTitle.arg(context.where(), action),
                                           words.lidIgnoredDetail.arg(setting, action),
                                           words.lidIgnoredAdvice.arg(setting)));
        }
    }
    const QString idle = evidence.logind.value(QStringLiteral("IdleAction"));
    const std::optional<qint64> after = text::toInt64(evidence.logind.value(QStringLiteral("IdleActionSec")));
    if (sleeping.contains(idle) && after && *after > 0)
        found.append(Finding::make(FindingSeverity::info, words.lidSource,
                                   words.idleActionTitle.arg(idle, SleepContext::duration(*after)),
                                   words.idleActionDetail, QString()));
    if (!found.isEmpty() && found.constLast().advice && found.constLast().advice->isEmpty())
        found.last().advice.reset();
    return found;
}

} // namespace lullwick
