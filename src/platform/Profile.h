#pragma once

#include "catalog/CatalogEntry.h"
#include "model/SleepKind.h"
#include "platform/OpenTarget.h"

#include <QHash>
#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

namespace lullwick {

class AssertionKind;

/// An installed desktop entry that may stand for a link or the process viewer, and the desktops
/// (XDG_CURRENT_DESKTOP names) it belongs to; empty: any desktop.
struct DesktopCandidate {
    QStringList desktops;
    QString id; ///< desktop-file id without ".desktop"
};

/// One of the Summary page's settings links: a fixed URL, or the first installed desktop entry.
struct SettingsLinkSpec {
    QString label;
    QString url;
    QList<DesktopCandidate> candidates;
};

/// Everything that differs between the program on macOS and on a Linux desktop: the words the
/// user reads, the process catalog, where to look next, the process viewer and the tool paths.
/// Views, models, clipboard texts and the report ask `Profile::current()`.
class Profile {
public:
    enum class System { macOS, Linux };

    /// The profile in use: the one the program was built for, unless a test chose another.
    [[nodiscard]] static const Profile &current();
    /// The profile of `system`.
    [[nodiscard]] static const Profile &of(System system);
    /// The system the program was built for (the LULLWICK_PROFILE build option).
    [[nodiscard]] static System built();

    Profile(const Profile &) = delete;
    Profile &operator=(const Profile &) = delete;

    [[nodiscard]] System kind() const { return m_system; }

    struct Summary {
        QString reading;      ///< while the first reading runs
        QString clickRefresh; ///< the header before any reading
        QString intro;
        QString nothingBlocking; ///< the verdict when nothing blocks sleep
        std::array<QString, 3> kindExplanations;
        QString othersExplanation;
        QString whereToLookIntro;
        QString viewerButton;  ///< %1: the process viewer's name
        QString viewerTooltip; ///< %1: the process viewer's name
        QString viewerTip;     ///< %1: the process viewer's name
        QString copyPIDButton; ///< shown instead of the row button when there is no viewer
        QString copyPIDTooltip;
        QString noViewerTip;
    };
    struct Details {
        QString inhibitorsHeading;
        QString settingsHeading;
    };
    struct Restart {
        QString intro;
        QString analyzing;
        QString hint;
        QString caveatHeading;
        QString caveat;
        std::array<QString, 3> verdicts; ///< likely cause, worth checking, no obvious blocker
        QString updateTitle;
        QString updateDetail; ///< %1: the names of the updating processes
        QString updateAdvice;
        QString runningAppsDetail; ///< followed by the applications' names
    };

    [[nodiscard]] const Summary &summary() const { return m_summary; }
    [[nodiscard]] const Details &details() const { return m_details; }
    [[nodiscard]] const Restart &restart() const { return m_restart; }
    /// The restart findings that only a Linux system gives (shutdown locks, apps with unsaved work,
    /// software updates, the last shutdown); empty on macOS. %1, %2, %3 are filled in as noted.
    struct RestartEvidence {
        QString shutdownLocksSource, unsavedWorkSource, softwareUpdatesSource, lastShutdownSource;
        QString holdersMore;   ///< %1: the first holder, %2: how many more
        QString namesAnd;      ///< %1: names, %2: the last name
        QString moreLine;      ///< the last line of a list cut short; %1: how many more
        QString andMore;       ///< %1: how many more
        QString processNumber; ///< a process known only by its PID, %1
        QString pidNumber;     ///< %1: a PID
        QString someProgram, someApp;
        QString blockingTitle, blockingTitleMany; ///< %1: the holders
        QString blockingDetail;
        QString blockingAdvice;
        QString blockingQuit; ///< %1: the process, %2: its PID
        QString delayTitle;   ///< %1: the holders, %2: delayUpTo or delayFewSeconds
        QString delayUpTo;    ///< %1: seconds
        QString delayFewSeconds;
        QString delayDetail; ///< %1: delayUpTo or delayFewSeconds
        QString delayAdvice;
        QString unsavedTitle, unsavedTitleMany; ///< %1: the apps
        QString unsavedDetail, unsavedAdvice;
        QString installingTitle;  ///< %1: the process
        QString installingDetail; ///< %1: the lock file, %2: the process, %3: its PID
        QString packageKitDetail; ///< %1: what the transactions do
        QString installingAdvice;
        QString offlineTitle, offlineDetail, offlineAdvice;
        QString restartRequiredTitle, restartRequiredDetail;
        QString restartRequiredPackages; ///< follows the detail when the packages are known
        QString restartRequiredAdvice;
        QString lastShutdownTitle;     ///< %1: the process, %2: its unit
        QString lastShutdownUnitTitle; ///< %1: the unit, when no process is named
        QString lastShutdownDetail;
        QString lastShutdownAdvice; ///< %1: the process or unit
    };
    [[nodiscard]] const RestartEvidence &restartEvidence() const { return m_restartEvidence; }
    /// The command-line report's one-line description of itself.
    [[nodiscard]] const QString &reportDescription() const { return m_reportDescription; }

