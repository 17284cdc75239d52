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

    /// The sleep check: why the computer may still not sleep when nothing holds a lock (masked
    /// targets, what logind and the kernel offer, the lid and idle policy, the desktop's automatic
    /// suspend, what may wake it). Only a Linux system has one; empty on macOS. Filled in by
    /// linuxSleepWords(). %1, %2, %3 are filled in as noted.
    struct Sleep {
        QString sectionTitle, sectionIntro;
        QString verdict; ///< nothing holds a lock, but it cannot suspend; %1: why
        QString targetsSource, abilitySource, kernelSource, lidSource, desktopSource, wakeSource;
        QString namesAnd;             ///< %1: names, %2: the last name
        QString namesMore;            ///< %1: names, %2: how many more
        QString cannotSuspendTitle;   ///< %1: why, e.g. maskedReason
        QString maskedReason;         ///< %1: the unit
        QString maskedDetail;         ///< %1: the masked units
        QString maskedUntilBoot;      ///< added when a mask lives in /run only
        QString maskedAdvice;         ///< %1: the commands
        QString hibernateMaskedTitle; ///< %1: the unit
        QString hibernateMaskedDetail;
        QString noKernelSuspendReason, logindNaReason;
        QString noSuspendDetail; ///< %1: the state line
        QString noSuspendAdvice;
        QString suspendNotAllowedTitle, suspendNotAllowedDetail, suspendNotAllowedAdvice;
        QString hibernateUnavailableTitle; ///< %1: why
        QString lockdownReason, noSwapReason, noKernelHibernateReason, hibernateNaReason;
        QString hibernateUnavailableDetail;
        QString s2idleOnlyTitle, s2idleOnlyDetail, s2idleOnlyAdvice;
        QString s2idleChosenTitle, s2idleChosenDetail, s2idleChosenAdvice;
        QString failedDeviceTitle; ///< %1: the device, %2: the step
        QString failedStepTitle;   ///< %1: the step
        QString failedDetail;      ///< %1: failures, %2: successes
        QString failedErrno;       ///< %1: the error number
        QString failedAdvice;
        QString pluggedIn, onBattery, docked; ///< where the computer is now, e.g. "while plugged in"
        QString lidHandlerTitle;              ///< %1: the program
        QString lidHandlerDetail;             ///< %1: the program, %2: its reason
        QString lidHandlerAdvice;
        QString lidIgnoredTitle;  ///< %1: where (pluggedIn…), %2: logind's action
        QString lidIgnoredDetail; ///< %1: the setting, %2: its value
        QString lidIgnoredAdvice; ///< %1: the setting
        QString idleActionTitle;  ///< %1: the action, %2: the time
        QString idleActionDetail;
        QString minutes, oneMinute, hours, oneHour, seconds;
        QString neverSuspendsTitle;  ///< %1: where
        QString neverSuspendsDetail; ///< %1: the desktop, %2: where
        QString neverSuspendsAdvice;
        QString suspendsAfterTitle;   ///< %1: the desktop, %2: the time, %3: where
        QString hibernatesAfterTitle; ///< %1: the desktop, %2: the time, %3: where
        QString suspendsAfterDetail;  ///< %1: the desktop
        QString desktopLidTitle;      ///< %1: the desktop, %2: where
        QString desktopLidDetail;     ///< %1: the desktop, %2: the setting's value
        QString desktopLidAdvice;
        QString wakeTitle; ///< %1: the devices
        QString wakeDetail, wakeAdvice;
        QString wokeTitle; ///< %1: the sources
        QString wokeDetail;
        QString wokeTimes; ///< %1: the source, %2: how often
        QString wokeOnce;  ///< %1: the source
        QString usbController, networkCard, wirelessCard, pciBridge, keyboard, mouse, lidDevice, powerButton,
            someDevice;
    };

    Summary summary;
    Details details;
    Restart restart;
    RestartEvidence restartEvidence;
    Holders holders;
    LastSuspends lastSuspends;
    Sleep sleep;
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
/// The sleep check's words on a Linux desktop.
[[nodiscard]] Words::Sleep linuxSleepWords();

} // namespace lullwick
