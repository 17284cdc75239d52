#include "catalog/CatalogEntry.h"

#include <string_view>

namespace lullwick {

namespace {

/// One entry as written below: its keys (several when programs share the texts, separated by
/// "|"), its three texts, and whether it holds locks for other programs.
struct Row {
    std::u16string_view keys, headline, explanation, callToAction;
    bool proxy = false;
};

constexpr bool proxy = true;

// Keys are the names the kernel gives processes, in lower case; it keeps 15 characters of a
// name, which the lookup allows for, so keys are written whole. Where two keys share their first
// 15 characters, the one listed first answers for the cut name. Program names in the texts are
// plain: the window shows them as they are, and so do the copies.
constexpr Row rows[] = {
    // Locks held for someone else
    {u"systemd-inhibit", u"A command is holding a sleep lock through systemd-inhibit",
     u"systemd-inhibit runs one command and holds a systemd-logind lock for as long as that command runs. "
     u"The “Created for” line names the command it runs; the lock goes away when the command ends.",
     u"Let the command finish, or stop it (Ctrl+C in the terminal that runs it).", proxy},
    {u"gnome-session-inhibit", u"A command is holding a lock through the GNOME session",
     u"gnome-session-inhibit runs one command and asks the GNOME session to stay awake for as long as it "
     u"runs; the session holds the lock for it.",
     u"Let the command finish, or stop it in the terminal that runs it.", proxy},
    {u"mate-session-inhibit", u"A command is holding a lock through the MATE session",
     u"mate-session-inhibit runs one command and asks the MATE session to stay awake for as long as it runs; "
     u"the session holds the lock for it.",
     u"Let the command finish, or stop it in the terminal that runs it.", proxy},
    {u"gnome-session-binary|gnome-session-service|gnome-session",
     u"An application asked the desktop session to stay awake",
     u"The GNOME session manager holds locks for applications that ask it to (a video player, a browser "
     u"playing media, a download). Each request is listed as a row of its own, created for the application "
     u"when it said who it is, and the session turns them together into one systemd-logind lock named “user "
     u"session inhibited”.",
     u"Pause, finish or quit what the application is doing; the session lets go of the lock by itself.",
     proxy},
    {u"gsd-screensaver-proxy", u"An application asked GNOME to keep the screen on",
     u"gsd-screensaver-proxy takes older applications’ requests to stop the screensaver and passes them on "
     u"to the desktop session, which holds the lock for them.",
     u"Look for the application’s own row and pause or quit it.", proxy},
    {u"xdg-desktop-portal|xdg-desktop-portal-gnome|xdg-desktop-portal-kde|xdg-desktop-portal-gtk|xdg-desktop-"
     u"portal-wlr|xdg-desktop-portal-hyprland|xdg-desktop-portal-lxqt",
     u"An app is asking through the desktop portal",
     u"The desktop portal passes sandboxed apps’ (Flatpak, Snap) requests to stay awake on to the desktop "
     u"session, which holds the lock for them.",
     u"Pause or quit the app that asked; its name is quoted above.", proxy},
    {u"cinnamon-session", u"An application asked the Cinnamon session to stay awake",
     u"cinnamon-session holds a systemd-logind lock on behalf of applications that asked the session to keep "
     u"the computer awake.",
     u"Pause or quit what the application is doing; the session lets go by itself.", proxy},
    {u"csd-screensaver-proxy", u"An application asked Cinnamon to keep the screen on",
     u"csd-screensaver-proxy takes older applications’ requests to stop the screensaver and passes them on "
     u"to the Cinnamon session.",
     u"Look for the application’s own row and pause or quit it.", proxy},
    {u"mate-session", u"An application asked the MATE session to stay awake",
     u"mate-session holds a systemd-logind lock on behalf of applications that asked the session to keep the "
     u"computer awake.",
     u"Pause or quit what the application is doing; the session lets go by itself.", proxy},
    {u"xfce4-session", u"An application asked the Xfce session to stay awake",
     u"xfce4-session holds a systemd-logind lock on behalf of applications that asked the session to keep "
     u"the computer awake.",
     u"Pause or quit what the application is doing; the session lets go by itself.", proxy},
    {u"lxqt-session", u"An application asked the LXQt session to stay awake",
     u"lxqt-session holds locks on behalf of applications that asked the session to keep the computer awake.",
     u"Pause or quit what the application is doing; the session lets go by itself.", proxy},
    {u"org_kde_powerdevil", u"KDE’s power management is handling the power keys",
     u"PowerDevil puts Plasma’s energy-saving settings into effect. It takes the power, suspend and lid keys "
     u"over so Plasma can decide what they do, which blocks no sleep, and it holds locks for applications "
     u"that ask Plasma to keep the computer or the screen awake (Plasma 5 and 6).",
     u"Open the battery and brightness widget in the panel: it lists the applications keeping the computer "
     u"awake. Change what the keys and the lid do under Power Management in Plasma’s settings.",
     proxy},
    {u"ksmserver", u"Plasma will lock the screen before suspend",
     u"ksmserver is Plasma’s session manager. Its delay lock makes sure the screen is locked before the "
     u"computer sleeps, and it passes applications’ requests to keep the screen on to PowerDevil.",
     u"Nothing to do for its own lock; pause or quit an application it holds one for.", proxy},
    {u"plasmashell", u"The Plasma desktop is keeping the computer awake",
     u"plasmashell draws the Plasma desktop and panels. A widget or the media controls may ask PowerDevil to "
     u"keep the screen on, for instance while a presentation runs.",
     u"Open the battery and brightness widget in the panel; it lists what is keeping the computer awake and "
     u"can stop it.",
     proxy},
    {u"xfce4-power-manager", u"Xfce’s power manager is handling the lid or suspend",
     u"xfce4-power-manager puts Xfce’s power settings into effect, takes the power and lid keys over, and "
     u"keeps the computer awake for applications that ask it to (its “Presentation mode” does the same).",
     u"Check Presentation mode in the power manager’s panel icon; change the rest in its settings.", proxy},
    {u"mate-power-manager", u"MATE’s power manager is handling the lid or suspend",
     u"mate-power-manager puts MATE’s power settings into effect: screen blanking, automatic suspend and "
     u"what the lid and power keys do. It also keeps the computer awake for applications that ask it to.",
     u"Change it under Power Management in MATE’s Control Center.", proxy},
    {u"lxqt-powermanagement", u"LXQt’s power management is handling the lid or suspend",
     u"lxqt-powermanagement puts LXQt’s power settings into effect, handles the lid and power keys, and "
     u"keeps the screen on for applications that ask it to.",
     u"Change it under Power Management in LXQt’s settings.", proxy},
    {u"caffeine|caffeine-ng", u"Caffeine is keeping the computer awake",
     u"Caffeine keeps the computer and screen awake while it is switched on, or while a program it watches "
     u"runs full screen.",
     u"Switch it off from its panel icon.", proxy},
    // The system's own daemons
    {u"networkmanager", u"NetworkManager will disconnect before suspend",
     u"NetworkManager holds a delay lock so it can take the network down cleanly when the computer suspends. "
     u"A delay lock only postpones suspend by a moment; it blocks nothing.",
     u"Nothing to do: this lock is always there while NetworkManager runs."},
    {u"modemmanager", u"ModemManager will reset mobile modems before suspend",
     u"ModemManager looks after mobile-broadband modems. Its delay lock gives it a moment to put them to "
     u"rest before suspend; it blocks nothing.",
     u"Nothing to do; it is harmless."},
    {u"upowerd", u"UPower pauses battery polling before suspend",
     u"UPower reports the battery and power supply to the desktop. It holds a delay lock so it can stop "
     u"polling devices before suspend; it blocks nothing.",
     u"Nothing to do: this lock is always there while UPower runs."},
    {u"rtkit-daemon", u"RealtimeKit will take back realtime priority before suspend",
     u"rtkit-daemon gives sound and video programs (PipeWire, PulseAudio, JACK) the realtime priority they "
     u"ask for. A lock it holds only gives it a moment around suspend; it blocks nothing.",
     u"Nothing to do."},
    {u"udisksd", u"A disk is being formatted, checked or ejected",
     u"udisksd does the disk work of the desktop’s file manager and Disks: formatting, checking, unmounting "
     u"and powering off drives. It keeps the computer up until such a job is done.",
     u"Let the job finish; Disks or the file manager shows it."},
    {u"bluetoothd", u"Bluetooth will settle its devices before suspend",
     u"bluetoothd runs the Bluetooth connections. A delay lock gives it a moment to put devices to rest "
     u"before suspend; it blocks nothing.",
     u"Nothing to do."},
    {u"systemd-logind", u"systemd-logind itself",
     u"systemd-logind keeps track of sessions and takes the locks of every other program; it holds none of "
     u"its own for long.",
     u"Nothing to do."},
    {u"pipewire", u"An audio or video stream is active",
     u"PipeWire carries sound and screen-sharing streams between applications and devices. The application "
     u"that plays or records is the one that wants the computer awake.",
     u"Pause or quit the application that is playing or recording."},
    {u"pulseaudio", u"An audio stream is active",
     u"PulseAudio is the sound server of many desktops; the application playing sound is the one that wants "
     u"the computer awake.",
     u"Pause or quit the application that is playing."},
    {u"wireplumber", u"WirePlumber is managing a sound device",
     u"WirePlumber decides which devices PipeWire’s streams go to. The application that plays or records is "
     u"the one that wants the computer awake.",
     u"Pause or quit the application that is playing or recording."},
    {u"gnome-remote-desktop-daemon|gnome-remote-desktop", u"Someone is connected to this desktop remotely",
     u"GNOME Remote Desktop shares the screen over RDP or VNC and keeps the computer awake while a client is "
     u"connected.",
     u"Disconnect the session, or turn Remote Desktop off under Sharing in GNOME’s Settings."},
    {u"x11vnc|vino-server|krfb|xrdp", u"Someone is sharing this screen remotely",
     u"A screen-sharing server keeps the computer awake while a remote client is connected.",
     u"Disconnect the remote session, or stop the sharing server."},
    {u"cupsd", u"A print job is being sent",
     u"CUPS prints for every application; a job on its way to the printer keeps the computer up until it is "
     u"sent.",
     u"Let the print job finish, or cancel it in the printer’s queue."},
    // GNOME
    {u"gnome-shell", u"GNOME Shell will lock the screen before suspend",
     u"GNOME Shell is the desktop itself. It holds a delay lock so it can lock the screen before the "
     u"computer suspends, and while playing a video full-screen it may keep the screen on. The login screen "
     u"runs a copy of it too.",
     u"Nothing to do; the delay lock blocks nothing."},
    {u"gnome-settings-daemon", u"GNOME’s settings daemon is handling the lid or suspend",
     u"gnome-settings-daemon puts GNOME 3’s settings into effect in one process: screen blanking, automatic "
     u"suspend, the lid and the power keys. Before GNOME split it into its gsd- daemons, this one took the "
     u"keys over and held a delay lock around suspend.",
     u"Nothing to do; change what it does under Power in GNOME’s Settings."},
    {u"gsd-power", u"GNOME’s power daemon is handling the lid or suspend",
     u"gsd-power puts GNOME’s power settings into effect: screen blanking, automatic suspend, what the lid "
     u"does. It takes the lid switch over while an external monitor is attached and holds a delay lock "
     u"around suspend. The login screen runs a copy of it too.",
     u"Nothing to do; change what it does under Power in GNOME’s Settings."},
    {u"gsd-media-keys", u"GNOME handles the power and suspend keys itself",
     u"gsd-media-keys takes the power, suspend and hibernate keys over from systemd-logind so GNOME can ask "
     u"what to do. That blocks no sleep.",
     u"Nothing to do; change what the power button does under Power in GNOME’s Settings."},
    {u"gdm-session-worker|gdm-wayland-session|gdm-x-session", u"The login screen is running",
     u"GDM runs GNOME’s login screen, which holds the same locks as a desktop session: its own copies of "
     u"GNOME Shell and its power daemons.",
     u"Nothing to do; its locks go away when you log in or the screen turns off."},
    {u"gnome-software", u"GNOME Software is downloading or installing updates",
     u"GNOME Software downloads updates and apps in the background and may keep the computer awake while it "
     u"does.",
     u"Let it finish, or pause the download in GNOME Software."},
    {u"gnome-disks", u"Disks is formatting or restoring a drive",
     u"GNOME Disks keeps the computer awake while it formats a drive, writes a disk image or runs a "
     u"benchmark; stopping halfway would spoil the drive’s contents.",
     u"Let the job finish in Disks."},
    {u"nautilus", u"Files is copying or moving files",
     u"Files (Nautilus) keeps the computer awake while a copy, move or delete is in progress.",
     u"Let the operation finish; the progress button in the window shows it, and can cancel it."},
    {u"gnome-control-center", u"GNOME’s Settings is applying a change",
     u"GNOME’s Settings holds a short lock while it applies some changes, such as a firmware or display "
     u"setting.",
     u"Let it finish, or close Settings."},
    {u"budgie-control-center", u"Budgie’s Settings is applying a change",
     u"Budgie’s Settings holds a short lock while it applies some changes, such as a firmware or display "
     u"setting.",
     u"Let it finish, or close Settings."},
    {u"gnome-boxes", u"A virtual machine is running in Boxes",
     u"GNOME Boxes keeps the computer awake while a virtual machine runs.",
     u"Pause or shut down the virtual machine in Boxes."},
    {u"gnome-calls", u"A phone call is in progress",
     u"Calls keeps the computer and screen awake during a call.", u"End the call."},
    {u"gnome-builder", u"Builder is building or running a project",
     u"GNOME Builder keeps the computer awake while a build or a test run is in progress.",
     u"Let the build finish, or stop it in Builder."},
    {u"shotwell", u"Shotwell is importing photos",
     u"Shotwell keeps the computer awake while it imports or exports photos.",
     u"Let the import finish, or cancel it in Shotwell."},
    {u"brasero", u"Brasero is burning a disc",
     u"Brasero keeps the computer awake while it writes a disc; stopping halfway spoils the disc.",
     u"Let the burn finish."},
    {u"epiphany|epiphany-browser", u"Web (Epiphany) is playing media",
     u"GNOME Web keeps the screen on while a tab plays a video or holds a call.",
     u"Pause the video or end the call in that tab."},
    {u"totem", u"Videos (Totem) is playing media",
     u"GNOME’s video player keeps the screen on while a video is playing.", u"Pause or quit Videos."},
    {u"rhythmbox", u"Rhythmbox is playing", u"Rhythmbox keeps the computer awake while music is playing.",
     u"Pause or quit Rhythmbox."},
    {u"gnome-music", u"Music is playing", u"GNOME Music keeps the computer awake while music is playing.",
     u"Pause or quit Music."},
    {u"gnome-podcasts", u"Podcasts is playing an episode",
     u"GNOME Podcasts keeps the computer awake while an episode plays.", u"Pause or quit Podcasts."},
    {u"celluloid", u"Celluloid is playing media", u"Celluloid keeps the screen on while a video is playing.",
     u"Pause or quit Celluloid."},
    // Cinnamon
    {u"cinnamon-settings-daemon", u"Cinnamon’s settings daemon is handling the lid or suspend",
     u"cinnamon-settings-daemon put Cinnamon’s settings into effect in one process before it was split into "
     u"csd- daemons: it took the power and lid keys over and held a delay lock around suspend.",
     u"Change it under Power Management in Cinnamon’s settings."},
    {u"csd-power", u"Cinnamon’s power daemon is handling the lid or suspend",
     u"csd-power puts Cinnamon’s power settings into effect and may take the lid switch over or hold a delay "
     u"lock around suspend. It blocks no sleep by itself.",
     u"Change it under Power Management in Cinnamon’s settings."},
    {u"csd-media-keys", u"Cinnamon handles the power and suspend keys itself",
     u"csd-media-keys takes the power and suspend keys over so Cinnamon can ask what to do. That blocks no "
     u"sleep.",
     u"Nothing to do; change what the keys do under Power Management in Cinnamon’s settings."},
    {u"cinnamon-screensaver", u"Cinnamon will lock the screen before suspend",
     u"cinnamon-screensaver locks the screen; its delay lock gives it time to do so before suspend.",
     u"Nothing to do."},
    {u"cinnamon", u"The Cinnamon desktop is keeping the screen on",
     u"cinnamon draws the Cinnamon desktop and panels; it keeps the screen on while a window is full screen "
     u"or an applet asks it to.",
     u"Leave full screen, or check the panel’s applets."},
    {u"nemo", u"Nemo is copying or moving files",
     u"Cinnamon’s file manager keeps the computer awake while a copy, move or delete is in progress.",
     u"Let the operation finish; its progress window can cancel it."},
    // MATE
    {u"mate-screensaver", u"MATE will lock the screen before suspend",
     u"mate-screensaver locks the screen; its delay lock gives it time to do so before suspend.",
     u"Nothing to do."},
    {u"mate-settings-daemon", u"MATE’s settings daemon is handling the power keys",
     u"mate-settings-daemon puts MATE’s keyboard and media-key settings into effect and may take the power "
     u"and suspend keys over. That blocks no sleep.",
     u"Nothing to do."},
    {u"mate-inhibit-applet", u"The panel’s inhibit switch is keeping the computer awake",
     u"MATE’s inhibit switch in the panel keeps the computer from sleeping while it is on.",
     u"Switch it off from its panel icon."},
    {u"caja", u"Caja is copying or moving files",
     u"MATE’s file manager keeps the computer awake while a copy, move or delete is in progress.",
     u"Let the operation finish; its progress window can cancel it."},
    // Xfce
    {u"xfce4-screensaver", u"Xfce will lock the screen before suspend",
     u"xfce4-screensaver locks the screen; its delay lock gives it time to do so before suspend.",
     u"Nothing to do."},
    {u"light-locker", u"The screen will be locked before suspend",
     u"light-locker locks the screen through LightDM in Xfce and other desktops; its delay lock gives it "
     u"time to do so before suspend.",
     u"Nothing to do."},
    {u"xfsettingsd", u"Xfce’s settings daemon is handling the keys",
     u"xfsettingsd puts Xfce’s settings into effect; it may handle the power keys. That blocks no sleep.",
     u"Nothing to do."},
    {u"thunar", u"Thunar is copying or moving files",
     u"Xfce’s file manager keeps the computer awake while a copy, move or delete is in progress.",
     u"Let the operation finish; its progress window can cancel it."},
    {u"parole", u"Parole is playing media",
     u"Xfce’s media player keeps the screen on while a video is playing.", u"Pause or quit Parole."},
    {u"xfburn", u"Xfburn is burning a disc",
     u"Xfburn keeps the computer awake while it writes a disc; stopping halfway spoils the disc.",
     u"Let the burn finish."},
    {u"xscreensaver-systemd|xscreensaver", u"XScreenSaver will lock the screen before suspend",
     u"xscreensaver-systemd holds a delay lock so XScreenSaver can lock the screen before the computer "
     u"suspends, and passes applications’ requests to keep the screen on to XScreenSaver.",
     u"Nothing to do."},
    // LXQt, LXDE
    {u"lxqt-globalkeysd", u"LXQt handles the power keys itself",
     u"lxqt-globalkeysd runs LXQt’s keyboard shortcuts and may take the power and suspend keys over. That "
     u"blocks no sleep.",
     u"Nothing to do."},
    {u"pcmanfm-qt|pcmanfm", u"The file manager is copying or moving files",
     u"PCManFM keeps the computer awake while a copy, move or delete is in progress.",
     u"Let the operation finish; its progress window can cancel it."},
    {u"lxsession", u"An application asked the LXDE session to stay awake",
     u"lxsession runs the LXDE session and may hold a lock for applications that asked it to.",
     u"Pause or quit what the application is doing."},
    // Budgie
    {u"budgie-daemon", u"The Budgie desktop is handling the power keys",
     u"budgie-daemon runs parts of the Budgie desktop; GNOME’s daemons (gsd-power, gsd-media-keys) do the "
     u"power handling beside it.",
     u"Nothing to do."},
    {u"budgie-screensaver", u"Budgie will lock the screen before suspend",
     u"budgie-screensaver locks the screen in Budgie 10.7 and later; its delay lock gives it time to do so "
     u"before suspend.",
     u"Nothing to do."},
    {u"budgie-wm|budgie-panel", u"The Budgie desktop is keeping the screen on",
     u"The Budgie desktop keeps the screen on while a window is full screen or an applet asks it to.",
     u"Leave full screen, or check the panel’s applets."},
    // Unity
    {u"unity-settings-daemon", u"Unity’s settings daemon is handling the lid or the power keys",
     u"unity-settings-daemon puts Unity’s power settings into effect and takes the power and lid keys over. "
     u"That blocks no sleep.",
     u"Nothing to do."},
    {u"unity-greeter", u"The login screen is running",
     u"unity-greeter is Unity’s login screen. It may keep the screen on while it is shown.",
     u"Nothing to do; it goes away when you log in."},
    {u"unity-panel-service|unity8", u"The Unity desktop is keeping the screen on",
     u"Unity keeps the screen on while a window is full screen or an indicator asks it to.",
     u"Leave full screen, or check the panel’s indicators."},
    // KDE Plasma
    {u"sddm-greeter|sddm-greeter-qt6", u"The Plasma login screen is running",
     u"sddm-greeter is the login screen that Plasma uses. It may keep the screen on while it is shown.",
     u"Nothing to do; it goes away when you log in."},
    {u"kscreenlocker_greet", u"Plasma’s lock screen is showing",
     u"The lock screen of Plasma 5 and 6 is shown; Plasma holds a delay lock so it is in place before the "
     u"computer sleeps.",
     u"Nothing to do."},
    {u"kded5|kded6", u"A Plasma background service is holding a lock",
     u"kded runs Plasma’s small background services (display setup, network and device notifiers); one of "
     u"them asked to keep the computer awake.",
     u"Nothing to do unless it stays; restarting Plasma clears it."},
    {u"kwin_wayland|kwin_x11", u"Plasma’s window manager is keeping the screen on",
     u"KWin keeps the screen on while a window is full screen or an application asks it to.",
     u"Leave full screen, or quit the application."},
    {u"plasma-discover", u"Discover is downloading or installing updates",
     u"Discover is Plasma’s software center; it keeps the computer awake while it installs.",
     u"Let it finish, or cancel the update in Discover."},
    {u"dolphin", u"Dolphin is copying or moving files",
     u"Plasma’s file manager keeps the computer awake while a copy, move or delete is in progress.",
     u"Let the operation finish; the notification shows its progress and can cancel it."},
    {u"kdeconnectd", u"KDE Connect is keeping the computer awake",
     u"KDE Connect links the computer with a phone; it keeps the screen on while the phone is used as a "
     u"remote or a presenter.",
     u"Stop the presentation or the remote control on the phone."},
    {u"okular", u"Okular is showing a presentation", u"Okular keeps the screen on in presentation mode.",
     u"Leave presentation mode (Esc)."},
    {u"k3b", u"K3b is burning a disc",
     u"K3b keeps the computer awake while it writes a disc; stopping halfway spoils the disc.",
     u"Let the burn finish."},
    {u"ktorrent", u"KTorrent is downloading",
     u"KTorrent can keep the computer awake while torrents download.",
     u"Let the downloads finish, or pause them in KTorrent."},
    {u"elisa", u"Elisa is playing", u"Plasma’s music player keeps the computer awake while music is playing.",
     u"Pause or quit Elisa."},
    {u"dragon", u"Dragon Player is playing media",
     u"Dragon Player keeps the screen on while a video is playing.", u"Pause or quit Dragon Player."},
    {u"haruna", u"Haruna is playing media", u"Haruna keeps the screen on while a video is playing.",
     u"Pause or quit Haruna."},
    {u"kdenlive", u"Kdenlive is rendering a video",
     u"Kdenlive keeps the computer awake while it renders a project.",
     u"Let the render finish, or stop it in the render dialog."},
    {u"kaffeine", u"Kaffeine is playing media",
     u"Kaffeine keeps the screen on while a video or TV is playing.", u"Pause or quit Kaffeine."},
    // Login screens
    {u"lightdm-gtk-greeter", u"The login screen is running",
     u"lightdm-gtk-greeter is the login screen of Xfce and many other desktops. It may keep the screen on "
     u"while it is shown.",
     u"Nothing to do; it goes away when you log in."},
    {u"slick-greeter", u"The login screen is running",
     u"slick-greeter is the login screen of Cinnamon and MATE on many systems. It may keep the screen on "
     u"while it is shown.",
     u"Nothing to do; it goes away when you log in."},
    {u"lightdm", u"The login manager is running",
     u"LightDM starts the login screen and the sessions; the greeter it shows may keep the screen on.",
     u"Nothing to do; it goes away when you log in."},
    // Updates and firmware
    {u"unattended-upgrade-shutdown", u"Unattended upgrades will finish before shutdown",
     u"unattended-upgrade-shutdown holds a delay lock on shutdown so that an automatic security update in "
     u"progress can finish before the computer powers off. It doesn’t affect sleep.",
     u"Nothing to do; a shutdown waits a few seconds for it at most."},
    {u"unattended-upgrade", u"Automatic security updates are installing",
     u"unattended-upgrade installs security updates in the background. Interrupting it can leave packages "
     u"half-installed, so it holds off shutdown while it works.",
     u"Let it finish; it usually takes a few minutes."},
    {u"packagekitd", u"Software is being installed or updated",
     u"PackageKit installs and updates packages for GNOME Software, Discover and other updaters, and keeps "
     u"the computer from sleeping or shutting down mid-install.",
     u"Let the installation finish in your software updater."},
    {u"fwupd|fwupdmgr|fwupdtool", u"A firmware update is being written",
     u"fwupd updates the firmware of the computer and its devices. Interrupting it can leave a device "
     u"unusable, so it keeps the computer up while it writes.",
     u"Let it finish; don’t turn the computer off."},
    {u"apt|apt-get|aptitude|dpkg", u"Packages are being installed",
     u"The package manager is installing or removing software. Interrupting it can leave packages "
     u"half-installed.",
     u"Let it finish in the terminal or updater that runs it."},
    {u"dnf|dnf-automatic|yum|dnfdragora", u"Packages are being installed",
     u"DNF is installing or updating software. Interrupting it can leave packages half-installed.",
     u"Let it finish in the terminal or updater that runs it."},
    {u"zypper|pacman|pamac-daemon", u"Packages are being installed",
     u"The package manager is installing or updating software. Interrupting it can leave packages "
     u"half-installed.",
     u"Let it finish in the terminal or updater that runs it."},
    {u"snapd", u"Snap packages are being refreshed",
     u"snapd installs and refreshes Snap packages and may hold off shutdown while a refresh is under way.",
     u"Let it finish; “snap changes” in a terminal shows what it is doing."},
    {u"flatpak|flatpak-system-helper", u"Flatpak apps are being installed or updated",
     u"Flatpak keeps the computer up while it installs or updates apps and runtimes.",
     u"Let it finish in your software updater or terminal."},
    {u"mintupdate|update-manager|update-notifier|discover-overlay", u"Updates are being installed",
     u"The system’s update manager is installing updates and keeps the computer awake until it is done.",
     u"Let it finish in the update manager’s window."},
    // Containers and clusters
    {u"kubelet|kubelite", u"Kubernetes will stop this node’s pods before shutdown",
     u"kubelet, the Kubernetes node agent, holds a delay lock on shutdown (graceful node shutdown) so it can "
     u"stop the node’s pods in order before the machine powers off. It doesn’t affect sleep.",
     u"Nothing to do; set shutdownGracePeriod in the kubelet’s configuration to change how long it waits "
     u"(logind’s InhibitDelayMaxSec is the limit)."},
    {u"k3s|k3s-server|k3s-agent|k0s|rke2", u"A Kubernetes node will stop its pods before shutdown",
     u"This Kubernetes distribution runs the kubelet inside it, which holds a delay lock on shutdown to stop "
     u"the node’s pods in order.",
     u"Nothing to do; a shutdown waits for it at most logind’s InhibitDelayMaxSec."},
    {u"podman", u"Podman is finishing a container operation",
     u"Podman holds off shutdown for a moment while it creates, stops or removes a container, so its storage "
     u"stays consistent.",
     u"Let it finish; “podman ps” shows the containers."},
    {u"dockerd|containerd|crio|incusd|lxd", u"Containers are running",
     u"A container engine keeps its containers running; one of them, or the engine itself, holds a lock.",
     u"Stop the containers you don’t need (docker ps, or the engine’s own tool)."},
    // Virtual machines
    {u"libvirtd|virtqemud", u"Virtual machines will be saved or shut down first",
     u"libvirt manages virtual machines. It holds a lock while machines run so that they can be saved or "
     u"shut down before the host goes down.",
     u"Shut down or save the running virtual machines (virt-manager, or virsh list in a terminal) if you "
     u"want the computer to sleep."},
    {u"virt-manager", u"Virtual Machine Manager is running a machine",
     u"Virtual Machine Manager keeps the computer awake while one of its virtual machines runs.",
     u"Shut down or save the virtual machine."},
    {u"qemu-system", u"A QEMU virtual machine is running",
     u"QEMU runs a virtual machine; while it runs, the machine inside would stop if the computer slept.",
     u"Shut down the virtual machine, or save its state first."},
    {u"virtualboxvm|virtualbox|vboxheadless|vboxsvc", u"A VirtualBox machine is running",
     u"A running VirtualBox machine keeps the computer awake while its window is in use.",
     u"Pause or shut down the virtual machine."},
    {u"vmware-vmx|vmware", u"A VMware machine is running",
     u"VMware keeps the computer awake while a virtual machine runs.",
     u"Suspend or shut down the virtual machine."},
    // Backup and sync
    {u"rsync", u"rsync is copying files",
     u"rsync copies or backs up files, often from a script or a scheduled job that keeps the computer awake "
     u"until the copy is done.",
     u"Let the copy finish, or stop it where it was started."},
    {u"deja-dup|deja-dup-monitor", u"A backup is running (Déjà Dup)",
     u"Déjà Dup, GNOME’s Backups, keeps the computer awake while it backs up or restores.",
     u"Let it finish; it shows its progress in Backups."},
    {u"duplicity", u"A backup is running (duplicity)",
     u"duplicity writes encrypted backups, usually for Déjà Dup or a scheduled job.",
     u"Let it finish, or stop it where it was started."},
    {u"borg|vorta", u"A backup is running (Borg)",
     u"BorgBackup, or Vorta running it, keeps the computer awake while it writes an archive.",
     u"Let the backup finish, or stop it in Vorta or the terminal."},
    {u"restic|resticprofile", u"A backup is running (restic)",
     u"restic backs up files, usually from a scheduled job that keeps the computer awake until it is done.",
     u"Let it finish, or stop it where it was started."},
    {u"backintime|backintime-qt", u"A backup is running (Back In Time)",
     u"Back In Time takes a snapshot of your files and keeps the computer awake until it is written.",
     u"Let it finish; its window shows the progress."},
    {u"timeshift|timeshift-gtk|timeshift-launcher", u"A system snapshot is being taken (Timeshift)",
     u"Timeshift takes a snapshot of the system and keeps the computer awake until it is written.",
     u"Let it finish; its window shows the progress."},
    {u"kup-daemon|bup", u"A backup is running (Kup)",
     u"Kup, Plasma’s backup tool, keeps the computer awake while it backs up.",
     u"Let it finish; the Kup icon shows the progress."},
    {u"rsnapshot|rdiff-backupnd|urbackupclientbacke", u"A backup is running",
     u"A backup tool is copying files and keeps the computer awake until it is done.",
     u"Let the backup finish, or stop it where it was started."},
    {u"rclone", u"rclone is copying or syncing files",
     u"rclone copies or syncs files with cloud storage, often from a scheduled job.",
     u"Let the transfer finish, or stop it where it was started."},
    {u"syncthing", u"Syncthing is syncing files",
     u"Syncthing keeps folders in sync between devices and may keep the computer awake while files transfer.",
     u"Let it finish; its web page shows the progress."},
    {u"nextcloud|owncloud", u"Files are syncing with the cloud",
     u"The desktop sync client keeps the computer awake while files upload or download.",
     u"Let it finish, or pause syncing from its panel icon."},
    {u"dropbox|insync|megasync|onedrive|maestral", u"Files are syncing with the cloud",
     u"A cloud sync client keeps the computer awake while files upload or download.",
     u"Let it finish, or pause syncing from its panel icon."},
    // Power tuning
    {u"tlp", u"TLP is applying power settings",
     u"TLP tunes the power settings of the computer’s devices; it holds a short lock while it switches them "
     u"around suspend.",
     u"Nothing to do."},
    {u"power-profiles-daemon", u"Power profiles are being switched",
     u"power-profiles-daemon switches between the power-saver, balanced and performance profiles; a lock it "
     u"holds is short.",
     u"Nothing to do."},
    {u"tuned|tuned-ppd", u"TuneD is applying a tuning profile",
     u"TuneD tunes the system for a profile (powersave, latency, throughput); a lock it holds is short.",
     u"Nothing to do."},
    {u"thermald", u"The thermal daemon is keeping the computer cool",
     u"thermald keeps Intel processors from overheating; a lock it holds is short.", u"Nothing to do."},
    {u"auto-cpufreq|system76-power|laptop_mode|laptop-mode", u"A power tuning daemon is at work",
     u"A power tuning daemon switches the processor and devices between saving power and performance; a lock "
     u"it holds is short.",
     u"Nothing to do."},
    {u"gamemoded", u"GameMode is keeping the screen on for a game",
     u"Feral’s GameMode tunes the computer for a running game and keeps the screensaver off while it plays.",
     u"Quit the game; GameMode lets go when it ends."},
    // Browsers (Chromium-based browsers and Electron apps also hold a short delay lock to tidy up
    // before suspend)
    {u"firefox|firefox-esr|firefox-bin", u"Firefox is playing media",
     u"Firefox keeps the screen on while a tab plays a video or holds a call.",
     u"Pause the video or end the call; the tab with the speaker icon is the one."},
    {u"librewolf|waterfox|floorp|palemoon|icecat", u"The browser is playing media",
     u"The browser keeps the screen on while a tab plays a video or holds a call.",
     u"Pause the video or end the call; the tab with the speaker icon is the one."},
    {u"chromium|chromium-browser", u"Chromium is playing media",
     u"Chromium keeps the screen on while a tab plays a video or holds a call, and holds a short delay lock "
     u"to tidy up before suspend.",
     u"Pause the video or end the call in that tab."},
    {u"chrome", u"Google Chrome is playing media",
     u"Chrome keeps the screen on while a tab plays a video or holds a call, and holds a short delay lock to "
     u"tidy up before suspend.",
     u"Pause the video or end the call in that tab."},
    {u"brave|brave-browser", u"Brave is playing media",
     u"Brave keeps the screen on while a tab plays a video or holds a call.",
     u"Pause the video or end the call in that tab."},
    {u"vivaldi|vivaldi-bin", u"Vivaldi is playing media",
     u"Vivaldi keeps the screen on while a tab plays a video or holds a call.",
     u"Pause the video or end the call in that tab."},
    {u"opera", u"Opera is playing media",
     u"Opera keeps the screen on while a tab plays a video or holds a call.",
     u"Pause the video or end the call in that tab."},
    {u"msedge|microsoft-edge", u"Microsoft Edge is playing media",
     u"Edge keeps the screen on while a tab plays a video or holds a call.",
     u"Pause the video or end the call in that tab."},
    {u"falkon|konqueror|qutebrowser|midori", u"The browser is playing media",
     u"The browser keeps the screen on while a page plays a video.", u"Pause the video, or close the page."},
    // Chat and video calls
    {u"zoom", u"Zoom call is active", u"Zoom keeps the screen on during a meeting.",
     u"End or leave the meeting."},
    {u"teams-for-linux|teams", u"Teams call is active",
     u"Teams keeps the screen on during a call or meeting.", u"End or leave the call."},
    {u"discord|vesktop|webcord", u"Discord voice/video call is active",
     u"Discord keeps the computer awake during a voice or video call, and holds a short delay lock to tidy "
     u"up before suspend.",
     u"Leave the call or quit Discord."},
    {u"slack", u"Slack is in a call or tidying up before suspend",
     u"Slack keeps the screen on during a huddle or call, and holds a short delay lock so it can close its "
     u"connections before the computer suspends; that one blocks nothing.",
     u"Leave the huddle; the delay lock needs nothing."},
    {u"signal-desktop", u"Signal is in a call or tidying up before suspend",
     u"Signal keeps the screen on during a call, and holds a short delay lock to tidy up before suspend; "
     u"that one blocks nothing.",
     u"End the call; the delay lock needs nothing."},
    {u"element-desktop|element", u"Element is in a call or tidying up before suspend",
     u"Element keeps the screen on during a call, and holds a short delay lock to tidy up before suspend; "
     u"that one blocks nothing.",
     u"End the call; the delay lock needs nothing."},
    {u"telegram-desktop|telegram", u"Telegram call is active",
     u"Telegram keeps the screen on during a voice or video call.", u"End the call."},
    {u"skypeforlinux|skype", u"Skype call is active", u"Skype keeps the screen on during a call.",
     u"End the call."},
    {u"jami|jami-qt", u"Jami call is active", u"Jami keeps the screen on during a call.", u"End the call."},
    {u"linphone", u"Linphone call is active", u"Linphone keeps the screen on during a call.",
     u"End the call."},
    {u"dino-im|dino", u"Dino call is active",
     u"Dino, the XMPP chat app, keeps the screen on during a voice or video call.", u"End the call."},
    {u"mumble", u"Mumble is connected to a voice chat",
     u"Mumble keeps the computer awake while it is connected to a server.",
     u"Disconnect from the server or quit Mumble."},
    {u"whatsapp-for-linux|whatsdesk|wasistlos", u"WhatsApp call is active",
     u"The WhatsApp client keeps the screen on during a call.", u"End the call."},
    {u"webex|ciscowebexstart", u"Webex meeting is active", u"Webex keeps the screen on during a meeting.",
     u"End or leave the meeting."},
    {u"code|code-oss|codium|obsidian|electron", u"An Electron app is tidying up before suspend",
     u"Apps built on Electron hold a short delay lock so they can save and close connections before the "
     u"computer suspends. It blocks nothing.",
     u"Nothing to do."},
    // Media players
    {u"vlc", u"VLC is playing media",
     u"VLC keeps the screen on while a video is playing so the screen doesn’t turn off.",
     u"Pause or quit VLC."},
    {u"mpv", u"mpv is playing media", u"mpv keeps the screen on while a video is playing.",
     u"Pause or quit mpv."},
    {u"smplayer|mplayer", u"MPlayer is playing media",
     u"SMPlayer or MPlayer keeps the screen on while a video is playing.", u"Pause or quit the player."},
    {u"kodi|kodi.bin|kodi-standalone", u"Kodi is playing media", u"Kodi keeps the screen on while it plays.",
     u"Stop playback or quit Kodi."},
    {u"spotify", u"Spotify is playing or holding a session",
     u"Spotify asks the desktop to stay awake while audio is playing.", u"Pause playback or quit Spotify."},
    {u"audacious|clementine|strawberry|quodlibet|lollypop|deadbeef|amarok|juk|cantata|tauon",
     u"Music is playing", u"The music player keeps the computer awake while it plays.",
     u"Pause or quit the player."},
    {u"plex media server|plexmediaserver|plex-htpc|plexamp|jellyfin|jellyfinmediaplayer",
     u"The media server is streaming or recording",
     u"The media server keeps the computer awake while a client is streaming or a recording is in progress.",
     u"Wait for the recording to finish, or stop the client stream."},
    {u"stremio|freetube|youtube-music|tidal-hifi", u"Media is playing",
     u"The app keeps the screen on while a video or music is playing.", u"Pause or quit it."},
    {u"evince|soffice.bin|libreoffice", u"A presentation is running",
     u"The document viewer or office suite keeps the screen on while a presentation is shown.",
     u"End the presentation (Esc)."},
    {u"obs", u"OBS is capturing or streaming",
     u"OBS Studio keeps the computer awake while it’s recording or streaming.",
     u"Stop the recording or stream."},
    {u"simplescreenrecorder|kazam|peek|gpu-screen-recorder", u"The screen is being recorded",
     u"A screen recorder keeps the computer awake while it records.", u"Stop the recording."},
    {u"ghb|handbrake", u"HandBrake is encoding a video",
     u"HandBrake keeps the computer awake while it encodes.",
     u"Let the encode finish, or stop it in HandBrake."},
    // Games
    {u"steam", u"Steam is downloading or a game is running",
     u"Steam keeps the computer awake while it downloads or while a game runs.",
     u"Let the download finish, pause it in Steam’s downloads, or quit the game."},
    {u"lutris", u"Lutris is running a game or an install",
     u"Lutris keeps the computer awake while a game runs or an installer works.",
     u"Quit the game, or let the install finish."},
    {u"heroic|legendary", u"Heroic is downloading or a game is running",
     u"Heroic Games Launcher keeps the computer awake while it downloads or while a game runs.",
     u"Let the download finish, or quit the game."},
    {u"minigalaxy|itch|bottles|playonlinux|retroarch|gamescope", u"A game or its launcher is running",
     u"The launcher keeps the computer awake while a game runs or a download is under way.",
     u"Quit the game, or let the download finish."},
    // Downloads
    {u"transmission-gtk|transmission-qt|transmission-daemon", u"Transmission is downloading",
     u"Transmission keeps the computer awake while torrents download, when told to.",
     u"Let the downloads finish, or pause them in Transmission."},
    {u"qbittorrent|qbittorrent-nox", u"qBittorrent is downloading",
     u"qBittorrent keeps the computer awake while torrents download or seed, when told to in its settings.",
     u"Let the downloads finish, pause them, or turn off “Inhibit system sleep” in its settings."},
    {u"deluge|deluged|deluge-gtk", u"Deluge is downloading",
     u"Deluge keeps the computer awake while torrents download, when told to.",
     u"Let the downloads finish, or pause them in Deluge."},
    {u"fragments", u"Fragments is downloading",
     u"GNOME’s torrent client keeps the computer awake while torrents download.",
     u"Let the downloads finish, or pause them in Fragments."},
    {u"uget-gtk|uget|aria2c|motrix|persepolis|xdman|fdm|kget", u"A download manager is downloading",
     u"The download manager keeps the computer awake while downloads run.",
     u"Let the downloads finish, or pause them in the download manager."},
};

} // namespace

const QList<CatalogEntry> &linuxCatalog()
{
    // The texts stay where the compiler put them: an entry refers to them rather than copying.
    static const QList<CatalogEntry> table = [] {
        const auto text = [](std::u16string_view s) {
            return QString::fromRawData(reinterpret_cast<const QChar *>(s.data()), qsizetype(s.size()));
        };
        QList<CatalogEntry> entries;
        for (const Row &row : rows) {
            const ProcessInfo info{text(row.headline), text(row.explanation), text(row.callToAction),
                                   row.proxy};
            for (const QStringView key : QStringView(row.keys).tokenize(u'|'))
                entries.append({QString::fromRawData(key.data(), key.size()), info});
        }
        return entries;
    }();
    return table;
}

} // namespace lullwick
