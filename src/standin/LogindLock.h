#pragma once

#include <QString>

namespace lullwick {

/// One entry of systemd-logind's ListInhibitors reply.
struct LogindLock {
    QString what; ///< colon-separated: sleep, idle, shutdown, handle-power-key, …
    QString who;
    QString why;
    QString mode; ///< block, block-weak or delay
    quint32 uid = 0;
    quint32 pid = 0;
};

} // namespace lullwick
