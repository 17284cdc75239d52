#pragma once

#include "model/AssertionKind.h"

#include <QHash>
#include <QString>
#include <array>

namespace lullwick {

/// The words one system's program says: every sentence of the window, its copies and the report
/// that is not the catalog's. Each system's are written out in its own file.
struct Words {
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
        /// Follows the caveat only when the system journal could not be read; empty on macOS.
        QString journalCaveat;
        std::array<QString, 3> verdicts; ///< likely cause, worth checking, no obvious blocker
        QString updateTitle;
        QString updateDetail; ///< %1: the names of the updating processes
        QString updateAdvice;
        QString runningAppsDetail; ///< followed by the applications' names
    };

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

    /// How a row quotes a lock's holder and reason, and explains a lock by its kind alone. Empty
    /// on macOS, whose rows say neither.
    struct Holders {
        QString quote;       ///< %1: the reason, %2: the holder
        QString reasonOnly;  ///< %1: the reason, when no holder is named
        QString holderOnly;  ///< %1: the holder, when it gives no reason
        QString unknownHeld; ///< the held time that says it is not known; the badge says nothing then
        struct KindText {
            QString explanation, callToAction;
        };
        /// For a holder the catalog does not know, by the type word of its lock.
        QHash<QString, KindText> kindTexts;
    };
    /// The findings of the last suspends, read from the system journal; empty on macOS. %1, %2
    /// are filled in as noted.
    struct LastSuspends {
        QString source;
        QString journalCaveat;           ///< the sleep section's caveat when the journal could not be read
        QString namesAnd;                ///< %1: names, %2: the last name
        QString moreLine;                ///< the last line of a list cut short; %1: how many more
        QString seconds, minutes, hours; ///< %1: a number of each
        QString hoursMinutes;            ///< %1: hours, %2: minutes
        QString freezerTitle;            ///< %1: the processes
        QString freezerTitleUnnamed;
        QString freezerDetail;    ///< %1: seconds the kernel waited
        QString freezerUserSlice; ///< systemd's own account of the same failure, %1: its reason
        QString taskLine;         ///< %1: the process, %2: its PID
        QString taskWaiting;      ///< follows a task stuck in uninterruptible sleep (state D)
        QString cutName;          ///< %1: the start of the name, %2: the catalog's explanation
        QString freezerAdvice;
        QString deviceTitle;     ///< %1: the device, %2: its driver
        QString deviceTitleBare; ///< %1: the device or driver
        QString deviceTitleUnnamed;
        QString deviceDetail;
        QString deviceLine; ///< %1: the device or driver, %2: the step, %3: the error
        QString deviceAdvice;
        QString nvidiaTitle;
        QString nvidiaHandshakeDetail;
        QString nvidiaUnitDetail; ///< followed by the units' lines
        QString unitLine;         ///< %1: the unit, %2: what went wrong
        QString nvidiaAdvice;
        QString wakeupTitle; ///< %1: the wakeup source
        QString wakeupTitleUnnamed;
        QString wakeupDetail, wakeupAdvice;
        QString quickWakeTitle; ///< %1: seconds
        QString quickWakeDetail;
        QString quickWakeDevices; ///< followed by the wake-enabled devices
        QString quickWakeAdvice;
        QString stoppedTitle; ///< %1: the date
        QString stoppedDetail, stoppedAdvice;
        QString maskedTitle;  ///< %1: the target
        QString maskedDetail; ///< %1: the target
        QString maskedAdvice;
        QString lockdownTitle, lockdownDetail, lockdownAdvice;
        QString sleptTitle;  ///< %1: how long, %2: when
        QString sleptDetail; ///< %1: how many suspends went well
        QString sleptAdvice;
    };

    Summary summary;
    Details details;
    Restart restart;
    RestartEvidence restartEvidence;
    Holders holders;
    LastSuspends lastSuspends;
    /// The command-line report's one-line description of itself.
    QString reportDescription;
    /// What each known assertion kind does, indexed by AssertionKind::Case.
    std::array<QString, AssertionKind::knownCaseCount> kindDescriptions;
    /// What the type words that only this system's tool writes do.
    QHash<QString, QString> otherWordDescriptions;
};

/// The Mac's words, as the described program has them.
[[nodiscard]] Words macWords();
/// A Linux desktop's words; some sentences are the Mac's own.
[[nodiscard]] Words linuxWords(const Words &mac);
/// How a Linux desktop's rows quote the holders of locks.
[[nodiscard]] Words::Holders linuxHolderWords();
/// A Linux desktop's words for the last suspends.
[[nodiscard]] Words::LastSuspends linuxSuspendWords();

} // namespace lullwick
