#include "profile/Words.h"

using namespace Qt::StringLiterals;

namespace lullwick {

// The sleep check on a Linux desktop: what keeps the computer from sleeping that is not a lock.
Words::Sleep linuxSleepWords()
{
    Words::Sleep w;
    w.sectionTitle = u"Why it may still not sleep"_s;
    w.sectionIntro =
        u"Locks aren’t the only thing that keeps a computer awake. These come from the system’s own "
        u"settings: whether suspend is turned off, what the kernel and systemd-logind offer, what "
        u"closing the lid does, when your desktop suspends on its own, and what may wake the computer "
        u"straight back up."_s;
    w.verdict = u"Nothing holds a sleep lock, but this computer cannot suspend: %1."_s;
    w.targetsSource = u"Sleep turned off (systemd units)"_s;
    w.abilitySource = u"What systemd-logind can do"_s;
    w.kernelSource = u"What the kernel offers (/sys/power)"_s;
    w.lidSource = u"Lid and idle policy (systemd-logind)"_s;
    w.desktopSource = u"Your desktop’s automatic suspend"_s;
    w.wakeSource = u"What may wake it"_s;
    w.namesAnd = u"%1 and %2"_s;
    w.namesMore = u"%1 and %2 more"_s;

    w.cannotSuspendTitle = u"This computer cannot suspend: %1"_s;
    w.maskedReason = u"%1 is masked"_s;
    w.maskedDetail =
        u"Masking a systemd unit turns it off for good: its file is replaced by a link to /dev/null, and "
        u"systemd refuses to start it. With %1 masked, every suspend—from the system menu, the lid, the "
        u"suspend key or the desktop’s own timer—is refused (systemd-logind logs “Unit suspend.target is "
        u"masked, refusing operation.”). Nobody masks it by accident: a kiosk or server set-up, a script "
        u"or an administrator chose it."_s;
    w.maskedUntilBoot = u" This mask lives in /run, so it lasts only until the next restart."_s;
    w.maskedAdvice =
        u"If suspending should work here, undo it in a terminal with “%1”. If this computer is managed by "
        u"someone else, ask them first."_s;
    w.hibernateMaskedTitle = u"Hibernation is turned off: %1 is masked"_s;
    w.hibernateMaskedDetail =
        u"Suspend still works; only hibernation (saving memory to disk and powering off) is refused. "
        u"Many installations do this on purpose, since hibernation needs a large swap area and does not "
        u"work with Secure Boot."_s;

    w.noKernelSuspendReason = u"the kernel offers no way to suspend"_s;
    w.logindNaReason = u"systemd-logind says suspend isn’t available"_s;
    w.noSuspendDetail =
        u"systemd-logind answers “na” when asked whether this computer can suspend. The kernel lists "
        u"the sleep states it supports in /sys/power/state (here: “%1”); without “mem” or “freeze” there "
        u"is nothing to suspend into. This is usual in a virtual machine or a container, and on firmware "
        u"with sleep turned off."_s;
    w.noSuspendAdvice =
        u"On a real computer, look in the firmware (BIOS/UEFI) settings for a sleep or “S3” option, and "
        u"make sure the kernel was not started with “mem_sleep_default” or “acpi=off”."_s;
    w.suspendNotAllowedTitle = u"You are not allowed to suspend this computer"_s;
    w.suspendNotAllowedDetail =
        u"systemd-logind answers “no” when asked whether you may suspend: a polkit rule set up by an "
        u"administrator forbids it for your account. The desktop then hides Suspend and never suspends "
        u"on its own."_s;
    w.suspendNotAllowedAdvice =
        u"Ask whoever manages this computer; the rules live in /etc/polkit-1/rules.d."_s;
    w.hibernateUnavailableTitle = u"Hibernation isn’t available: %1"_s;
    w.lockdownReason = u"the kernel is locked down"_s;
    w.noSwapReason = u"there is no swap space"_s;
    w.noKernelHibernateReason = u"the kernel doesn’t offer it"_s;
    w.hibernateNaReason = u"systemd-logind says so"_s;
    w.hibernateUnavailableDetail =
        u"Hibernation saves memory to a swap area and powers off. It needs a swap area at least as "
        u"large as the memory in use, a kernel that offers “disk” in /sys/power/state, and no kernel "
        u"lockdown (which Secure Boot turns on). Suspend is not affected."_s;

    w.s2idleOnlyTitle = u"Suspend here is suspend-to-idle only"_s;
    w.s2idleOnlyDetail =
        u"The kernel offers only “s2idle” in /sys/power/mem_sleep: suspending freezes programs and idles "
        u"the processor, but the computer stays powered. On a laptop that can cost several percent of "
        u"battery an hour, and a device that keeps working (a network card, a USB controller) can wake it "
        u"or keep it from sleeping deeply."_s;
    w.s2idleOnlyAdvice =
        u"Some firmware offers a deeper sleep under a setting such as “Sleep state: Linux” or “S3”; with "
        u"it, “deep” appears here. Without it there is nothing to choose."_s;
    w.s2idleChosenTitle = u"Suspend uses suspend-to-idle, though deep sleep is offered"_s;
    w.s2idleChosenDetail =
        u"/sys/power/mem_sleep offers “deep” (suspend to RAM, which powers almost everything off) but "
        u"“s2idle” is chosen. Suspend-to-idle keeps the computer powered, which on a laptop can cost "
        u"several percent of battery an hour."_s;
    w.s2idleChosenAdvice =
        u"To try deep sleep until the next restart, run “echo deep | sudo tee /sys/power/mem_sleep”; to "
        u"keep it, add “mem_sleep_default=deep” to the kernel command line. If the computer then fails to "
        u"wake, go back."_s;
    w.failedDeviceTitle = u"A suspend failed: %1 refused at the “%2” step"_s;
    w.failedStepTitle = u"A suspend failed at the “%1” step"_s;
    w.failedDetail =
        u"The kernel counts %1 failed suspends since the computer started (and %2 that worked) in "
        u"/sys/power/suspend_stats. When a suspend fails, the computer wakes straight back up or never "
        u"goes to sleep."_s;
    w.failedErrno = u" The last error was %1."_s;
    w.failedAdvice =
        u"Suspend again and look at “journalctl -k -b” right after: the lines before “PM: suspend exit” "
        u"name the driver that refused."_s;

    w.pluggedIn = u"while plugged in"_s;
    w.onBattery = u"on battery"_s;
    w.docked = u"while docked"_s;
    w.lidHandlerTitle = u"%1 decides what closing the lid does"_s;
    w.lidHandlerDetail =
        u"%1 holds systemd-logind’s lid lock (“%2”), so logind leaves the lid to it and the lid settings "
        u"in /etc/systemd/logind.conf are not used. This is the usual reason why changing "
        u"HandleLidSwitch there seems to do nothing."_s;
    w.lidHandlerAdvice = u"Change what the lid does in your desktop’s power settings instead."_s;
    w.lidIgnoredTitle = u"Closing the lid doesn’t suspend %1: systemd-logind is set to “%2”"_s;
    w.lidIgnoredDetail =
        u"systemd-logind decides what closing the lid does, and its setting for now (%1) is “%2”, so the "
        u"computer stays awake with the lid shut."_s;
    w.lidIgnoredAdvice =
        u"To change it, set %1=suspend in /etc/systemd/logind.conf (or a file in "
        u"/etc/systemd/logind.conf.d), then run “sudo systemctl restart systemd-logind”, which ends your "
        u"session: save your work first."_s;
    w.idleActionTitle = u"systemd-logind will %1 the computer after %2 without input"_s;
    w.idleActionDetail =
        u"Besides the desktop’s own timer, systemd-logind acts on idleness by itself (IdleAction and "
        u"IdleActionSec in /etc/systemd/logind.conf). Locks that hold off idle sleep hold this off too."_s;
    w.minutes = u"%1 minutes"_s;
    w.oneMinute = u"1 minute"_s;
    w.hours = u"%1 hours"_s;
    w.oneHour = u"1 hour"_s;
    w.seconds = u"%1 seconds"_s;

    w.neverSuspendsTitle = u"Your desktop never suspends on its own %1"_s;
    w.neverSuspendsDetail =
        u"%1 is set to never suspend the computer by itself %2, however long it sits idle. It only "
        u"sleeps when you choose Suspend or close the lid."_s;
    w.neverSuspendsAdvice = u"Choose a time under automatic suspend in your desktop’s power settings."_s;
    w.suspendsAfterTitle = u"%1 suspends after %2 without input %3"_s;
    w.hibernatesAfterTitle = u"%1 hibernates after %2 without input %3"_s;
    w.suspendsAfterDetail =
        u"That is %1’s automatic suspend. The time starts again with every key press or pointer move, and "
        u"an app that blocks idle sleep holds it off."_s;
    w.desktopLidTitle = u"%1 does nothing when you close the lid %2"_s;
    w.desktopLidDetail =
        u"%1 handles the lid itself, and its setting for now is “%2”: the computer stays awake with the "
        u"lid shut."_s;
    w.desktopLidAdvice = u"Choose Suspend for closing the lid in your desktop’s power settings."_s;

    w.wakeTitle = u"%1 may wake this computer"_s;
    w.wakeDetail =
        u"These devices are allowed to wake the computer from suspend. A mouse that moves when the desk is "
        u"bumped, a network card that sees traffic or a USB controller with a busy device can wake it the "
        u"moment it sleeps:"_s;
    w.wakeAdvice =
        u"To keep one device from waking the computer until the next restart, run “echo disabled | sudo "
        u"tee /sys/…/power/wakeup” with the device’s path from the list; an ACPI name such as XHC0 is "
        u"switched with “echo XHC0 | sudo tee /proc/acpi/wakeup”."_s;
    w.wokeTitle = u"Recent wake-ups came from %1"_s;
    w.wokeDetail = u"The kernel counts, for each wake-up source, how often it woke the computer or stopped a "
                   u"suspend (/sys/class/wakeup), most recent first:"_s;
    w.wokeTimes = u"%1 (%2 times)"_s;
    w.wokeOnce = u"%1 (once)"_s;
    w.usbController = u"USB controller"_s;
    w.networkCard = u"network card"_s;
    w.wirelessCard = u"wireless network card"_s;
    w.pciBridge = u"PCI bridge"_s;
    w.keyboard = u"keyboard"_s;
    w.mouse = u"mouse"_s;
    w.lidDevice = u"lid"_s;
    w.powerButton = u"power button"_s;
    w.someDevice = u"device"_s;
    return w;
}

} // namespace lullwick
