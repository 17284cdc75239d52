#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace lullwick {

/// Writes a report to a file so that a reader never sees half of it.
class ReportFile {
public:
    ReportFile() = delete;

    /// Puts `bytes` at `path`, mode 0644: written to a temporary file in the same folder, flushed
    /// to the disk, then renamed over the old file. On failure the old file is left as it was, no
    /// temporary file remains, and the result says why in one line.
    [[nodiscard]] static std::optional<QString> replace(const QString &path, const QByteArray &bytes);
};

} // namespace lullwick
