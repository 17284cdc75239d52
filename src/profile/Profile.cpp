#include "profile/Profile.h"

#include "catalog/CatalogEntry.h"
#include "model/AssertionKind.h"

#include <QCoreApplication>
#include <QMutexLocker>
#include <QStandardPaths>
#include <atomic>

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

std::atomic<const Profile *> chosen{nullptr};

} // namespace

Profile::Profile(System system)
    : m_system(system), m_words(system == System::macOS ? macWords() : linuxWords(of(System::macOS).words())),
      m_catalog(system == System::macOS ? ProcessCatalog(macCatalog(), 0)
                                        // The kernel keeps 15 characters of a process name.
                                        : ProcessCatalog(linuxCatalog(), 15)),
      m_links(system == System::macOS ? DesktopLinks::mac() : DesktopLinks::linuxDesktops()),
      // A relative path names the helper shipped beside the program.
      m_pmset(system == System::macOS ? u"/usr/bin/pmset"_s : u"lullwick-pmset"_s), m_ps(u"/bin/ps"_s),
      m_log(u"/usr/bin/log"_s), m_spindump(u"/usr/bin/spindump"_s),
      m_diagnosticReports(u"/Library/Logs/DiagnosticReports"_s)
{}

const Profile &Profile::of(System system)
{
    // Separate statics: the Linux profile starts from some of the Mac profile's texts.
    if (system == System::macOS) {
        static const Profile mac(System::macOS);
        return mac;
    }
    static const Profile linuxDesktop(System::Linux);
    return linuxDesktop;
}

Profile::System Profile::built()
{
#if defined(LULLWICK_PROFILE_MACOS)
    return System::macOS;
#else
    return System::Linux;
#endif
}

const Profile &Profile::current()
{
    const Profile *profile = chosen.load(std::memory_order_acquire);
    return profile ? *profile : of(built());
}

ScopedProfile::ScopedProfile(Profile::System system)
    : m_previous(chosen.exchange(&Profile::of(system), std::memory_order_acq_rel))
{}

ScopedProfile::~ScopedProfile()
{
    chosen.store(m_previous, std::memory_order_release);
}

