#pragma once

#include <QStringList>
#include <QTextStream>

namespace lullwick {

/// Stands in for pmset where there is none: answers `-g assertions` from the inhibitors that
/// systemd-logind and the desktop session hold, and `-g` from the kernel's and logind's settings.
class PMSetStandin {
public:
    PMSetStandin() = delete;

    /// Writes the answer to `out` and returns the exit status: 0 also when a source is not there or does not answer in time
    /// (one line on `err` for each), 1 when a source could not be read, 2 for other arguments.
    [[nodiscard]] static int run(const QStringList &arguments, QTextStream &out, QTextStream &err);
};

} // namespace lullwick
