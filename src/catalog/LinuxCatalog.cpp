#include "catalog/CatalogEntry.h"

using namespace Qt::StringLiterals;

namespace lullwick {

// Keys are the names the kernel gives processes; it keeps 15 characters of a name, which the
// lookup allows for, so keys are written whole. Where two keys share their first 15
// characters, the one listed first answers for the cut name.
const QList<CatalogEntry> &linuxCatalog()
{
    static const QList<CatalogEntry> table = [] {
        using E = CatalogEntry;
        const ProcessInfo gnomeSession{
            u"An application asked the desktop session to stay awake"_s,
            u"`gnome-session` turns the requests of applications (a video player, a browser playing media, a "
            u"download) into one systemd-logind lock named “user session inhibited”. It holds the lock on "
            u"their behalf; the application that asked has its own row, held by the session manager and "
            u"created for that application."_s,
            u"Find the application’s own row and pause, finish or quit what it’s doing; the session lets go "
            u"of "
            u"its lock by itself."_s};
        const ProcessInfo unattendedShutdown{
            u"Unattended upgrades will finish before shutdown"_s,
            u"`unattended-upgrade-shutdown` holds a delay lock on shutdown so that an automatic security "
            u"update in progress can finish before the computer powers off. It doesn’t affect sleep."_s,
            u"Nothing to do; a shutdown waits a few seconds for it at most."_s};
        const ProcessInfo portal{
            u"An app is asking through the desktop portal"_s,
            u"`xdg-desktop-portal` passes sandboxed apps’ (Flatpak, Snap) requests to stay awake on to the "
            u"desktop session, which holds the lock for them."_s,
            u"Look for the app’s own row, usually created for it, and pause or quit it there."_s};
        return QList<CatalogEntry>{
            // The system's own daemons, which take short delay locks or handle keys.
            E::make(
                u"NetworkManager"_s,
                {u"NetworkManager will disconnect before suspend"_s,
                 u"NetworkManager holds a delay lock so it can take the network down cleanly when the "
                 u"computer suspends. A delay lock only postpones suspend by a moment; it blocks nothing."_s,
                 u"Nothing to do: this lock is always there while NetworkManager runs."_s}),
            E::make(u"ModemManager"_s,
                    {u"ModemManager will reset mobile modems before suspend"_s,
                     u"ModemManager looks after mobile-broadband modems. Its delay lock gives it a moment to "
                     u"put them to rest before suspend; it blocks nothing."_s,
                     u"Nothing to do; it is harmless."_s}),
            E::make(u"upowerd"_s, {u"UPower pauses battery polling before suspend"_s,
                                   u"UPower reports the battery and power supply to the desktop. It holds a "
                                   u"delay lock so it can "
                                   u"stop polling devices before suspend; it blocks nothing."_s,
                                   u"Nothing to do: this lock is always there while UPower runs."_s}),
            E::make(
                u"systemd-inhibit"_s,
                {u"A command is holding a sleep lock through systemd-inhibit"_s,
                 u"`systemd-inhibit` runs one command and holds a systemd-logind lock for as long as that "
                 u"command runs. The “Created for” line names the command it runs; the lock goes away when "
                 u"the command ends."_s,
                 u"Let the command finish, or stop it (Ctrl+C in the terminal that runs it)."_s}),
            E::make(
                u"rsync"_s,
                {u"rsync is copying files"_s,
                 u"`rsync` copies or backs up files, often from a script or a scheduled job that keeps the "
                 u"computer awake until the copy is done."_s,
                 u"Let the copy finish, or stop it where it was started."_s}),
            // GNOME, and the GNOME-based desktops that run its daemons (Budgie, Unity). The login
            // screen runs its own copies of the shell and these daemons as the gdm user.
            E::make(
                u"gnome-shell"_s,
                {u"GNOME Shell will lock the screen before suspend"_s,
                 u"GNOME Shell is the desktop itself. It holds a delay lock so it can lock the screen before "
                 u"the computer suspends, and while playing a video full-screen it may keep the screen "
                 u"on. The login screen runs a copy of it too."_s,
                 u"Nothing to do; the delay lock blocks nothing."_s}),
            E::make(
                u"gsd-power"_s,
                {u"GNOME’s power daemon is handling the lid or suspend"_s,
                 u"`gsd-power` puts GNOME’s power settings into effect: screen blanking, automatic suspend, "
                 u"what the lid does. It takes the lid switch over while an external monitor is attached "
                 u"and holds a delay lock around suspend. The login screen runs a copy of it too."_s,
                 u"Nothing to do; change what it does under Power in GNOME’s Settings."_s}),
            E::make(
                u"gsd-media-keys"_s,
                {u"GNOME handles the power and suspend keys itself"_s,
                 u"`gsd-media-keys` takes the power, suspend and hibernate keys over from systemd-logind so "
                 u"GNOME can ask what to do. That blocks no sleep."_s,
                 u"Nothing to do; change what the power button does under Power in GNOME’s Settings."_s}),
            E::make(
                u"gsd-screensaver-proxy"_s,
                {u"An application asked GNOME to keep the screen on"_s,
                 u"`gsd-screensaver-proxy` takes older applications’ requests to stop the screensaver and "
                 u"passes them on to the desktop session."_s,
                 u"Look for the application’s own row and pause or quit it."_s}),
            E::make(u"gnome-session-service"_s, gnomeSession),
            E::make(u"gnome-session-binary"_s, gnomeSession),
            E::make(
                u"gdm-session-worker"_s,
                {u"The login screen is running"_s,
                 u"`gdm-session-worker` runs GNOME’s login screen, which holds the same locks as a desktop "
                 u"session: its own copies of GNOME Shell and its power daemons."_s,
                 u"Nothing to do; its locks go away when you log in or the screen turns off."_s}),
            // The login screens of other desktops.
            E::make(u"lightdm-gtk-greeter"_s, {u"The login screen is running"_s,
                                               u"`lightdm-gtk-greeter` is the login screen of Xfce and many "
                                               u"other desktops. It may keep the "
                                               u"screen on while it is shown."_s,
                                               u"Nothing to do; it goes away when you log in."_s}),
            E::make(
                u"slick-greeter"_s,
                {u"The login screen is running"_s,
                 u"`slick-greeter` is the login screen of Cinnamon and MATE on many systems. It may keep the "
                 u"screen on while it is shown."_s,
                 u"Nothing to do; it goes away when you log in."_s}),
            // KDE Plasma.
            E::make(
                u"org_kde_powerdevil"_s,
                {u"KDE’s power management is handling the power keys"_s,
                 u"PowerDevil puts Plasma’s energy-saving settings into effect. It takes the power, suspend "
                 u"and lid keys over so Plasma can decide what they do, which blocks no sleep, and it "
                 u"keeps the screen on for applications that ask it to."_s,
                 u"Change what the keys and the lid do under Power Management in Plasma’s settings."_s}),
            E::make(
                u"plasmashell"_s,
                {u"The Plasma desktop is keeping the computer awake"_s,
                 u"`plasmashell` draws the Plasma desktop and panels. A widget or the media controls may ask "
                 u"PowerDevil to keep the screen on, for instance while a presentation runs."_s,
                 u"Open the battery and brightness widget in the panel; it lists what is keeping the "
                 u"computer awake and can stop it."_s}),
            E::make(
                u"ksmserver"_s,
                {u"Plasma will lock the screen before suspend"_s,
                 u"`ksmserver` is Plasma’s session manager. Its delay lock makes sure the screen is locked "
                 u"before the computer sleeps; it blocks nothing."_s,
                 u"Nothing to do."_s}),
            E::make(
                u"sddm-greeter"_s,
                {u"The Plasma login screen is running"_s,
                 u"`sddm-greeter` is the login screen that Plasma uses. It may keep the screen on while it "
                 u"is shown."_s,
                 u"Nothing to do; it goes away when you log in."_s}),
            // Cinnamon, MATE and Xfce.
            E::make(
                u"csd-power"_s,
                {u"Cinnamon’s power daemon is handling the lid or suspend"_s,
                 u"`csd-power` puts Cinnamon’s power settings into effect and may take the lid switch over "
                 u"or hold a delay lock around suspend. It blocks no sleep by itself."_s,
                 u"Change it under Power Management in Cinnamon’s settings."_s}),
            E::make(
                u"csd-media-keys"_s,
                {u"Cinnamon handles the power and suspend keys itself"_s,
                 u"`csd-media-keys` takes the power and suspend keys over so Cinnamon can ask what to do. "
                 u"That blocks no sleep."_s,
                 u"Nothing to do."_s}),
            E::make(
                u"cinnamon-session"_s,
                {u"An application asked the Cinnamon session to stay awake"_s,
                 u"`cinnamon-session` holds a systemd-logind lock on behalf of applications that asked the "
                 u"session to keep the computer awake."_s,
                 u"Find the application’s own row and pause or quit it."_s}),
            E::make(u"cinnamon-screensaver"_s,
                    {u"Cinnamon will lock the screen before suspend"_s,
                     u"`cinnamon-screensaver` locks the screen; its delay lock gives it time to do so before "
                     u"suspend."_s,
                     u"Nothing to do."_s}),
            E::make(
                u"mate-power-manager"_s,
                {u"MATE’s power manager is handling the lid or suspend"_s,
                 u"`mate-power-manager` puts MATE’s power settings into effect: screen blanking, automatic "
                 u"suspend and what the lid and power keys do."_s,
                 u"Change it under Power Management in MATE’s Control Center."_s}),
            E::make(u"mate-session"_s,
                    {u"An application asked the MATE session to stay awake"_s,
                     u"`mate-session` holds a systemd-logind lock on behalf of applications that asked the "
                     u"session to keep the computer awake."_s,
                     u"Find the application’s own row and pause or quit it."_s}),
            E::make(u"mate-screensaver"_s,
                    {u"MATE will lock the screen before suspend"_s,
                     u"`mate-screensaver` locks the screen; its delay lock gives it time to do so before "
                     u"suspend."_s,
                     u"Nothing to do."_s}),
            E::make(u"xfce4-power-manager"_s,
                    {u"Xfce’s power manager is handling the lid or suspend"_s,
                     u"`xfce4-power-manager` puts Xfce’s power settings into effect, takes the power and lid "
                     u"keys over, and keeps the computer awake for applications that ask it to (its "
                     u"“Presentation mode” does the same)."_s,
                     u"Check Presentation mode in the power manager’s panel icon; change the rest in its "
                     u"settings."_s}),
            E::make(u"xfce4-session"_s,
                    {u"An application asked the Xfce session to stay awake"_s,
                     u"`xfce4-session` holds a systemd-logind lock on behalf of applications that asked the "
                     u"session to keep the computer awake."_s,
                     u"Find the application’s own row and pause or quit it."_s}),
            E::make(u"xfce4-screensaver"_s,
                    {u"Xfce will lock the screen before suspend"_s,
                     u"`xfce4-screensaver` locks the screen; its delay lock gives it time to do so before "
                     u"suspend."_s,
                     u"Nothing to do."_s}),
            E::make(u"budgie-daemon"_s,
                    {u"The Budgie desktop is handling the power keys"_s,
                     u"`budgie-daemon` runs parts of the Budgie desktop; GNOME’s daemons (`gsd-power`, "
                     u"`gsd-media-keys`) do the power handling beside it."_s,
                     u"Nothing to do."_s}),
            E::make(
                u"unity-settings-daemon"_s,
                {u"Unity’s settings daemon is handling the lid or the power keys"_s,
                 u"`unity-settings-daemon` puts Unity’s power settings into effect and takes the power and "
                 u"lid keys over. That blocks no sleep."_s,
                 u"Nothing to do."_s}),
            E::make(u"xdg-desktop-portal"_s, portal),
            // Updates.
            E::make(u"unattended-upgrade-shutdown"_s, unattendedShutdown),
            E::make(u"unattended-upgrade"_s,
                    {u"Automatic security updates are installing"_s,
                     u"`unattended-upgrade` installs security updates in the background. Interrupting it can "
                     u"leave packages half-installed, so it holds off shutdown while it works."_s,
                     u"Let it finish; it usually takes a few minutes."_s}),
            E::make(u"packagekitd"_s,
                    {u"Software is being installed or updated"_s,
                     u"PackageKit installs and updates packages for GNOME Software, Discover and other "
                     u"updaters, and keeps the computer from sleeping or shutting down mid-install."_s,
                     u"Let the installation finish in your software updater."_s}),
            E::make(u"gnome-software"_s,
                    {u"GNOME Software is downloading or installing updates"_s,
                     u"GNOME Software downloads updates and apps in the background and may keep the computer "
                     u"awake while it does."_s,
                     u"Let it finish, or pause the download in GNOME Software."_s}),
            E::make(
                u"plasma-discover"_s,
                {u"Discover is downloading or installing updates"_s,
                 u"Discover is Plasma’s software center; it keeps the computer awake while it installs."_s,
                 u"Let it finish, or cancel the update in Discover."_s}),
            E::make(
                u"fwupd"_s,
                {u"A firmware update is being written"_s,
                 u"`fwupd` updates the firmware of the computer and its devices. Interrupting it can leave a "
                 u"device unusable, so it keeps the computer up while it writes."_s,
                 u"Let it finish; don’t turn the computer off."_s}),
            // Virtual machines.
            E::make(
                u"libvirtd"_s,
                {u"Virtual machines will be saved or shut down first"_s,
                 u"`libvirtd` manages virtual machines. It holds a lock while machines run so that they can "
                 u"be saved or shut down before the host goes down."_s,
                 u"Shut down or save the running virtual machines (virt-manager or `virsh list`) if you "
                 u"want the computer to sleep."_s}),
            E::make(u"virtualboxvm"_s,
                    {u"A VirtualBox machine is running"_s,
                     u"A running VirtualBox machine keeps the screen on while its window is in use."_s,
                     u"Pause or shut down the virtual machine."_s}),
            E::make(u"gnome-boxes"_s,
                    {u"A virtual machine is running in Boxes"_s,
                     u"GNOME Boxes keeps the computer awake while a virtual machine runs."_s,
                     u"Pause or shut down the virtual machine in Boxes."_s}),
            // Sound.
            E::make(u"pipewire"_s,
                    {u"An audio or video stream is active"_s,
                     u"PipeWire carries sound and screen-sharing streams between applications and devices. "
                     u"The application that plays or records is the one that wants the computer awake."_s,
                     u"Pause or quit the application that is playing or recording."_s}),
            E::make(u"pulseaudio"_s,
                    {u"An audio stream is active"_s,
                     u"PulseAudio is the sound server of many desktops; the application playing sound is the "
                     u"one that wants the computer awake."_s,
                     u"Pause or quit the application that is playing."_s}),
            // Applications.
            E::make(u"firefox"_s,
                    {u"Firefox is playing media"_s,
                     u"Firefox keeps the screen on while a tab plays a video or holds a call."_s,
                     u"Pause the video or end the call; the tab with the speaker icon is the one."_s}),
            E::make(u"chromium"_s,
                    {u"Chromium is playing media"_s,
                     u"Chromium keeps the screen on while a tab plays a video or holds a call."_s,
                     u"Pause the video or end the call in that tab."_s}),
            E::make(u"chrome"_s, {u"Google Chrome is playing media"_s,
                                  u"Chrome keeps the screen on while a tab plays a video or holds a call."_s,
                                  u"Pause the video or end the call in that tab."_s}),
            E::make(u"vlc"_s,
                    {u"VLC is playing media"_s,
                     u"VLC keeps the screen on while a video is playing so the screen doesn’t turn off."_s,
                     u"Pause or quit VLC."_s}),
            E::make(u"mpv"_s,
                    {u"mpv is playing media"_s, u"mpv keeps the screen on while a video is playing."_s,
                     u"Pause or quit mpv."_s}),
            E::make(u"totem"_s, {u"Videos (Totem) is playing media"_s,
                                 u"GNOME’s video player keeps the screen on while a video is playing."_s,
                                 u"Pause or quit Videos."_s}),
            E::make(u"celluloid"_s, {u"Celluloid is playing media"_s,
                                     u"Celluloid keeps the screen on while a video is playing."_s,
                                     u"Pause or quit Celluloid."_s}),
            E::make(u"kodi"_s, {u"Kodi is playing media"_s, u"Kodi keeps the screen on while it plays."_s,
                                u"Stop playback or quit Kodi."_s}),
            E::make(u"spotify"_s, {u"Spotify is playing or holding a session"_s,
                                   u"Spotify asks the desktop to stay awake while audio is playing."_s,
                                   u"Pause playback or quit Spotify."_s}),
            E::make(u"rhythmbox"_s, {u"Rhythmbox is playing"_s,
                                     u"Rhythmbox keeps the computer awake while music is playing."_s,
                                     u"Pause or quit Rhythmbox."_s}),
            E::make(u"zoom"_s, {u"Zoom call is active"_s, u"Zoom keeps the screen on during a meeting."_s,
                                u"End or leave the meeting."_s}),
            E::make(u"teams-for-linux"_s,
                    {u"Teams call is active"_s, u"Teams keeps the screen on during a call or meeting."_s,
                     u"End or leave the call."_s}),
            E::make(u"discord"_s, {u"Discord voice/video call is active"_s,
                                   u"Discord keeps the computer awake during a voice or video call."_s,
                                   u"Leave the call or quit Discord."_s}),
            E::make(u"steam"_s,
                    {u"Steam is downloading or a game is running"_s,
                     u"Steam keeps the computer awake while it downloads or while a game runs."_s,
                     u"Let the download finish, pause it in Steam’s downloads, or quit the game."_s}),
            E::make(u"obs"_s, {u"OBS is capturing or streaming"_s,
                               u"OBS Studio keeps the computer awake while it’s recording or streaming."_s,
                               u"Stop the recording or stream."_s}),
        };
    }();
    return table;
}

} // namespace lullwick
