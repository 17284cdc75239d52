#include "summary/SummaryClipboard.h"

#include "profile/Profile.h"
#include "summary/AssertionRowText.h"
#include "summary/SummaryVerdict.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace lullwick {

QString SummaryClipboard::text(const std::optional<AssertionsSnapshot> &snapshot, const ResolvedNames &names,
                               const DateFormat::Setting &dates, const std::optional<SleepFindings> &sleep)
{
    if (!snapshot)
        return u"(no snapshot)"_s;

    QStringList lines{u"Lullwick—Summary"_s,
                      u"Captured "_s + DateFormat::completeDateTime(snapshot->capturedAt, dates), QString()};
    if (sleep) {
        lines << SummaryVerdict::of(*snapshot, sleep->cannotSuspend).text() << QString();
        if (!sleep->findings.isEmpty() || sleep->journalDenied)
            lines << Profile::current().sleep().sectionTitle;
        if (sleep->journalDenied)
            lines << Profile::current().lastSuspends().journalCaveat << QString();
        // The restart copy's layout, so that both read alike.
        for (const Finding &finding : sleep->findings) {
            lines << u"[%1] %2"_s.arg(label(finding.severity), finding.title);
            lines << u"  Source: "_s + finding.source;
            for (QStringView piece : QStringView(finding.detail).tokenize(u'\n'))
                lines << u"  "_s + piece.toString();
            if (finding.advice)
                lines << u"  → "_s + *finding.advice;
            lines << QString();
        }
    }
    for (SleepKind kind : allSleepKinds) {
        lines << rawValue(kind);
        const QList<Assertion> blockers = snapshot->blockers(kind);
        if (blockers.isEmpty())
            lines << u"  (not blocked)"_s;
        for (const Assertion &a : blockers) {
            const AssertionRowText row = AssertionRowText::make(a, names);
            // Held times stay as pmset printed them; the report is for whoever helps the user.
            QString bullet = u"  • "_s + row.title;
            if (AssertionRowText::heldKnown(a.timeHeld))
                bullet += u"  (held "_s + a.timeHeld + u')';
            lines << bullet;
            if (row.quote)
                lines << u"    "_s + *row.quote;
            lines << u"    "_s + a.processName + row.processSuffix;
            if (row.createdForLine)
                lines << u"    "_s + *row.createdForLine;
            if (row.ownCallToAction)
                lines << u"    "_s + *row.ownCallToAction;
        }
        lines << QString();
    }
    return lines.join(u'\n');
}

} // namespace lullwick
