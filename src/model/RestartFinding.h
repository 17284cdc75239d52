#pragma once

#include "model/Finding.h"

namespace lullwick {

/// The restart analysis speaks of its findings by these names; they are the shared finding type.
using RestartSeverity = FindingSeverity;
using RestartFinding = Finding;

/// The source text that marks the stall-report finding.
[[nodiscard]] inline QString stallReportSource()
{
    return QStringLiteral("Shutdown stall report");
}

} // namespace lullwick
