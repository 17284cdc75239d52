#include "restart/RestartClipboard.h"

#include "restart/RestartVerdict.h"

#include <QStringList>

namespace lullwick {

QString RestartClipboard::text(const std::optional<RestartAnalysis> &analysis,
                               const DateFormat::Setting &dates)
{
    if (!analysis)
        return QStringLiteral("(no analysis yet — click Analyze)");

    QStringList lines{QStringLiteral("Lullwick — Restart analysis"),
                      QStringLiteral("Checked ") + DateFormat::completeDateTime(analysis->ranAt, dates),
                      QString(), RestartVerdict::of(*analysis).text(), QString()};
    for (const RestartFinding &finding : analysis->findings) {
        lines.append(QStringLiteral("[%1] %2").arg(label(finding.severity), finding.title));
        lines.append(QStringLiteral("  Source: ") + finding.source);
        for (QStringView piece : QStringView(finding.detail).tokenize(u'\n'))
            lines.append(QStringLiteral("  ") + piece.toString());
        if (finding.advice)
            lines.append(QStringLiteral("  → ") + *finding.advice);
        if (finding.source == stallReportSource() && analysis->decodedStallProcess)
            lines.append(QStringLiteral("  Hung process: ") + *analysis->decodedStallProcess);
        lines.append(QString());
    }
    return lines.join(u'\n');
}

} // namespace lullwick
