#include "restart/LinuxRestartSources.h"

#include "platform/ChildProcess.h"
#include "restart/InhibitorEvidence.h"
#include "restart/LastShutdownFinding.h"
#include "restart/ShutdownLockFinding.h"
#include "restart/SoftwareUpdateFinding.h"
#include "restart/UnsavedWorkFinding.h"

namespace lullwick {

QList<RestartFinding> LinuxRestartSources::findings(const QList<RunningAppInfo> &runningApps,
                                                    const std::atomic<bool> &stop, bool *journalDenied) const
{
    // One run of the stand-in answers for logind and the session manager alike.
    const ChildProcessResult run = ChildProcess::run(standinPath, {standinArgument()}, &stop);
    const InhibitorEvidence evidence = run.started && run.exitStatus == 0
                                           ? InhibitorEvidence::parse(run.standardOutput)
                                           : InhibitorEvidence();
    QList<RestartFinding> found;
    for (std::optional<RestartFinding> finding :
         {ShutdownLockFinding::from(evidence), UnsavedWorkFinding::from(evidence, runningApps),
          SoftwareUpdateFinding::from(rootDir, evidence),
          LastShutdownFinding::read(journalctlPath, stop, journalDenied)}) {
        if (finding)
            found.append(std::move(*finding));
    }
    return found;
}

} // namespace lullwick
