#pragma once

#include "standin/LogindLock.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

namespace lullwick {

/// logind's own records of its locks (one state file per lock, plus the lock's reference pipe
/// "ID.ref", made when the lock was taken), matched against the locks ListInhibitors reports.
class InhibitorReferences {
public:
    struct Reference {
        QString id;        ///< logind's number for the lock
        QDateTime created; ///< when the reference was made; invalid when unknown
    };

    explicit InhibitorReferences(QString directory = QStringLiteral("/run/systemd/inhibit"));

    /// The reference of a lock with these fields that no earlier call has returned.
    [[nodiscard]] std::optional<Reference> take(const LogindLock &lock);

private:
    struct Record {
        QString id;
        LogindLock lock;
        bool taken = false;
    };
    void load();

    QString m_directory;
    QList<Record> m_records;
    bool m_loaded = false;
};

} // namespace lullwick
