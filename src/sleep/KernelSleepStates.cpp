#include "sleep/KernelSleepStates.h"

#include "model/TextRules.h"
#include "profile/Profile.h"

namespace lullwick {

namespace {

std::optional<Finding> memSleep(const SystemFiles &files, const Profile::Sleep &words)
{
    // "s2idle [deep]": the bracketed one is in use.
    const std::optional<QString> line = files.firstLine(QStringLiteral("/sys/power/mem_sleep"));
    if (!line)
        return std::nullopt;
    QStringList offered;
    QString chosen;
    for (QStringView word : QStringView(*line).tokenize(u' ', Qt::SkipEmptyParts)) {
        if (word.startsWith(u'[') && word.endsWith(u']')) {
            word = word.sliced(1, word.size() - 2);
            chosen = word.toString();
        }
        offered.append(word.toString());
    }
    if (offered == QStringList{QStringLiteral("s2idle")})
        return Finding::make(FindingSeverity::info, words.kernelSource, words.s2idleOnlyTitle,
                             words.s2idleOnlyDetail, words.s2idleOnlyAdvice);
    if (chosen == u"s2idle" && offered.contains(u"deep"))
        return Finding::make(FindingSeverity::info, words.kernelSource, words.s2idleChosenTitle,
                             words.s2idleChosenDetail, words.s2idleChosenAdvice);
    return std::nullopt;
}

std::optional<qint64> number(const SystemFiles &files, const QString &name)
{
    const std::optional<QString> line =
        files.firstLine(QStringLiteral("/sys/power/suspend_stats/") + name, 32);
    return line ? text::toInt64(*line) : std::nullopt;
}

std::optional<Finding> failures(const SystemFiles &files, const Profile::Sleep &words)
{
    const std::optional<qint64> failed = number(files, QStringLiteral("fail"));
    if (!failed || *failed <= 0)
        return std::nullopt;
    const QString stats = QStringLiteral("/sys/power/suspend_stats/");
    // Older kernels keep the last failures in one "suspend_stats" file in debugfs only; these are
    // the separate files of kernels since 5.x. The step reads e.g. "suspend" or "suspend_noirq".
    const QString device = files.firstLine(stats + QStringLiteral("last_failed_dev"), 80).value_or(QString());
    const QString step = files.firstLine(stats + QStringLiteral("last_failed_step"), 40).value_or(QString());
    const std::optional<qint64> error = number(files, QStringLiteral("last_failed_errno"));
    QString title;
    if (!device.isEmpty() && !step.isEmpty())
        title = words.failedDeviceTitle.arg(device, step);
    else if (!step.isEmpty())
        title = words.failedStepTitle.arg(step);
    else
        title = words.failedStepTitle.arg(QStringLiteral("suspend")); // the step every failure is part of
    QString detail = words.failedDetail.arg(
        QString::number(*failed), QString::number(number(files, QStringLiteral("success")).value_or(0)));
    if (error && *error != 0)
        detail += words.failedErrno.arg(*error);
    return Finding::make(FindingSeverity::possible, words.kernelSource, title, detail, words.failedAdvice);
}

} // namespace

QList<Finding> KernelSleepStates::findings(const SystemFiles &files)
{
    const Profile::Sleep &words = Profile::current().sleep();
    QList<Finding> found;
    for (std::optional<Finding> finding : {memSleep(files, words), failures(files, words)}) {
        if (finding)
            found.append(std::move(*finding));
    }
    return found;
}

} // namespace lullwick
