#include "sleep/SleepCheck.h"

#include "platform/ChildProcess.h"
#include "profile/Profile.h"
#include "sleep/KernelSleepStates.h"
#include "sleep/LastSuspends.h"
#include "sleep/LidIdlePolicy.h"
#include "sleep/MaskedTargets.h"
#include "sleep/SuspendAbility.h"
#include "sleep/WakeSources.h"

namespace lullwick {

namespace {

// The stand-in's own listing limit, and a little for it to start.
constexpr int standinLimitMs = 6000;
// journalctl sifts the journal by its indexes; a slow disk still gets a few seconds.
constexpr int journalLimitMs = 5000;

} // namespace

bool SleepFindings::sameAs(const SleepFindings &other) const
{
    const auto same = [](const Finding &a, const Finding &b) {
        return a.severity == b.severity && a.source == b.source && a.title == b.title &&
               a.detail == b.detail && a.advice == b.advice;
    };
    return cannotSuspend == other.cannotSuspend && journalDenied == other.journalDenied &&
           std::equal(findings.cbegin(), findings.cend(), other.findings.cbegin(), other.findings.cend(),
                      same);
}

std::optional<SleepCheck> SleepCheck::forProfile()
{
    if (Profile::current().kind() != Profile::System::Linux)
        return std::nullopt;
    return SleepCheck{};
}

SleepFindings SleepCheck::run(const std::atomic<bool> &stop) const
{
    const ChildProcessResult asked = ChildProcess::run(standinPath, {SleepEvidence::standinArgument()}, &stop,
                                                       QDeadlineTimer(standinLimitMs));
    SleepFindings result = evaluate(
        asked.started && asked.exitStatus == 0 ? SleepEvidence::parse(asked.standardOutput) : SleepEvidence(),
        stop);

    // The journal's account of the last attempts names the devices that may wake the computer
    // as the likely cause of a quick wake, and leaves a mask to the check's own finding.
    const SystemFiles files(rootDir);
    LastSuspends::Context context{LastSuspends::currentBoot(), {}, {}};
    for (const WakeSources::Device &device : WakeSources::devices(files))
        context.wakeDevices.append(device.name);
    for (const QString &target : MaskedTargets::masked(files))
        context.maskedNow.insert(target);
    const LastSuspends::Reading journal =
        LastSuspends::read(journalctlPath, context, stop, QDeadlineTimer(journalLimitMs));
    result.journalDenied = journal.access == LastSuspends::Access::denied;
    result.findings += journal.findings;
    rankBySeverity(result.findings);
    return result;
}

SleepFindings SleepCheck::evaluate(const SleepEvidence &evidence, const std::atomic<bool> &stop) const
{
    SleepContext context{SystemFiles(rootDir), evidence, true, false, false};
    context.pluggedIn =
        evidence.flag(QStringLiteral("OnExternalPower")).value_or(context.files.onMainsPower());
    context.docked = evidence.flag(QStringLiteral("Docked")).value_or(false);
    context.hasLid = context.files.hasLid();

    SleepFindings result;
    result.cannotSuspend = MaskedTargets::cannotSuspend(context.files);
    if (!result.cannotSuspend)
        result.cannotSuspend = SuspendAbility::cannotSuspend(context);
    result.findings += MaskedTargets::findings(context.files);
    result.findings += SuspendAbility::findings(context);
    result.findings += KernelSleepStates::findings(context.files);
    result.findings += LidIdlePolicy::findings(context);
    if (const std::optional<DesktopSuspend::Settings> settings = DesktopSuspend::read(desktop, stop))
        result.findings += DesktopSuspend::findings(*settings, context);
    result.findings += WakeSources::findings(context.files);
    rankBySeverity(result.findings);
    return result;
}

} // namespace lullwick
