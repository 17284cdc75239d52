#include "platform/Profile.h"

#include "model/AssertionKind.h"

#include <QCoreApplication>
#include <QMutexLocker>
#include <QStandardPaths>
#include <atomic>

#ifndef Q_OS_DARWIN
#include "platform/linux/DesktopEntry.h"
#endif

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

std::atomic<const Profile *> chosen{nullptr};

} // namespace

Profile::Profile(System system) : m_system(system)
{
    if (system == System::macOS)
        makeMac(*this);
    else
        makeLinux(*this);
}

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
    const Summary &s = m_summary;
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
                      m_details.inhibitorsHeading,
                      m_details.settingsHeading,
                      m_restart.intro,
                      m_restart.analyzing,
                      m_restart.hint,
                      m_restart.caveatHeading,
                      m_restart.caveat,
                      m_restart.updateTitle,
                      m_restart.updateDetail,
                      m_restart.updateAdvice,
                      m_restart.runningAppsDetail,
                      m_reportDescription};
    texts += QList<QString>(s.kindExplanations.cbegin(), s.kindExplanations.cend());
    texts += QList<QString>(m_restart.verdicts.cbegin(), m_restart.verdicts.cend());
    texts += QList<QString>(m_kindDescriptions.cbegin(), m_kindDescriptions.cend());
    texts += m_otherWordDescriptions.values();
    const RestartEvidence &e = m_restartEvidence;
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
    for (const SettingsLinkSpec &link : m_links)
        texts += link.label;
    if (m_fixedViewer)
        texts += m_fixedViewer->label;
    texts.removeAll(QString());
    return texts;
}

QString Profile::describe(const AssertionKind &kind) const
{
    if (!kind.isOther())
        return m_kindDescriptions[kind.kindCase()];
    if (const auto it = m_otherWordDescriptions.constFind(kind.otherText());
        it != m_otherWordDescriptions.cend())
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
    DesktopChoice choice;
    if (!m_pickFromDesktop) {
        // Fixed targets: shown whether or not they open.
        for (const SettingsLinkSpec &link : m_links)
            choice.links.append(OpenTarget{link.label, link.url, {}, {}, {}});
        choice.viewer = m_fixedViewer;
    } else {
        // Chosen once: every row asks for the viewer.
        const QStringList desktops =
            qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
        auto [links, viewer] =
            pickFromDesktop(m_links, m_viewers, desktops,
                            QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation));
        choice.links = std::move(links);
        choice.viewer = std::move(viewer);
    }
    m_choice = choice;
    return choice;
}

std::pair<QList<OpenTarget>, std::optional<OpenTarget>>
Profile::pickFromDesktop(const QList<SettingsLinkSpec> &specs, const QList<DesktopCandidate> &viewers,
                         const QStringList &desktops, const QStringList &folders)
{
#ifdef Q_OS_DARWIN
    Q_UNUSED(specs);
    Q_UNUSED(viewers);
    Q_UNUSED(desktops);
    Q_UNUSED(folders);
    return {};
#else
    // The candidates of the running desktop first, in the order XDG_CURRENT_DESKTOP names them;
    // then any other installed one, so that a viewer from another desktop still serves.
    const auto ordered = [&desktops](const QList<DesktopCandidate> &candidates) {
        QList<const DesktopCandidate *> order;
        for (const QString &desktop : desktops) {
            for (const DesktopCandidate &c : candidates) {
                if (c.desktops.contains(desktop, Qt::CaseInsensitive) && !order.contains(&c))
                    order.append(&c);
            }
        }
        for (const DesktopCandidate &c : candidates) {
            if (!order.contains(&c))
                order.append(&c);
        }
        return order;
    };
    const auto launchable = [&folders](const DesktopCandidate *c) -> std::optional<OpenTarget> {
        const std::optional<DesktopEntry::Launch> launch = DesktopEntry::launch(c->id, folders);
        if (!launch)
            return std::nullopt;
        return OpenTarget{launch->name, {}, {}, launch->program, launch->arguments};
    };

    QList<OpenTarget> links;
    for (const SettingsLinkSpec &wanted : specs) {
        for (const DesktopCandidate *c : ordered(wanted.candidates)) {
            if (std::optional<OpenTarget> target = launchable(c)) {
                target->label = wanted.label;
                links.append(std::move(*target));
                break;
            }
        }
    }
    std::optional<OpenTarget> viewer;
    for (const DesktopCandidate *c : ordered(viewers)) {
        if ((viewer = launchable(c)))
            break;
    }
    return {links, viewer};
#endif
}

} // namespace lullwick
