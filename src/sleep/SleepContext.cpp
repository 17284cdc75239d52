#include "sleep/SleepContext.h"

#include "profile/Profile.h"

namespace lullwick {

QString SleepContext::where() const
{
    const Profile::Sleep &words = Profile::current().sleep();
    return docked ? words.docked : pluggedIn ? words.pluggedIn : words.onBattery;
}

QString SleepContext::names(const QStringList &names, qsizetype shown)
{
    const Profile::Sleep &words = Profile::current().sleep();
    if (names.size() <= 1)
        return names.value(0);
    // One arg() call each: a name holding "%2" must stay as it is.
    if (names.size() > shown)
        return words.namesMore.arg(names.first(shown).join(QStringLiteral(", ")),
                                   QString::number(names.size() - shown));
    return words.namesAnd.arg(names.first(names.size() - 1).join(QStringLiteral(", ")), names.constLast());
}

QString SleepContext::duration(qint64 seconds)
{
    const Profile::Sleep &words = Profile::current().sleep();
    if (seconds % 3600 == 0 && seconds >= 3600)
        return seconds == 3600 ? words.oneHour : words.hours.arg(seconds / 3600);
    if (seconds % 60 == 0 && seconds >= 60)
        return seconds == 60 ? words.oneMinute : words.minutes.arg(seconds / 60);
    return words.seconds.arg(seconds);
}

} // namespace lullwick
