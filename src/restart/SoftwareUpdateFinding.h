#pragma once

#include "model/RestartFinding.h"
#include "restart/InhibitorEvidence.h"

#include <QByteArrayView>
#include <QString>
#include <optional>

namespace lullwick {

/// Software updates and a restart: an installation under way (the package manager's lock is held),
/// an offline update staged for the next start, or installed updates asking for a restart. The
/// files are read below a root folder, "/" but for tests.
class SoftwareUpdateFinding {
public:
    SoftwareUpdateFinding() = delete;

    /// The most telling of the three, or nothing. A PackageKit transaction in `evidence` that
    /// changes software counts as an installation under way.
    [[nodiscard]] static std::optional<RestartFinding> from(const QString &rootDir,
                                                            const InhibitorEvidence &evidence = {});

    /// The process holding a write-excluding lock on the file at `path`, by fcntl's lock test;
    /// where the file cannot be opened, by the kernel's lock table. 0 when nobody holds one.
    [[nodiscard]] static qint64 lockHolder(const QString &path,
                                           const QString &lockTable = QStringLiteral("/proc/locks"));
    /// The process that a line of the kernel's lock table (`locks`) names as holding a POSIX or
    /// flock lock on the file with this device and inode; 0 when none does.
    [[nodiscard]] static qint64 holderInLockTable(QByteArrayView locks, quint32 major, quint32 minor,
                                                  quint64 inode);
};

} // namespace lullwick
