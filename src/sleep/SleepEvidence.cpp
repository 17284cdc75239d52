#include "sleep/SleepEvidence.h"

#include "model/TextRules.h"

namespace lullwick {

namespace {

constexpr qsizetype maxField = 200;
constexpr qsizetype maxHandlers = 8;
// The output is a dozen short lines; anything past this is not the stand-in's.
constexpr qsizetype maxOutput = 64 * 1024;

bool isAnswer(const QString &value)
{
    static const QStringList answers{QStringLiteral("yes"), QStringLiteral("no"), QStringLiteral("challenge"),
                                     QStringLiteral("na")};
    return answers.contains(value);
}

} // namespace

std::optional<bool> SleepEvidence::flag(const QString &name) const
{
    const auto it = logind.constFind(name);
    if (it == logind.cend())
        return std::nullopt;
    if (*it == u"yes")
        return true;
    if (*it == u"no")
        return false;
    return std::nullopt;
}

const QStringList &SleepEvidence::logindProperties()
{
    static const QStringList names{
        QStringLiteral("HandleLidSwitch"),       QStringLiteral("HandleLidSwitchExternalPower"),
        QStringLiteral("HandleLidSwitchDocked"), QStringLiteral("Docked"),
        QStringLiteral("OnExternalPower"),       QStringLiteral("IdleAction"),
        QStringLiteral("IdleActionSec")};
    return names;
}

QString SleepEvidence::line(const QStringList &fields)
{
    QStringList cleaned;
    for (const QString &field : fields)
        cleaned.append(text::singleLine(field, maxField));
    return cleaned.join(u'\t') + u'\n';
}

SleepEvidence SleepEvidence::parse(QByteArrayView output)
{
    SleepEvidence evidence;
    const QString text = QString::fromUtf8(output.first(qMin(output.size(), maxOutput)));
    for (QStringView record : QStringView(text).tokenize(u'\n', Qt::SkipEmptyParts)) {
        QStringList fields;
        for (QStringView field : record.split(u'\t'))
            fields.append(text::singleLine(field, maxField));
        const QString &kind = fields.constFirst();
        if (kind == u"can-suspend" && fields.size() == 2 && isAnswer(fields[1])) {
            evidence.canSuspend = fields[1];
        } else if (kind == u"can-hibernate" && fields.size() == 2 && isAnswer(fields[1])) {
            evidence.canHibernate = fields[1];
        } else if (kind == u"logind" && fields.size() == 3 && logindProperties().contains(fields[1])) {
            evidence.logind.insert(fields[1], fields[2]);
        } else if (kind == u"lid-handler" && fields.size() == 5 &&
                   evidence.lidHandlers.size() < maxHandlers) {
            const std::optional<qint64> pid = text::toInt64(fields[3]);
            evidence.lidHandlers.append({fields[1], fields[2], pid && *pid > 0 ? *pid : 0, fields[4]});
        }
    }
    return evidence;
}

} // namespace lullwick