QStringList Profile::allTexts() const
{
    const Summary &s = m_words.summary;
    QStringList texts{s.reading,
                      s.clickRefresh,
                      s.intro,
                      s.nothingBlocking,
                      s.othersExplanation,
                      s.whereToLookIntro,
                      s.viewerButton,
                      s.viewerTooltip,
                      s.viewerTip,
                      s.copyPIDButton,
                      s.copyPIDTooltip,
                      s.noViewerTip,
                      m_words.details.inhibitorsHeading,
                      m_words.details.settingsHeading,
                      m_words.restart.intro,
                      m_words.restart.analyzing,
                      m_words.restart.hint,
                      m_words.restart.caveatHeading,
                      m_words.restart.caveat,
                      m_words.restart.journalCaveat,
                      m_words.restart.updateTitle,
                      m_words.restart.updateDetail,
                      m_words.restart.updateAdvice,
                      m_words.restart.runningAppsDetail,
                      m_words.reportDescription};
    texts += QList<QString>(s.kindExplanations.cbegin(), s.kindExplanations.cend());
    texts += QList<QString>(m_words.restart.verdicts.cbegin(), m_words.restart.verdicts.cend());
    texts += QList<QString>(m_words.kindDescriptions.cbegin(), m_words.kindDescriptions.cend());
    texts += m_words.otherWordDescriptions.values();
    const Words::Holders &h = m_words.holders;
    texts += {h.quote, h.reasonOnly, h.holderOnly};
    for (const Words::Holders::KindText &kind : h.kindTexts)
        texts += {kind.explanation, kind.callToAction};
    const RestartEvidence &e = m_words.restartEvidence;
    texts += {e.shutdownLocksSource,
              e.unsavedWorkSource,
              e.softwareUpdatesSource,
              e.lastShutdownSource,
              e.holdersMore,
              e.namesAnd,
              e.moreLine,
              e.andMore,
              e.processNumber,
              e.pidNumber,
              e.someProgram,
              e.someApp,
              e.blockingTitle,
              e.blockingTitleMany,
              e.blockingDetail,
              e.blockingAdvice,
              e.blockingQuit,
              e.delayTitle,
              e.delayUpTo,
              e.delayFewSeconds,
              e.delayDetail,
              e.delayAdvice,
              e.unsavedTitle,
              e.unsavedTitleMany,
              e.unsavedDetail,
              e.unsavedAdvice,
              e.installingTitle,
              e.installingDetail,
              e.packageKitDetail,
              e.installingAdvice,
              e.offlineTitle,
              e.offlineDetail,
              e.offlineAdvice,
              e.restartRequiredTitle,
              e.restartRequiredDetail,
              e.restartRequiredPackages,
              e.restartRequiredAdvice,
              e.lastShutdownTitle,
              e.lastShutdownUnitTitle,
              e.lastShutdownDetail,
              e.lastShutdownAdvice};
    const LastSuspends &w = m_words.lastSuspends;
    texts += {w.source,
              w.journalCaveat,
              w.namesAnd,
              w.moreLine,
              w.seconds,
              w.minutes,
              w.hours,
              w.hoursMinutes,
              w.freezerTitle,
              w.freezerTitleUnnamed,
              w.freezerDetail,
              w.freezerUserSlice,
              w.taskLine,
              w.taskWaiting,
              w.cutName,
              w.freezerAdvice,
              w.deviceTitle,
              w.deviceTitleBare,
              w.deviceTitleUnnamed,
              w.deviceDetail,
              w.deviceLine,
              w.deviceAdvice,
              w.nvidiaTitle,
              w.nvidiaHandshakeDetail,
              w.nvidiaUnitDetail,
              w.unitLine,
              w.nvidiaAdvice,
              w.wakeupTitle,
              w.wakeupTitleUnnamed,
              w.wakeupDetail,
              w.wakeupAdvice,
              w.quickWakeTitle,
              w.quickWakeDetail,
              w.quickWakeDevices,
              w.quickWakeAdvice,
              w.stoppedTitle,
              w.stoppedDetail,
              w.stoppedAdvice,
              w.maskedTitle,
              w.maskedDetail,
              w.maskedAdvice,
              w.lockdownTitle,
              w.lockdownDetail,
              w.lockdownAdvice,
              w.sleptTitle,
              w.sleptDetail,
              w.sleptAdvice};
    const Sleep &c = m_words.sleep;
    texts += {c.sectionTitle,
              c.sectionIntro,
              c.verdict,
              c.targetsSource,
              c.abilitySource,
              c.kernelSource,
              c.lidSource,
              c.desktopSource,
              c.wakeSource,
              c.namesAnd,
              c.namesMore,
              c.cannotSuspendTitle,
              c.maskedReason,
              c.maskedDetail,
              c.maskedUntilBoot,
              c.maskedAdvice,
              c.hibernateMaskedTitle,
              c.hibernateMaskedDetail,
              c.noKernelSuspendReason,
              c.logindNaReason,
              c.noSuspendDetail,
              c.noSuspendAdvice,
              c.suspendNotAllowedTitle,
              c.suspendNotAllowedDetail,
              c.suspendNotAllowedAdvice,
              c.hibernateUnavailableTitle,
              c.lockdownReason,
              c.noSwapReason,
              c.noKernelHibernateReason,
              c.hibernateNaReason,
              c.hibernateUnavailableDetail,
              c.s2idleOnlyTitle,
              c.s2idleOnlyDetail,
              c.s2idleOnlyAdvice,
              c.s2idleChosenTitle,
              c.s2idleChosenDetail,
              c.s2idleChosenAdvice,
              c.failedDeviceTitle,
              c.failedStepTitle,
              c.failedDetail,
              c.failedErrno,
              c.failedAdvice,
              c.pluggedIn,
              c.onBattery,
              c.docked,
              c.lidHandlerTitle,
              c.lidHandlerDetail,
              c.lidHandlerAdvice,
              c.lidIgnoredTitle,
              c.lidIgnoredDetail,
              c.lidIgnoredAdvice,
              c.idleActionTitle,
              c.idleActionDetail,
              c.minutes,
              c.oneMinute,
              c.hours,
              c.oneHour,
              c.seconds,
              c.neverSuspendsTitle,
              c.neverSuspendsDetail,
              c.neverSuspendsAdvice,
              c.suspendsAfterTitle,
              c.hibernatesAfterTitle,
              c.suspendsAfterDetail,
              c.desktopLidTitle,
              c.desktopLidDetail,
              c.desktopLidAdvice,
              c.wakeTitle,
              c.wakeDetail,
              c.wakeAdvice,
              c.wokeTitle,
              c.wokeDetail,
              c.wokeTimes,
              c.wokeOnce,
              c.usbController,
              c.networkCard,
              c.wirelessCard,
              c.pciBridge,
              c.keyboard,
              c.mouse,
              c.lidDevice,
              c.powerButton,
              c.someDevice};
    for (const SettingsLinkSpec &link : m_links.links)
        texts += link.label;
    if (m_links.fixedViewer)
        texts += m_links.fixedViewer->label;
    texts.removeAll(QString());
    return texts;
}

QString Profile::describe(const AssertionKind &kind) const
{
    if (!kind.isOther())
        return m_words.kindDescriptions[kind.kindCase()];
    if (const auto it = m_words.otherWordDescriptions.constFind(kind.otherText());
        it != m_words.otherWordDescriptions.cend())
        return *it;
    return u"Assertion: "_s + kind.otherText() + u'.';
}

QString Profile::pmset() const
{
    // A relative path names a helper shipped in the program's own folder: found from where the
    // program lies, never from PATH or the environment.
    if (m_pmset.startsWith(u'/'))
        return m_pmset;
    return QCoreApplication::applicationDirPath() + u'/' + m_pmset;
}

QList<OpenTarget> Profile::settingsLinks() const
{
    return desktopChoice().links;
}

std::optional<OpenTarget> Profile::processViewer() const
{
    return desktopChoice().viewer;
}

void Profile::reloadDesktop() const
{
    const QMutexLocker lock(&m_choiceMutex);
    m_choice.reset();
}

Profile::DesktopChoice Profile::desktopChoice() const
{
    const QMutexLocker lock(&m_choiceMutex);
    if (m_choice)
        return *m_choice;
    // Chosen once: every row asks for the viewer.
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    auto [links, viewer] =
        m_links.pick(desktops, QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation));
    m_choice = DesktopChoice{std::move(links), std::move(viewer)};
    return *m_choice;
}

} // namespace lullwick
