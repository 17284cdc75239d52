#pragma once

#include "catalog/ProcessCatalog.h"
#include "platform/OpenTarget.h"
#include "profile/DesktopLinks.h"
#include "profile/Words.h"

#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <optional>

namespace lullwick {

class AssertionKind;

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

    using Summary = Words::Summary;
    using Details = Words::Details;
    using Restart = Words::Restart;
    using RestartEvidence = Words::RestartEvidence;
    using LastSuspends = Words::LastSuspends;

    [[nodiscard]] const Summary &summary() const { return m_words.summary; }
    [[nodiscard]] const Details &details() const { return m_words.details; }
    [[nodiscard]] const Restart &restart() const { return m_words.restart; }
    /// The restart findings that only a Linux system gives; empty on macOS.
    [[nodiscard]] const RestartEvidence &restartEvidence() const { return m_words.restartEvidence; }
    /// The findings of the last suspends, from the system journal; empty on macOS.
    [[nodiscard]] const LastSuspends &lastSuspends() const { return m_words.lastSuspends; }
    /// The command-line report's one-line description of itself.
    [[nodiscard]] const QString &reportDescription() const { return m_words.reportDescription; }
    /// All the words of this system.
    [[nodiscard]] const Words &words() const { return m_words; }

    /// Every text of the profile that the user may read, apart from the catalog's.
    [[nodiscard]] QStringList allTexts() const;

    /// What an assertion of `kind` does, in one sentence.
    [[nodiscard]] QString describe(const AssertionKind &kind) const;

    /// The processes this system's catalog explains.
    [[nodiscard]] const ProcessCatalog &catalog() const { return m_catalog; }

    /// The settings links to show, in order, and the process viewer, if any. On Linux they are
    /// picked once from the installed desktop entries and XDG_CURRENT_DESKTOP.
    [[nodiscard]] QList<OpenTarget> settingsLinks() const;
    [[nodiscard]] std::optional<OpenTarget> processViewer() const;
    /// Picks the links and the viewer again (after the installed entries changed).
    void reloadDesktop() const;

    /// The links and viewers this system may offer, before any is picked.
    [[nodiscard]] const DesktopLinks &desktopLinks() const { return m_links; }

    // Fixed tool paths; services take them as constructor defaults.
    [[nodiscard]] QString pmset() const;
    [[nodiscard]] QString ps() const { return m_ps; }
    [[nodiscard]] QString log() const { return m_log; }
    [[nodiscard]] QString spindump() const { return m_spindump; }
    [[nodiscard]] QString diagnosticReports() const { return m_diagnosticReports; }

private:
    explicit Profile(System system);
    friend class ScopedProfile;

    System m_system;
    Words m_words;
    ProcessCatalog m_catalog;
    DesktopLinks m_links;
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
