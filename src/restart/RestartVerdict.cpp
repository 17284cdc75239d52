#include "restart/RestartVerdict.h"

namespace lullwick {

RestartVerdict RestartVerdict::of(const RestartAnalysis &analysis)
{
    if (!analysis.likelyFindings().isEmpty())
        return RestartVerdict(likelyCause);
    if (!analysis.possibleFindings().isEmpty())
        return RestartVerdict(worthChecking);
    return RestartVerdict(noObviousBlocker);
}

QString RestartVerdict::text() const
{
    switch (m_case) {
    case likelyCause:
        return QStringLiteral("Found a likely cause that's holding up restart.");
    case worthChecking:
        return QStringLiteral(
            "Nothing is conclusively blocking restart, but here are the things worth checking.");
    case noObviousBlocker:
        return QStringLiteral(
            "No obvious restart blocker found. If restart still hangs, it's most likely an app "
            "with an unsaved document.");
    }
    Q_UNREACHABLE();
}

} // namespace lullwick
