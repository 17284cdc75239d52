#include "profile/Words.h"

using namespace Qt::StringLiterals;

namespace lullwick {

// What the system journal tells about the last suspends on a Linux desktop: the kernel's and
// systemd's own account of each attempt, put the way a user needs it.
Words::LastSuspends linuxSuspendWords()
{
    Words::LastSuspends w;
    w.source = u"Last suspends (system journal)"_s;
    w.journalCaveat =
        u"What happened the last times it tried to suspend is read from the system journal, which only "
        u"root and members of the systemd-journal or adm group may read: to let this see it, run “sudo "
        u"usermod -aG systemd-journal $USER” in a terminal, then log out and back in."_s;
    w.namesAnd = u"%1 and %2"_s;
    w.moreLine = u"… and %1 more"_s;
    w.seconds = u"%1 s"_s;
    w.minutes = u"%1 min"_s;
    w.hours = u"%1 h"_s;
    w.hoursMinutes = u"%1 h %2 min"_s;

    w.freezerTitle = u"A suspend failed because %1 could not be stopped"_s;
    w.freezerTitleUnnamed = u"A suspend failed because a process could not be stopped"_s;
    w.freezerDetail =
        u"Before it suspends, the kernel pauses every program. It waited %1 seconds for these and gave "
        u"up, so the computer stayed awake. A program that won’t pause is almost always stuck waiting "
        u"for a file: on a network share (NFS, SMB) or a FUSE mount (sshfs, a cloud drive, Syncthing’s "
        u"or Flatpak’s helpers) that stopped answering, or on a disk that is slow or failing:"_s;
    w.freezerUserSlice =
        u"systemd could not pause the programs of your session either (“%1”): the same failure, seen "
        u"from systemd."_s;
    w.taskLine = u"%1 (PID %2)"_s;
    w.taskWaiting = u", waiting for a file or device"_s;
    w.cutName = u"%1… (the kernel keeps 15 characters of a name): %2"_s;
    w.freezerAdvice =
        u"Unmount the network share or FUSE mount it uses (or reconnect it), or quit the program, "
        u"before you suspend. If it is always the same program, look at what it reads from: "
        u"“fusermount -u” or “umount -l” in a terminal frees a mount that no longer answers."_s;

    w.deviceTitle = u"A suspend failed because %1 (%2) refused to suspend"_s;
    w.deviceTitleBare = u"A suspend failed because %1 refused to suspend"_s;
    w.deviceTitleUnnamed = u"A suspend failed because a device refused to suspend"_s;
    w.deviceDetail =
        u"The kernel asks every device’s driver to get ready for sleep. One answered with an error, "
        u"so the kernel woke everything up again and the computer stayed on—which looks as if it "
        u"woke straight back up:"_s;
    w.deviceLine = u"%1: %2, error %3"_s;
    w.deviceAdvice =
        u"Unplug the device (or the USB hub it hangs on) and try again; if that helps, look for a "
        u"newer kernel or firmware for it. A driver you can do without can be unloaded before a "
        u"suspend with a systemd-sleep hook."_s;

    w.nvidiaTitle = u"NVIDIA’s suspend steps are missing or failing"_s;
    w.nvidiaHandshakeDetail =
        u"The NVIDIA driver is set to keep video memory over a suspend "
        u"(PreserveVideoMemoryAllocations), which only works when nvidia-suspend.service saves it "
        u"first. That step did not run, so the driver refused to suspend."_s;
    w.nvidiaUnitDetail = u"NVIDIA’s own units, which save and restore the graphics card around a "
                         u"suspend, failed, so the suspend did not go ahead:"_s;
    w.unitLine = u"%1: %2"_s;
    w.nvidiaAdvice =
        u"Enable the units with “sudo systemctl enable nvidia-suspend.service nvidia-resume.service "
        u"nvidia-hibernate.service” and make sure the script they run (nvidia-sleep.sh) is installed "
        u"with your driver; reinstalling the driver package usually puts both right."_s;

    w.wakeupTitle = u"A suspend was called off because %1 asked to wake the computer"_s;
    w.wakeupTitleUnnamed = u"A suspend was called off because something asked to wake the computer"_s;
    w.wakeupDetail =
        u"Right as the computer was going to sleep, a wakeup event was pending, so the kernel called "
        u"the suspend off. The wakeup source is the kernel’s name for what asked: a device, a driver "
        u"or a timer."_s;
    w.wakeupAdvice = u"If it happens every time, stop that device from waking the computer (“echo disabled > "
                     u"/sys/bus/…/power/wakeup” as root), or look for a driver update for it."_s;

    w.quickWakeTitle = u"It woke up %1 seconds after it went to sleep"_s;
    w.quickWakeDetail =
        u"The last suspend ended almost at once. Something woke the computer—usually a device that "
        u"may wake it: a mouse that moved, a USB controller, a network card, or the lid sensor."_s;
    w.quickWakeDevices = u"Allowed to wake this computer:"_s;
    w.quickWakeAdvice =
        u"Try a suspend with the USB devices unplugged; if it then stays asleep, stop the one that "
        u"woke it from waking the computer."_s;

    w.stoppedTitle = u"The computer stopped responding while suspending on %1"_s;
    w.stoppedDetail =
        u"The journal of the computer’s previous start ends while it was suspending: it never came "
        u"back from that suspend. Either it hung on the way down or on the way up (a black screen "
        u"that ignored every key, then a forced power-off), or its battery ran out while it slept."_s;
    w.stoppedAdvice =
        u"If it wasn’t the battery: a graphics driver is the most common cause—try a newer driver or "
        u"kernel, and for NVIDIA make sure its suspend units are enabled."_s;

    w.maskedTitle = u"Suspend was refused earlier: %1 was masked"_s;
    w.maskedDetail =
        u"systemd-logind refused to suspend because %1 was masked—turned off on purpose. The mask "
        u"isn’t there any more (a runtime mask that was lifted, or one undone since), but something "
        u"on this computer set it, and may set it again."_s;
    w.maskedAdvice =
        u"If suspend stops working again, “systemctl is-enabled suspend.target” in a terminal says "
        u"“masked”, and “sudo systemctl unmask suspend.target” undoes it; a kiosk set-up, a script or "
        u"an administrator usually set it."_s;

    w.lockdownTitle = u"Hibernation is turned off by the kernel’s lockdown"_s;
    w.lockdownDetail =
        u"With Secure Boot the kernel locks itself down and refuses to hibernate, since the saved "
        u"memory image could be changed while the computer is off. Suspend is not affected."_s;
    w.lockdownAdvice = u"Nothing to do unless you need hibernation; suspend works as usual."_s;

    w.sleptTitle = u"The last suspend went well: it slept for %1 from %2"_s;
    w.sleptDetail =
        u"The journal shows the computer going to sleep and waking up again without an error (%1 of "
        u"the last suspends went well), so suspending does work."_s;
    w.sleptAdvice = u"Nothing to do."_s;
    return w;
}

} // namespace lullwick
