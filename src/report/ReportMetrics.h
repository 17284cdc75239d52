#pragma once

#include "model/AssertionsSnapshot.h"
#include "model/Finding.h"
#include "model/RestartAnalysis.h"
#include "summary/ResolvedNames.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace lullwick {

/// The report as Prometheus text exposition, for node_exporter's textfile collector. Every
/// family has the same HELP and TYPE each time, every label value but the holder's comes from a
/// small fixed set, and no sample carries a timestamp.
class ReportMetrics {
public:
    ReportMetrics() = delete;

    /// What one metrics report counts.
    struct Input {
        std::optional<AssertionsSnapshot> snapshot; ///< nothing: pmset (or its helper) failed
        ResolvedNames names;                        ///< created-for PIDs named, as the Summary names them
        std::optional<RestartAnalysis> restart;
        /// The sleep check's findings; nothing where no sleep check ran.
        std::optional<QList<Finding>> sleepFindings;
        QString version; ///< the program's version, for lullwick_build_info
    };

    /// At most this many holders per kind of sleep in lullwick_blocker_info.
    static constexpr int maxHoldersPerKind = 10;
    /// Holder names are cut to this many characters.
    static constexpr int maxHolderLength = 64;

    [[nodiscard]] static QByteArray text(const Input &input);
};

} // namespace lullwick
