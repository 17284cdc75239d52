#include "profile/Words.h"

using namespace Qt::StringLiterals;

namespace lullwick {

// The program on a Linux desktop: the inhibitors of systemd-logind and of the desktop session,
// read through the pmset stand-in shipped beside the program.
Words linuxWords(const Words &mac)
{
    Words p;
    p.summary = {
        u"Reading the sleep inhibitors…"_s,
        u"Click Refresh to read the sleep inhibitors."_s,
        u"Sleep inhibitors are locks that programs take through systemd-logind or the desktop session—apps "
        u"and the system itself—that say, in effect, “don’t sleep yet, I’m doing something.” Each one names "
        u"which kind of sleep it holds off. This screen lists every inhibitor currently held on your "
        u"computer."_s,
        u"Nothing is preventing your computer from sleeping."_s,
        {u"Your desktop normally blanks the screen and then suspends the computer on its own once it has "
         u"been idle for a while. When something blocks idle sleep, the computer stays awake even though "
         u"you’re not using it. Suspending by hand—Suspend in the system menu, or closing the lid—still "
         u"works."_s,
         u"Held against every suspend that is asked for, from the system menu or by a program, not only "
         u"the automatic one: systemd-logind refuses until the lock is let go. Closing the lid still "
         u"suspends, since logind lets the lid and the suspend key ignore such locks unless told otherwise. "
         u"This is rare and almost always intentional, like during a backup or a system update."_s,
         u"When something blocks display sleep, the screen stays on—no dimming, no blanking—even after the "
         u"desktop would normally turn it off: usually because a video is playing, a call is on, or a "
         u"presentation is running."_s},
        u"These inhibitors are held but don’t prevent any of the three sleep kinds on their own: delay locks "
        u"that only postpone suspend or shutdown for a moment, locks on shutdown or logout, and programs "
        u"that "
        u"handle the power keys and the lid themselves."_s,
        u"These are the places on your desktop to adjust sleep behavior or see what’s connected."_s,
        u"Open %1"_s,
        u"Opens %1 and copies the relevant PID to the clipboard so you can paste it into its search field. "
        u"(You may need to show all processes, not only your own.)"_s,
        u"Tip: in %1, show all processes, not only your own, if a PID isn’t listed. A command run through "
        u"systemd-inhibit is named on its “Created for” line above; look for that process instead."_s,
        u"Copy PID"_s,
        u"Copies the relevant PID to the clipboard, so you can look the process up in a process viewer or "
        u"with ps -p in a terminal."_s,
        u"Tip: no process viewer is installed here. “Copy PID” puts a row’s PID on the clipboard; ps -p "
        u"followed by that number in a terminal shows the process. A command run through systemd-inhibit is "
        u"named on its “Created for” line above."_s,
    };
    p.details = {u"Inhibitors held through systemd-logind and the desktop session"_s,
                 u"Power settings (kernel and systemd-logind)"_s};
    p.restart = {
        u"When you choose Restart and nothing happens—or an update won’t install because the computer can’t "
        u"restart—it’s usually one app refusing to quit (often an unsaved document), a program holding a "
        u"shutdown lock, or a system update still writing itself to disk. This gathers the signals your "
        u"computer records about that and ranks the likely cause."_s,
        u"Reading the sleep and shutdown locks…"_s,
        u"Click Analyze to check what’s holding up a restart right now."_s,
        u"What this can’t see"_s,
        u"No system interface names the restart blocker with certainty, so this ranks evidence rather than "
        u"giving one guaranteed answer. And if your computer is fully frozen—no pointer, screen "
        u"unresponsive—you won’t be able to open this app at all. It’s built for the common case: you chose "
        u"Restart, it quietly didn’t happen, and the computer is otherwise working."_s,
        u"The last shutdown is read from the system journal, which only root and members of the "
        u"systemd-journal or adm group may read: to let this see it, run “sudo usermod -aG "
        u"systemd-journal $USER” in a terminal, then log out and back in."_s,
        {u"Found a likely cause that’s holding up a restart."_s,
         u"Nothing is conclusively blocking a restart, but here are the things worth checking."_s,
         u"No obvious restart blocker found. If a restart still hangs, it’s most likely an app with an "
         u"unsaved document."_s},
        u"A system update is installing right now"_s,
        u"A software updater is holding a lock (%1). Your computer won’t restart cleanly while an update is "
        u"mid-install — it wants to finish writing the update first, which can look like a stuck or refused "
        u"restart."_s,
        u"Let the update finish in your software updater (GNOME Software, Discover, or the terminal running "
        u"apt), then restart again."_s,
        u"When you restart, your desktop asks each open app to quit. Any one of these can silently stop the "
        u"restart by putting up a “Save changes?” dialog that you may not see if it’s behind another "
        u"window:\n\n"_s,
    };
    p.lastSuspends = linuxSuspendWords();
    Words::RestartEvidence &e = p.restartEvidence;
    e.shutdownLocksSource = u"Shutdown locks"_s;
    e.unsavedWorkSource = u"Apps with unsaved work"_s;
    e.softwareUpdatesSource = u"Software updates"_s;
    e.lastShutdownSource = u"Last shutdown (system journal)"_s;
    e.holdersMore = u"%1 and %2 more"_s;
    e.namesAnd = u"%1 and %2"_s;
    e.moreLine = u"… and %1 more"_s;
    e.andMore = u"and %1 more"_s;
    e.processNumber = u"Process %1"_s;
    e.pidNumber = u"PID %1"_s;
    e.someProgram = u"A program"_s;
    e.someApp = u"An app"_s;
    e.blockingTitle = u"%1 is blocking restart and shutdown"_s;
    e.blockingTitleMany = u"%1 are blocking restart and shutdown"_s;
    e.blockingDetail =
        u"A program can ask systemd-logind to hold off shutdown until it’s done. While it holds such a lock, "
        u"choosing Restart in the desktop does nothing — or asks whether to restart anyway — and only a "
        u"forced restart gets past it. Holding a lock right now:"_s;
    e.blockingAdvice = u"Let it finish, then restart again."_s;
    e.blockingQuit = u"If it’s stuck, quit %1 from your system monitor, or with “kill %2” in a terminal."_s;
    e.delayTitle = u"%1 will delay a restart by %2"_s;
    e.delayUpTo = u"up to %1 s"_s;
    e.delayFewSeconds = u"a few seconds"_s;
    e.delayDetail =
        u"A delay lock doesn’t stop a restart. systemd-logind tells the program that the computer is "
        u"about to restart and waits until it lets go, for %1 at the most (InhibitDelayMaxSec). "
        u"Holding a delay lock right now:"_s;
    e.delayAdvice =
        u"Nothing to do: the restart goes ahead on its own once the program is ready or the time is "
        u"up."_s;
    e.unsavedTitle = u"%1 has unsaved work"_s;
    e.unsavedTitleMany = u"%1 have unsaved work"_s;
    e.unsavedDetail =
        u"These apps told the desktop session that logging out now would lose something. A restart logs you "
        u"out first, so the session stops and asks about them in a “Some applications are busy or have "
        u"unsaved work” prompt — one that’s easy to miss behind other windows:"_s;
    e.unsavedAdvice = u"Switch to each app, save or close what’s open in it, then restart again."_s;
    e.installingTitle = u"%1 is installing or removing software right now"_s;
    e.installingDetail =
        u"The package manager’s lock (%1) is held by %2 (PID %3). A restart now would stop it "
        u"halfway, which can leave packages half-installed and the system hard to update "
        u"afterwards."_s;
    e.packageKitDetail =
        u"PackageKit is running a transaction that changes the installed software (%1). A "
        u"restart now would stop it halfway, which can leave packages half-installed and the "
        u"system hard to update afterwards."_s;
    e.installingAdvice =
        u"Don’t restart until it has finished — your software updater or the terminal running "
        u"it shows the progress. If an earlier run was cut short, “sudo dpkg --configure -a” in "
        u"a terminal completes it."_s;
    e.offlineTitle = u"An update will be installed during the next restart"_s;
    e.offlineDetail =
        u"An offline update is staged (/system-update). When the computer restarts, it installs the "
        u"update before the desktop comes back, so the restart takes longer than usual and may "
        u"look stuck on a progress screen."_s;
    e.offlineAdvice =
        u"Restart when you can spare a few minutes, and don’t power off while the update installs."_s;
    e.restartRequiredTitle = u"Installed updates are waiting for a restart"_s;
    e.restartRequiredDetail = u"Updates installed since the computer started only take full effect after a "
                              u"restart (/run/reboot-required)."_s;
    e.restartRequiredPackages = u" They came with:"_s;
    e.restartRequiredAdvice = u"Nothing here holds the restart up: restart when it suits you."_s;
    e.lastShutdownTitle = u"Last shutdown waited for %1 (%2)"_s;
    e.lastShutdownUnitTitle = u"Last shutdown waited for %1"_s;
    e.lastShutdownDetail =
        u"During the last shutdown, systemd asked these to stop, waited until its time limit "
        u"ran out, then killed them. The same is likely to hold up the next restart:"_s;
    e.lastShutdownAdvice =
        u"Quit %1 yourself before you restart. If it comes back every time, look at how it’s "
        u"started — a program that ignores the request to stop costs a minute or more at "
        u"every shutdown."_s;

    p.sleep = linuxSleepWords();
    p.holders = linuxHolderWords();
    p.reportDescription =
        u"Explains what keeps this computer awake, or what may hold up a restart, in plain language."_s;

    // The Mac's descriptions, but for those that name the Mac or its services.
    using K = AssertionKind;
    p.kindDescriptions = mac.kindDescriptions;
    const QString keepAwake = u"Keeping the computer awake while otherwise idle."_s;
    const QString keepDisplay = u"Keeping the screen on, and the computer awake, while otherwise idle."_s;
    const QString preventAll = u"Refusing every suspend, automatic or asked for, until the lock is let go."_s;
    for (const auto &[kind, text] : std::initializer_list<std::pair<K::Case, QString>>{
             {K::preventUserIdleSystemSleep, keepAwake},
             {K::noIdleSleepLegacy, keepAwake},
             {K::preventUserIdleDisplaySleep, keepDisplay},
             {K::noDisplaySleepLegacy, keepDisplay},
             {K::preventSystemSleep, preventAll},
             {K::denySystemSleepLegacy, preventAll},
             {K::applePushServiceTask,
              u"Push notification service activity. Holds idle sleep only while plugged in."_s},
             {K::softwareUpdateTask,
              u"A system software update is running. Holds idle sleep only while plugged in."_s},
             {K::maintenanceWake, u"System woke briefly to do maintenance. AC-only."_s},
             {K::externalMedia,
              u"External storage is mounted. Informational — does not prevent sleep on its own."_s},
             {K::internalPreventSleep, u"Short-lived power-manager proxy while transitioning sleep state."_s},
             {K::internalPreventDisplaySleep,
              u"Short-lived power-manager proxy while transitioning display sleep state."_s},
         })
        p.kindDescriptions[kind] = text;
    // The words the stand-in writes for the inhibitors that block no kind of sleep.
    p.otherWordDescriptions = {
        {u"DelaySleep"_s,
         u"A delay lock: postpones suspend by a few seconds so the program can get ready (lock the screen, "
         u"close connections). It blocks nothing."_s},
        {u"DelayShutdown"_s,
         u"A delay lock on shutdown: postpones power-off or restart by a few seconds so the program can "
         u"finish up. Sleep is not affected."_s},
        {u"PreventShutdown"_s,
         u"Holding off shutdown and restart, for example while packages install. Sleep is not affected."_s},
        {u"HandlePowerKeys"_s,
         u"Handling the power, suspend or lid keys itself instead of systemd-logind. Blocks no sleep: the "
         u"program decides what the keys do."_s},
        {u"PreventLogout"_s,
         u"Asking the desktop session not to log out, for example over unsaved work. Sleep is not "
         u"affected."_s},
        {u"PreventUserSwitch"_s, u"Asking the desktop session not to switch users. Sleep is not affected."_s},
        {u"PreventAutomount"_s,
         u"Asking the desktop session not to open inserted media automatically. Sleep is not affected."_s},
        {u"Inhibitor"_s,
         u"A lock of a kind this program doesn’t know. It blocks none of the three sleep kinds."_s},
    };
    return p;
}

} // namespace lullwick
