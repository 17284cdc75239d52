#include "summary/AssertionRowText.h"

#include "model/TextRules.h"
#include "profile/Profile.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace lullwick {

AssertionRowText AssertionRowText::make(const Assertion &assertion, const ResolvedNames &names)
{
    const std::optional<ProcessInfo> own = Profile::current().catalog().info(assertion.processName);
    AssertionRowText row;
    row.primaryText = own ? own->headline : fallbackReason(assertion);
    row.processSuffix = u" (pid %1)—"_s.arg(assertion.pid) + Profile::current().describe(assertion.kind);
    row.createdForPID = assertion.createdForPID();
    row.ownCallToAction = own ? own->callToAction : std::nullopt;
    row.revealPID = row.createdForPID.value_or(assertion.pid);

    std::optional<ProcessInfo> createdFor;
    if (row.createdForPID) {
        const auto name = names.constFind(*row.createdForPID);
        if (name == names.cend()) {
            row.createdForLine = u"Created for pid %1"_s.arg(*row.createdForPID);
        } else {
            // Concatenated, not arg()-chained: a process name may itself contain "%2".
            row.createdForLine =
                u"Created for "_s + *name + u" (pid "_s + QString::number(*row.createdForPID) + u')';
            createdFor = Profile::current().catalog().info(*name);
        }
    }

    row.title = createdFor ? createdFor->headline : row.primaryText;
    const std::optional<ProcessInfo> &explaining = createdFor ? createdFor : own;
    if (explaining && explaining->explanation != row.primaryText)
        row.explanation = explaining->explanation;
    row.callToAction =
        createdFor && createdFor->callToAction ? createdFor->callToAction : row.ownCallToAction;
    return row;
}

QString AssertionRowText::fallbackReason(const Assertion &assertion)
{
    std::optional<QString> candidate;
    if (assertion.extras) {
        static constexpr QStringView marker = u"Localized=";
        for (QStringView line : QStringView(*assertion.extras).tokenize(u'\n')) {
            const qsizetype at = line.indexOf(marker);
            if (at < 0)
                continue;
            // Only the first line with the marker counts, even when its value is blank.
            const QStringView value = text::trimmed(line.sliced(at + marker.size()));
            if (!value.isEmpty())
                candidate = value.toString();
            break;
        }
    }
    if (!candidate && assertion.namedReason && !assertion.namedReason->isEmpty())
        candidate = assertion.namedReason;
    if (candidate && Assertion::looksLikeFriendlyReason(*candidate))
        return *candidate;
    return Profile::current().describe(assertion.kind);
}

QString AssertionRowText::prettyDuration(const QString &timeHeld)
{
    QList<qint64> parts;
    for (QStringView piece : QStringView(timeHeld).tokenize(u':', Qt::SkipEmptyParts)) {
        if (const auto number = text::toInt64(piece))
            parts.append(*number);
    }
    if (parts.size() != 3)
        return timeHeld;
    const qint64 h = parts[0], m = parts[1], s = parts[2];
    if (h >= 1)
        return u"%1h %2m"_s.arg(h).arg(m);
    if (m < 1)
        return u"%1s"_s.arg(s);
    return u"%1m %2s"_s.arg(m).arg(s);
}

} // namespace lullwick
