#pragma once

#include <QString>
#include <QStringList>

namespace lullwick {

/// Something the Summary page opens for the user: a settings page or a process viewer. One of
/// `url`, `path` and `program` is set.
struct OpenTarget {
    QString label;         ///< what the user reads: a link's label, or the application's name
    QString url;           ///< a URL for the system to open; opens nothing unless it parses
    QString path;          ///< an application or file for the system to open
    QString program;       ///< an absolute program path to start, from a desktop entry's Exec
    QStringList arguments; ///< its arguments

    bool operator==(const OpenTarget &) const = default;
};

} // namespace lullwick
