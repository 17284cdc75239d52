#include "catalog/CatalogEntry.h"

using namespace Qt::StringLiterals;

namespace lullwick {

// The fixed table. A function-local static is built once, thread-safely, on first use, and is
// immutable afterwards, so lookups need no locking.
const QList<CatalogEntry> &macCatalog()
{
    static const QList<CatalogEntry> table = [] {
        // Zoom runs as "zoom" or "zoom.us"; a dot does not continue a key, so both names need an entry.
        const ProcessInfo zoom{u"Zoom call is active"_s,
                               u"Zoom holds a display- and system-sleep assertion during a meeting."_s,
                               u"End or leave the meeting."_s};
        return QList<CatalogEntry>{
            CatalogEntry::make(
                u"caffeinate"_s,
                {u"The caffeinate tool is keeping your Mac awake"_s,
                 u"Someone (or a script) ran the `caffeinate` command in Terminal. It’s a built-in macOS tool that holds a sleep assertion for a fixed time."_s,
                 u"Find the Terminal window that ran it and quit that session, or wait for its timer to fire (often a fixed number of seconds)."_s}),
            CatalogEntry::make(
                u"coreaudiod"_s,
                {u"An audio device or routing session is active"_s,
                 u"Core Audio is macOS’s sound engine. It holds a sleep assertion any time an audio device or virtual routing layer is in use—that includes apps playing audio (Music, Spotify, video calls) AND routing tools like Rogue Amoeba’s ARK/Loopback/SoundSource, BlackHole, Audio Hijack, and similar virtual interfaces. The “Created for PID” line below identifies the actual app responsible."_s,
                 u"Check the “Created for” process. If it’s an audio routing tool you intentionally have running, this is expected; otherwise quit or pause the responsible app."_s}),
            CatalogEntry::make(
                u"backupd"_s,
                {u"Time Machine is running a backup"_s,
                 u"`backupd` is Time Machine’s backup daemon. A backup is in progress, being prepared, or being verified."_s,
                 u"Let it finish. You can check progress in System Settings → General → Time Machine."_s}),
            CatalogEntry::make(u"backupd-helper"_s,
                               {u"Time Machine helper is mid-backup"_s,
                                u"A helper process Time Machine spins up while a backup is running."_s,
                                u"Goes away on its own when the backup finishes."_s}),
            CatalogEntry::make(
                u"mds"_s,
                {u"Spotlight is indexing"_s,
                 u"`mds` is the Spotlight metadata server. It’s indexing files so search results stay fresh."_s,
                 u"Usually finishes on its own. If it never finishes, a corrupt index can be rebuilt with `sudo mdutil -E /` in Terminal."_s}),
            CatalogEntry::make(
                u"mdworker"_s,
                {u"Spotlight is processing a file"_s,
                 u"An `mdworker` is a short-lived helper that extracts metadata from one specific file for Spotlight."_s,
                 u"Should disappear within a few seconds."_s}),
            CatalogEntry::make(u"mds_stores"_s, {u"Spotlight is writing its index"_s,
                                                 u"`mds_stores` flushes Spotlight metadata to disk."_s,
                                                 u"Finishes on its own."_s}),
            CatalogEntry::make(
                u"smbd"_s,
                {u"Someone is accessing files over SMB"_s,
                 u"`smbd` is macOS’s SMB file-sharing daemon. It holds an assertion while there’s an active connection or a recent one is still open."_s,
                 u"If you don’t expect file sharing to be active, disconnect remote users in System Settings → General → Sharing → File Sharing."_s}),
            CatalogEntry::make(
                u"windowserver"_s,
                {u"Recent keyboard or mouse activity"_s,
                 u"`WindowServer` reports user input. A UserIsActive assertion shows up briefly after any keystroke or mouse movement."_s,
                 u"Times out after about 10 minutes of true inactivity."_s}),
            CatalogEntry::make(
                u"powerd"_s,
                {u"macOS power management itself"_s,
                 u"`powerd` is the system’s power-management daemon. It holds short-lived internal assertions while transitioning between sleep states or accounting for external devices."_s,
                 u"Generally nothing to do; these come and go."_s}),
            CatalogEntry::make(
                u"softwareupdated"_s,
                {u"macOS Software Update is busy"_s,
                 u"`softwareupdated` is checking for, downloading, or installing a system update."_s,
                 u"Check System Settings → General → Software Update for current state."_s}),
            CatalogEntry::make(
                u"mobileassetd"_s,
                {u"macOS is downloading a system asset"_s,
                 u"`mobileassetd` fetches things like dictionary updates, Siri voices, and other on-demand system resources."_s,
                 u"Finishes on its own."_s}),
            CatalogEntry::make(
                u"apsd"_s,
                {u"Apple Push Notification Service activity"_s,
                 u"`apsd` connects to Apple’s push-notification servers. It briefly defers sleep while delivering an incoming push."_s,
                 u"Brief; ignore unless it’s persistent."_s}),
            CatalogEntry::make(
                u"bluetoothd"_s,
                {u"A Bluetooth device is active"_s,
                 u"`bluetoothd` handles Bluetooth connections. A connected keyboard, mouse, trackpad, or AirPods can keep this assertion live."_s,
                 u"System Settings → Bluetooth lists what’s connected."_s}),
            CatalogEntry::make(
                u"hidd"_s,
                {u"HID (keyboard/mouse) activity"_s,
                 u"`hidd` is the Human Interface Device daemon. It reports recent input from any connected keyboard or mouse."_s,
                 u"Goes quiet after a few minutes of true inactivity."_s}),
            CatalogEntry::make(
                u"locationd"_s,
                {u"Location Services is active"_s,
                 u"`locationd` is macOS’s Location Services daemon — an app or system feature is using your location."_s,
                 u"System Settings → Privacy & Security → Location Services lists what’s using it."_s}),
            CatalogEntry::make(
                u"assertiond"_s,
                {u"An app is asserting activity (RunningBoard)"_s,
                 u"`assertiond` (now part of RunningBoard) brokers many app-level assertions on modern macOS. The pmset listing should also name the underlying app."_s,
                 u"Look for a related per-app assertion further down the list."_s}),
            CatalogEntry::make(
                u"runningboardd"_s,
                {u"RunningBoard activity broker"_s,
                 u"`runningboardd` is the system service that mediates app activity and sleep assertions for many modern macOS processes."_s,
                 u"Look for the related per-app assertion that triggered this."_s}),
            CatalogEntry::make(
                u"nsurlsessiond"_s,
                {u"Background download or upload"_s,
                 u"`nsurlsessiond` runs background URL transfers on behalf of apps — Photos uploading, App Store downloads, CloudKit sync, etc."_s,
                 u"Usually fine to let finish."_s}),
            CatalogEntry::make(
                u"screensharingd"_s,
                {u"Someone is screen-sharing in"_s,
                 u"`screensharingd` is the Screen Sharing / VNC server. An active client connection is keeping the Mac awake."_s,
                 u"Disconnect any active sessions in System Settings → General → Sharing → Screen Sharing."_s}),
            CatalogEntry::make(
                u"ardagent"_s,
                {u"Apple Remote Desktop activity"_s,
                 u"`ARDAgent` is the Apple Remote Desktop / kickstart agent. It’s running because a remote admin connected or scheduled a task."_s,
                 u"Check System Settings → General → Sharing → Remote Management."_s}),
            CatalogEntry::make(
                u"distnoted"_s,
                {u"Distributed notification daemon"_s,
                 u"`distnoted` routes Darwin notifications between processes. Brief assertions are normal."_s,
                 u"Nothing to do unless it’s persistent."_s}),
            CatalogEntry::make(
                u"spotify"_s,
                {u"Spotify is playing or holding a session"_s,
                 u"Spotify keeps a display- or system-sleep assertion alive whenever audio is playing or queued."_s,
                 u"Pause playback or quit Spotify."_s}),
            CatalogEntry::make(u"music"_s, {u"Apple Music is playing"_s,
                                            u"Music.app holds a sleep assertion while audio is playing."_s,
                                            u"Pause or quit Music."_s}),
            CatalogEntry::make(u"iTunes"_s, {u"iTunes is playing"_s,
                                             u"iTunes holds a sleep assertion while audio is playing."_s,
                                             u"Pause or quit iTunes."_s}),
            CatalogEntry::make(
                u"vlc"_s,
                {u"VLC is playing media"_s,
                 u"VLC holds a display-sleep assertion while video is playing so the screen doesn’t turn off."_s,
                 u"Pause or quit VLC."_s}),
            CatalogEntry::make(u"quicktime player"_s,
                               {u"QuickTime Player is playing media"_s,
                                u"QuickTime Player holds a display-sleep assertion while video is playing."_s,
                                u"Pause or quit QuickTime Player."_s}),
            CatalogEntry::make(u"iina"_s, {u"IINA is playing media"_s,
                                           u"IINA holds a display-sleep assertion while video is playing."_s,
                                           u"Pause or quit IINA."_s}),
            CatalogEntry::make(u"zoom"_s, zoom),
            CatalogEntry::make(u"zoom.us"_s, zoom),
            CatalogEntry::make(u"discord"_s,
                               {u"Discord voice/video call is active"_s,
                                u"Discord holds a sleep assertion during an active voice or video call."_s,
                                u"Leave the call or quit Discord."_s}),
            CatalogEntry::make(u"facetime"_s, {u"FaceTime call is active"_s,
                                               u"FaceTime holds a sleep assertion during an active call."_s,
                                               u"End the call."_s}),
            CatalogEntry::make(u"obs"_s,
                               {u"OBS is capturing or streaming"_s,
                                u"OBS Studio holds a sleep assertion while it’s recording or streaming."_s,
                                u"Stop the recording or stream."_s}),
            CatalogEntry::make(
                u"channels-dvr"_s,
                {u"Channels DVR is serving or recording"_s,
                 u"Channels DVR holds an assertion while a client is streaming or a recording is in progress."_s,
                 u"Wait for the recording to finish, or stop the client stream."_s}),
        };
    }();
    return table;
}

} // namespace lullwick