    /// Every text of the profile that the user may read, apart from the catalog's.
    [[nodiscard]] QStringList allTexts() const;

    /// What an assertion of `kind` does, in one sentence.
    [[nodiscard]] QString describe(const AssertionKind &kind) const;

    /// The known processes; see ProcessCatalog for the lookup.
    [[nodiscard]] const QList<CatalogEntry> &catalog() const { return m_catalog(); }
    /// The kernel's cut-off for process names (a name this long may be the start of a longer
    /// one); 0 where names are kept whole.
    [[nodiscard]] int truncatedNameLength() const { return m_truncatedNameLength; }

    /// The settings links to show, in order, and the process viewer, if any. On Linux they are
    /// picked once from the installed desktop entries and XDG_CURRENT_DESKTOP.
    [[nodiscard]] QList<OpenTarget> settingsLinks() const;
    [[nodiscard]] std::optional<OpenTarget> processViewer() const;
    /// Picks the links and the viewer again (after the installed entries changed).
    void reloadDesktop() const;

    /// The links of `specs` and the first viewer of `viewers` that the entries under `folders`
    /// (applications folders, in order of precedence) provide, preferring those of `desktops`.
    [[nodiscard]] static std::pair<QList<OpenTarget>, std::optional<OpenTarget>>
    pickFromDesktop(const QList<SettingsLinkSpec> &specs, const QList<DesktopCandidate> &viewers,
                    const QStringList &desktops, const QStringList &folders);

    [[nodiscard]] const QList<SettingsLinkSpec> &settingsLinkSpecs() const { return m_links; }
    [[nodiscard]] const QList<DesktopCandidate> &viewerCandidates() const { return m_viewers; }

    // Fixed tool paths; services take them as constructor defaults.
    [[nodiscard]] QString pmset() const;
    [[nodiscard]] QString ps() const { return m_ps; }
    [[nodiscard]] QString log() const { return m_log; }
    [[nodiscard]] QString spindump() const { return m_spindump; }
    [[nodiscard]] QString diagnosticReports() const { return m_diagnosticReports; }

private:
    explicit Profile(System system);
    friend class ScopedProfile;
    static void makeMac(Profile &p);
    static void makeLinux(Profile &p);

    System m_system;
    Summary m_summary;
    Details m_details;
    Restart m_restart;
    RestartEvidence m_restartEvidence;
    QString m_reportDescription;
    std::array<QString, 21> m_kindDescriptions;
    QHash<QString, QString> m_otherWordDescriptions; ///< type words only this system's tool writes
    const QList<CatalogEntry> &(*m_catalog)() = nullptr;
    int m_truncatedNameLength = 0;
    QList<SettingsLinkSpec> m_links;
    QList<DesktopCandidate> m_viewers;
    bool m_pickFromDesktop = false; ///< links and viewer from installed desktop entries, not fixed ones
    std::optional<OpenTarget> m_fixedViewer;
    QString m_pmset; ///< relative: a helper in the program's own folder
    QString m_ps, m_log, m_spindump, m_diagnosticReports;

    struct DesktopChoice {
        QList<OpenTarget> links;
        std::optional<OpenTarget> viewer;
    };
    [[nodiscard]] DesktopChoice desktopChoice() const;
    mutable QMutex m_choiceMutex;
    mutable std::optional<DesktopChoice> m_choice;
};

/// Tests: makes `system`'s profile the current one for the object's life.
class ScopedProfile {
public:
    explicit ScopedProfile(Profile::System system);
    ~ScopedProfile();
    ScopedProfile(const ScopedProfile &) = delete;
    ScopedProfile &operator=(const ScopedProfile &) = delete;

private:
    const Profile *m_previous;
};

} // namespace lullwick
