#include "profile/DesktopLinks.h"

#ifndef Q_OS_DARWIN
#include "platform/linux/DesktopEntry.h"
#endif

using namespace Qt::StringLiterals;

namespace lullwick {

namespace {

// XDG_CURRENT_DESKTOP names.
const QStringList gnome{u"GNOME"_s, u"Unity"_s, u"ubuntu"_s};
const QStringList budgie{u"Budgie"_s};
const QStringList kde{u"KDE"_s};
const QStringList cinnamon{u"X-Cinnamon"_s, u"Cinnamon"_s};
const QStringList mate{u"MATE"_s};
const QStringList xfce{u"XFCE"_s};

} // namespace

DesktopLinks DesktopLinks::mac()
{
    DesktopLinks d;
    d.links = {
        {u"Lock Screen settings (display sleep timer)"_s,
         u"x-apple.systempreferences:com.apple.Lock-Screen-Settings.extension"_s,
         {}},
        {u"Battery / Energy settings (system sleep timer)"_s,
         u"x-apple.systempreferences:com.apple.Battery-Settings.extension"_s,
         {}},
        {u"Bluetooth (devices that can wake the Mac)"_s,
         u"x-apple.systempreferences:com.apple.BluetoothSettings"_s,
         {}},
        {u"Sharing (file sharing, screen sharing, remote management)"_s,
         u"x-apple.systempreferences:com.apple.Sharing-Settings.extension"_s,
         {}},
    };
    d.fixedViewer = OpenTarget{
        u"Activity Monitor"_s, {}, u"/System/Applications/Utilities/Activity Monitor.app"_s, {}, {}};

    return d;
}

DesktopLinks DesktopLinks::linuxDesktops()
{
    DesktopLinks d;
    // Each desktop's own settings pages, as desktop-file ids; a link without an installed one is
    // left out.
    d.links = {
        {u"Power settings (automatic suspend and screen blanking)"_s,
         {},
         {{gnome, u"gnome-power-panel"_s},
          {budgie, u"budgie-power-panel"_s},
          {kde, u"kcm_powerdevilprofilesconfig"_s},
          {cinnamon, u"cinnamon-settings-power"_s},
          {mate, u"mate-power-preferences"_s},
          {xfce, u"xfce4-power-manager-settings"_s}}},
        {u"Screen lock settings (when the screen locks)"_s,
         {},
         {{gnome, u"gnome-lock-panel"_s},
          {gnome, u"gnome-privacy-panel"_s},
          {budgie, u"budgie-privacy-panel"_s},
          {kde, u"kcm_screenlocker"_s},
          {cinnamon, u"cinnamon-settings-screensaver"_s},
          {mate, u"mate-screensaver-preferences"_s},
          {xfce, u"xfce4-screensaver-preferences"_s}}},
        {u"Bluetooth (devices that can wake the computer)"_s,
         {},
         {{gnome, u"gnome-bluetooth-panel"_s},
          {budgie, u"budgie-bluetooth-panel"_s},
          {kde, u"kcm_bluetooth"_s},
          {cinnamon + mate + xfce, u"blueman-manager"_s},
          {cinnamon, u"blueberry"_s}}},
        {u"Sharing (file sharing, screen sharing, remote login)"_s,
         {},
         {{gnome, u"gnome-sharing-panel"_s},
          {budgie, u"budgie-sharing-panel"_s},
          {kde, u"kcm_krdpserver"_s}}},
    };
    d.pickFromDesktop = true;
    d.viewers = {
        {gnome + budgie + cinnamon, u"org.gnome.SystemMonitor"_s},
        {gnome + budgie + cinnamon, u"gnome-system-monitor"_s},
        {kde, u"org.kde.plasma-systemmonitor"_s},
        {kde, u"org.kde.ksysguard"_s},
        {xfce, u"org.xfce.taskmanager"_s},
        {xfce, u"xfce4-taskmanager"_s},
        {mate, u"mate-system-monitor"_s},
    };

    return d;
}

std::pair<QList<OpenTarget>, std::optional<OpenTarget>> DesktopLinks::pick(const QStringList &desktops,
                                                                           const QStringList &folders) const
{
    if (!pickFromDesktop) {
        // Fixed targets: shown whether or not they open.
        QList<OpenTarget> fixed;
        for (const SettingsLinkSpec &link : links)
            fixed.append(OpenTarget{link.label, link.url, {}, {}, {}});
        return {fixed, fixedViewer};
    }
#ifdef Q_OS_DARWIN
    Q_UNUSED(desktops);
    Q_UNUSED(folders);
    return {};
#else
    // The candidates of the running desktop first, in the order XDG_CURRENT_DESKTOP names them;
    // then any other installed one, so that a viewer from another desktop still serves.
    const auto ordered = [&desktops](const QList<DesktopCandidate> &candidates) {
        QList<const DesktopCandidate *> order;
        for (const QString &desktop : desktops) {
            for (const DesktopCandidate &c : candidates) {
                if (c.desktops.contains(desktop, Qt::CaseInsensitive) && !order.contains(&c))
                    order.append(&c);
            }
        }
        for (const DesktopCandidate &c : candidates) {
            if (!order.contains(&c))
                order.append(&c);
        }
        return order;
    };
    const auto launchable = [&folders](const DesktopCandidate *c) -> std::optional<OpenTarget> {
        const std::optional<DesktopEntry::Launch> launch = DesktopEntry::launch(c->id, folders);
        if (!launch)
            return std::nullopt;
        return OpenTarget{launch->name, {}, {}, launch->program, launch->arguments};
    };

    QList<OpenTarget> shown;
    for (const SettingsLinkSpec &wanted : links) {
        for (const DesktopCandidate *c : ordered(wanted.candidates)) {
            if (std::optional<OpenTarget> target = launchable(c)) {
                target->label = wanted.label;
                shown.append(std::move(*target));
                break;
            }
        }
    }
    std::optional<OpenTarget> viewer;
    for (const DesktopCandidate *c : ordered(viewers)) {
        if ((viewer = launchable(c)))
            break;
    }
    return {shown, viewer};
#endif
}

} // namespace lullwick
