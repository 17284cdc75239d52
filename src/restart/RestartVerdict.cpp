#include "restart/RestartVerdict.h"

#include <algorithm>

namespace lullwick {

RestartVerdict RestartVerdict::of(const RestartAnalysis &analysis)
{
    const auto any = [&analysis](RestartSeverity severity) {
        return std::any_of(analysis.findings.cbegin(), analysis.findings.cend(),
                           [severity](const RestartFinding &f) { return f.severity == severity; });
    };
    if (any(RestartSeverity::likely))
        return RestartVerdict(likelyCause);
    if (any(RestartSeverity::possible))
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
