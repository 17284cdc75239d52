#pragma once

#include <QStringList>
#include <QTextStream>

namespace lullwick {

/// Stands in for pmset where there is none: answers `-g assertions` from the inhibitors that
/// systemd-logind and the desktop session hold, and `-g` from the kernel's and logind's settings.
/// `--restart-evidence` lists what they hold against a restart, for the restart analysis;
/// `--sleep-evidence` what logind says about suspending and the lid, for the sleep check.
class PMSetStandin {
public:
    PMSetStandin() = delete;

    // A desktop service that does not answer would otherwise hold the listing for the bus library's
    // 25 s per call, and the window shows nothing until the listing is complete.
    /// How long the calls to one source (logind, a session manager) may take together.
    static constexpr int sourceLimitMs = 2000;
    /// How long the calls of a whole listing may take together.
    static constexpr int listingLimitMs = 5000;
    /// When the stand-in gives up whatever it is doing: connecting to a bus has no deadline of its
    /// own, and a bus that accepts the connection and never answers would hold it for good.
    static constexpr int giveUpMs = listingLimitMs + 3000;

    /// Writes the answer to `out` and returns the exit status: 0 also when a source is not there or does not
    /// answer in time (one line on `err` for each), 1 when a source could not be read, 2 for other arguments.
    [[nodiscard]] static int run(const QStringList &arguments, QTextStream &out, QTextStream &err);
};

} // namespace lullwick
