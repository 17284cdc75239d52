#pragma once

#include "standin/LogindSource.h"
#include "standin/SourceResult.h"

#include <QList>
#include <QString>

namespace lullwick {

/// The power settings the system uses, written like `pmset -g`.
class PowerSettings {
public:
    explicit PowerSettings(QString sysPowerDirectory = QStringLiteral("/sys/power"));

    /// The sleep states the kernel supports, and the variants chosen for suspend and hibernation.
    [[nodiscard]] SourceResult<QList<Setting>> sleepStates() const;

    /// The kernel's states under "System-wide power settings:", logind's settings under
    /// "Currently in use:".
    [[nodiscard]] static QString text(const QList<Setting> &systemWide, const QList<Setting> &inUse);

private:
    QString m_directory;
};

} // namespace lullwick
