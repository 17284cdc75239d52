#include "profile/Words.h"

using namespace Qt::StringLiterals;

namespace lullwick {

// The program as it runs on a Mac. Every text here is the program's own wording there; change
// none of them without changing the Mac program.
Words macWords()
{
    Words p;
    p.summary = {
        u"Reading pmset…"_s,
        u"Click Refresh to read pmset."_s,
        u"Power-management assertions are signals to macOS—from apps and from the system itself—that say, in "
        u"effect, “don’t sleep yet, I’m doing something.” Each assertion names which kind of sleep it "
        u"prevents. This screen lists every assertion currently held on your Mac."_s,
        u"Nothing is preventing your Mac from sleeping."_s,
        {u"Your Mac normally enters sleep on its own after the idle timer expires. When something blocks "
         u"idle sleep, the Mac stays awake even though you’re not actively using it. Manual sleep—Apple "
         u"menu → Sleep, or closing the lid—still works."_s,
         u"Held against any system sleep, including manual sleep commands. This is rare and almost always "
         u"intentional, like during a backup or a system update. On battery, most “all sleep” blockers are "
         u"released."_s,
         u"When something blocks display sleep, the screen stays on even after the display-idle timer would "
         u"normally turn it off—usually because a video player or a presentation app is running."_s},
        u"These assertions are held but don’t prevent any of the three sleep kinds on their own. macOS "
        u"reports them as context—recent user input, mounted external drives, etc."_s,
        u"These are the places in macOS to adjust sleep behavior or see what’s connected."_s,
        u"Open %1"_s,
        u"Opens %1 and copies the relevant PID to the clipboard so you can paste it into the search field. "
        u"(You may need to switch the View menu to All Processes.)"_s,
        u"Tip: in %1, choose View → All Processes if a PID isn’t visible. Short-lived CLI tools like "
        u"caffeinate may have already exited—check the “Created for” attribution above to find the parent "
        u"Terminal session instead."_s,
        u"Copy PID"_s,
        u"Copies the relevant PID to the clipboard."_s,
        {},
    };
    p.details = {u"pmset -g assertions"_s, u"pmset -g"_s};
    p.restart = {
        u"When you choose Restart and nothing happens—or an update won't install because it can't "
        u"restart—it's usually one app refusing to quit (often an unsaved document), or a macOS update "
        u"still writing itself to disk. This gathers every signal macOS records about that and ranks the "
        u"likely cause."_s,
        u"Reading pmset, scanning loginwindow logs…"_s,
        u"Click Analyze to check what's holding up a restart right now."_s,
        u"What this can't see"_s,
        u"There's no system API that names the restart blocker with certainty, so this ranks evidence rather "
        u"than giving one guaranteed answer. And if your Mac is fully frozen—spinning beachball, screen "
        u"unresponsive—you won't be able to open this app at all. It's built for the common case: you hit "
        u"Restart, it quietly didn't happen, and the Mac is otherwise working."_s,
        {}, // the Mac reads no journal
        {u"Found a likely cause that's holding up restart."_s,
         u"Nothing is conclusively blocking restart, but here are the things worth checking."_s,
         u"No obvious restart blocker found. If restart still hangs, it's most likely an app with an unsaved "
         u"document."_s},
        u"A macOS update is installing or staging right now"_s,
        u"The system is holding a SoftwareUpdateTask power assertion (%1). macOS won't restart cleanly while "
        u"an update is mid-install — it wants to finish writing the update first, which can look like a "
        u"stuck or refused restart."_s,
        u"Open System Settings → General → Software Update and let any in-progress update finish, then "
        u"restart again. If it's stuck downloading, pausing and resuming the update often unsticks it."_s,
        u"When you restart, macOS asks each open app to quit. Any one of these can silently stop the restart "
        u"by putting up a “Do you want to save?” dialog that you may not see if it's behind another "
        u"window:\n\n"_s,
    };
    p.reportDescription =
        u"Explains what keeps this Mac awake, or what may hold up a restart, in plain language."_s;

    const QString keepAwake = u"Keeping the Mac awake while otherwise idle."_s;
    const QString keepDisplay = u"Keeping the display from sleeping when otherwise idle."_s;
    const QString preventAll =
        u"Preventing all system sleep, including when plugged in. (Released on battery.)"_s;
    // Indexed by AssertionKind::Case.
    p.kindDescriptions = {
        keepAwake,
        preventAll,
        keepDisplay,
        u"Keeping a disk spun up; doesn’t affect system or display sleep."_s,
        u"User is currently active (recent keyboard or mouse input). Times out after a few minutes."_s,
        u"System reports it’s active right now; can revert sleep in progress."_s,
        keepAwake,
        keepDisplay,
        preventAll,
        u"Running a background task. Holds idle sleep only while plugged in."_s,
        u"Apple Push Notification Service activity. Holds idle sleep only while plugged in."_s,
        u"Delivering an interactive push notification. Brief; AC-only."_s,
        u"macOS software update is running. Holds idle sleep only while plugged in."_s,
        u"System is in DarkWake to do maintenance. AC-only."_s,
        u"A network client connection is active (file sharing, screen sharing, SMB, etc.)."_s,
        u"External storage is mounted. Informational on modern macOS — does not prevent sleep on its own."_s,
        u"Display is awake to show a notification."_s,
        u"Audio is playing through the display (HDMI/DisplayPort). Screensaver may run; the panel stays "
        u"powered."_s,
        u"Held awake even on reserve battery."_s,
        u"Short-lived powerd proxy while transitioning sleep state."_s,
        u"Short-lived powerd proxy while transitioning display sleep state."_s,
    };
    return p;
}

} // namespace lullwick
