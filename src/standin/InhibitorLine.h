#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace lullwick {

/// One sleep inhibitor, ready to be written as a per-process line of the assertions listing.
struct InhibitorLine {
    qint64 pid = 0;                    ///< the process that holds it
    QString processName;               ///< that process's name
    QString identifier;                ///< written between the square brackets
    std::optional<qint64> heldSeconds; ///< how long it has been held, when the system tells
    QString typeWord;                  ///< see TypeWords
    QString reason;                    ///< written after `named: "`
    std::optional<qint64> createdFor;  ///< the process it is held on behalf of, if another
    QStringList extras;                ///< further continuation lines, in order
};

} // namespace lullwick
