#include "Fixtures.h"
#include "catalog/ProcessCatalog.h"
#include "model/AssertionKind.h"
#include "pmset/PMSetService.h"
#include "profile/Profile.h"
#include "standin/TypeWords.h"
#include "summary/AssertionRowText.h"

#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;
using System = Profile::System;

Q_DECLARE_METATYPE(System)

class TestProfile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void catalogLookup_data()
    {
        QTest::addColumn<System>("system");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("headline"); // empty: no entry
        const auto row = [](const char *title, System system, const QString &name, const QString &headline) {
            QTest::addRow("%s", title) << system << name << headline;
        };
        const auto onMac = [&](const char *title, const QString &name, const QString &headline = {}) {
            row(title, System::macOS, name, headline);
        };
        const auto onLinux = [&](const char *title, const QString &name, const QString &headline = {}) {
            row(title, System::Linux, name, headline);
        };
        const QString unattended = u"Unattended upgrades will finish before shutdown"_s;
        const QString session = u"An application asked the desktop session to stay awake"_s;
        const QString spotlightFile = u"Spotlight is processing a file"_s;
        const QString spotlightIndex = u"Spotlight is writing its index"_s;
        onMac("letter case ignored", u"WindowServer"_s, u"Recent keyboard or mouse activity"_s);
        onMac("key with a space", u"QuickTime Player"_s, u"QuickTime Player is playing media"_s);
        onMac("mixed-case key", u"itunes"_s, u"iTunes is playing"_s);
        onMac("underscore continues", u"mdworker_shared"_s, spotlightFile);
        onMac("hyphen continues", u"mdworker-x"_s, spotlightFile);
        onMac("letter does not continue", u"mdworkers"_s);
        onMac("space does not continue", u"Spotify Helper"_s);
        onMac("first part of a hyphenated key", u"channels"_s);
        onMac("leading space is not trimmed", u" smbd"_s);
        onMac("key later in the name", u"com.apple.mds"_s);
        // "mds" comes first in the table and is also continued by these names.
        onMac("exact key beats a shorter key", u"mds_stores"_s, spotlightIndex);
        onMac("longest continued key wins", u"mds_stores_x"_s, spotlightIndex);
        onMac("the Mac catalog keeps names whole", u"quicktime playe"_s);
        onMac("a Linux daemon is unknown on a Mac", u"NetworkManager"_s);
        onLinux("exact name, any letter case", u"NetworkManager"_s,
                u"NetworkManager will disconnect before suspend"_s);
        onLinux("15-character cut name matches the key it begins", u"unattended-upgr"_s, unattended);
        onLinux("cut name: the first of two keys it begins", u"UNATTENDED-UPGR"_s, unattended);
        onLinux("cut KDE power daemon", u"org_kde_powerde"_s,
                u"KDE’s power management is handling the power keys"_s);
        onLinux("cut session manager is the proxy for applications", u"gnome-session-s"_s, session);
        onLinux("session manager's whole name from its command line", u"gnome-session-binary"_s, session);
        onLinux("14 characters are no cut name", u"unattended-upg"_s);
        onLinux("16 characters begin a key but are no cut name", u"unattended-upgra"_s);
        onLinux("15 characters that begin no key", u"gnome-sessionxy"_s);
        onLinux("systemd-inhibit is 15 characters and its own key", u"systemd-inhibit"_s,
                u"A command is holding a sleep lock through systemd-inhibit"_s);
        onLinux("a key continued by a hyphen", u"xdg-desktop-portal-gnome"_s,
                u"An app is asking through the desktop portal"_s);
        onLinux("a Mac process is unknown on Linux", u"coreaudiod"_s);
    }
    void catalogLookup()
    {
        QFETCH(System, system);
        QFETCH(QString, name);
        const std::optional<ProcessInfo> info = Profile::of(system).catalog().info(name);
        QTEST(info ? info->headline : QString(), "headline");
    }

    // Every entry has a call to action and a lower-case key of its own; the texts use typographic
    // apostrophes and quotation marks, and name programs plainly, without backquotes.
    void linuxCatalogIsWholeAndUnique()
    {
        const Profile &onLinux = Profile::of(System::Linux);
        QStringList texts = onLinux.allTexts();
        QSet<QString> keys;
        for (const CatalogEntry &e : onLinux.catalog().entries()) {
            QVERIFY2(!keys.contains(e.key) && e.key == e.key.toLower() && e.info.callToAction,
                     qPrintable(e.key));
            keys.insert(e.key);
            texts << e.info.headline << e.info.explanation << *e.info.callToAction;
        }
        for (const char *holder :
             {"networkmanager", "upowerd", "modemmanager", "gsd-power", "gsd-media-keys", "gnome-shell",
              "gnome-session-service", "org_kde_powerdevil", "unattended-upgrade-shutdown", "packagekitd",
              "firefox", "vlc", "mpv", "systemd-inhibit", "gnome-settings-daemon", "cinnamon-settings-daemon",
              "rtkit-daemon", "kubelet", "slack"})
            QVERIFY2(keys.contains(QString::fromLatin1(holder)), holder);
        QVERIFY(keys.size() >= 300);
        QCOMPARE(Profile::of(System::macOS).catalog().entries().size(), 34);
        for (const QString &text : std::as_const(texts))
            QVERIFY2(!text.contains(u'\'') && !text.contains(u'"') && !text.contains(u'`'), qPrintable(text));
    }

    // A row is titled by its catalog entry or its reason; a lock held for someone else is titled
    // and explained by that one, once ps names it.
    void rowTexts_data()
    {
        QTest::addColumn<System>("system");
        QTest::addColumn<QString>("lines"); // one assertion of a listing
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("createdForLine"); // empty: none
        const auto row = [](const char *name, System system, const QString &lines, const QString &title,
                            const QString &createdFor = {}) {
            QTest::addRow("%s", name) << system << lines << title << createdFor;
        };
        const QString idle = u"Keeping the Mac awake while otherwise idle."_s;
        const QString head = u"   pid 5(renderd): [0x1] 00:00:01 PreventUserIdleSystemSleep"_s;
        const QString audio =
            u"   pid 312(coreaudiod): [0x1] 00:00:01 PreventUserIdleSystemSleep\n\tCreated for PID: "_s;
        const auto onMac = [&](const char *name, const QString &reason, const QString &title) {
            row(name, System::macOS, head + reason, title);
        };
        row("catalog headline", System::macOS, u"   pid 5(mds): [0x1] 00:00:01 PreventUserIdleSystemSleep"_s,
            u"Spotlight is indexing"_s);
        onMac("dotted name falls back", u" named: \"com.example.render.job\""_s, idle);
        onMac("friendly name", u" named: \"Rendering video\""_s, u"Rendering video"_s);
        onMac("localized value trimmed, before the name",
              u" named: \"com.x.y.z\"\n\tLocalized=  Preparing backup \u00a0"_s, u"Preparing backup"_s);
        onMac("blank localized value gives way to the name",
              u" named: \"Render\"\n\tLocalized=\n\tLocalized=Later"_s, u"Render"_s);
        onMac("dotted localized value wins over a nice name", u" named: \"Nice reason\"\n\tLocalized=a.b.c"_s,
              idle);
        onMac("empty name", u" named: \"\""_s, idle);
        row("created-for name in the catalog", System::macOS, audio + u"8."_s, u"FaceTime call is active"_s,
            u"Created for FaceTime (pid 8)"_s);
        row("created-for name outside the catalog", System::macOS, audio + u"9."_s,
            u"An audio device or routing session is active"_s, u"Created for %2 Unknown (pid 9)"_s);
        const QString inhibit =
            u"   pid 900(systemd-inhibit): [0x1] 1 PreventUserIdleDisplaySleep\n\tCreated for PID: "_s;
        const QString session = u"   pid 1500(gnome-session-b): [0x1] 1 PreventUserIdleDisplaySleep\n"
                                u"\tCreated for PID: %1\n\tApplication: org.gnome.Totem"_s;
        row("systemd-inhibit before its command is named", System::Linux, inhibit + u"902"_s,
            u"A command is holding a sleep lock through systemd-inhibit"_s, u"Created for pid 902"_s);
        row("systemd-inhibit running rsync", System::Linux, inhibit + u"901"_s, u"rsync is copying files"_s,
            u"Created for rsync (pid 901)"_s);
        row("session inhibitor of a video player", System::Linux, session.arg(4200),
            u"Videos (Totem) is playing media"_s, u"Created for totem (pid 4200)"_s);
        row("session inhibitor of an unknown application keeps the session's title", System::Linux,
            QString(session).replace(u"org.gnome.Totem"_s, u"org.example.Editor"_s).arg(4201),
            u"An application asked the desktop session to stay awake"_s,
            u"Created for my-editor (pid 4201)"_s);
    }
    void rowTexts()
    {
        QFETCH(System, system);
        QFETCH(QString, lines);
        const ScopedProfile profile(system);
        const Assertion held =
            PMSetService::parse(u"Listed by owning process:\n"_s + lines + u'\n', {}).assertions.value(0);
        const ResolvedNames names{{8, u"FaceTime"_s},
                                  {9, u"%2 Unknown"_s},
                                  {901, u"rsync"_s},
                                  {4200, u"totem"_s},
                                  {4201, u"my-editor"_s}};
        const AssertionRowText row = AssertionRowText::make(held, names);
        QTEST(row.title, "title");
        QTEST(row.createdForLine.value_or(QString()), "createdForLine");
        QCOMPARE(row.revealPID, held.createdForPID().value_or(held.pid));
        if (row.createdForPID == 9) { // an unknown creator is named, but explains nothing
            QCOMPARE(row.callToAction, row.ownCallToAction);
            QVERIFY(row.explanation->startsWith(u"Core Audio is macOS’s sound engine."_s));
        }
    }

    // Every word the stand-in writes is explained, none with the fallback for unknown words.
    void standinWordsAreDescribed()
    {
        const Profile &onLinux = Profile::of(System::Linux);
        const Profile &mac = Profile::of(System::macOS);
        for (const QString &word : TypeWords::all()) {
            const AssertionKind kind = AssertionKind::fromRawType(word);
            QVERIFY2(!onLinux.describe(kind).startsWith(u"Assertion: "_s), qPrintable(word));
            if (kind.isOther())
                QCOMPARE(mac.describe(kind), u"Assertion: "_s + word + u'.');
        }
        QCOMPARE(onLinux.describe(AssertionKind::makeOther(u"Unheard"_s)), u"Assertion: Unheard."_s);
    }

    void desktopPicksLinksAndViewer_data()
    {
        QTest::addColumn<QStringList>(
            "installed"); // desktop-file ids, plus "missing:" ones whose program is not there
        QTest::addColumn<QString>("desktop");   // XDG_CURRENT_DESKTOP
        QTest::addColumn<QStringList>("links"); // "label → id"
        QTest::addColumn<QString>("viewer");    // id, or empty: none
        const QString power = u"Power settings (automatic suspend and screen blanking)"_s;
        const QString lock = u"Screen lock settings (when the screen locks)"_s;
        const QString bluetooth = u"Bluetooth (devices that can wake the computer)"_s;
        const QString sharing = u"Sharing (file sharing, screen sharing, remote login)"_s;
        const QStringList both{
            u"gnome-power-panel"_s,    u"gnome-bluetooth-panel"_s,        u"gnome-sharing-panel"_s,
            u"gnome-system-monitor"_s, u"kcm_powerdevilprofilesconfig"_s, u"kcm_screenlocker"_s,
            u"kcm_bluetooth"_s,        u"org.kde.plasma-systemmonitor"_s};
        QTest::addRow("GNOME takes its own panels")
            << both << u"ubuntu:GNOME"_s
            << QStringList{power + u" → gnome-power-panel"_s, lock + u" → kcm_screenlocker"_s,
                           bluetooth + u" → gnome-bluetooth-panel"_s, sharing + u" → gnome-sharing-panel"_s}
            << u"gnome-system-monitor"_s;
        QTest::addRow("KDE takes its own modules")
            << both << u"KDE"_s
            << QStringList{power + u" → kcm_powerdevilprofilesconfig"_s, lock + u" → kcm_screenlocker"_s,
                           bluetooth + u" → kcm_bluetooth"_s, sharing + u" → gnome-sharing-panel"_s}
            << u"org.kde.plasma-systemmonitor"_s;
        QTest::addRow("nothing installed: no links, no viewer")
            << QStringList() << u"GNOME"_s << QStringList() << QString();
        QTest::addRow("no desktop named: whatever is installed")
            << QStringList{u"xfce4-taskmanager"_s, u"blueman-manager"_s} << QString()
            << QStringList{bluetooth + u" → blueman-manager"_s} << u"xfce4-taskmanager"_s;
        QTest::addRow("an entry whose program is missing is not installed")
            << QStringList{u"missing:gnome-power-panel"_s, u"missing:gnome-system-monitor"_s,
                           u"mate-power-preferences"_s}
            << u"GNOME"_s << QStringList{power + u" → mate-power-preferences"_s} << QString();
        QTest::addRow("a deleted entry is not installed")
            << QStringList{u"hidden:gnome-system-monitor"_s, u"mate-system-monitor"_s} << u"GNOME"_s
            << QStringList() << u"mate-system-monitor"_s;
    }
    void desktopPicksLinksAndViewer()
    {
        QFETCH(QStringList, installed);
        QFETCH(QString, desktop);
        QTemporaryDir folder;
        for (const QString &item : installed) {
            const QString id = item.section(u':', -1);
            if (item.startsWith(u"missing:"))
                Fixtures::writeDesktopEntry(folder.path(), id, id, {}, QByteArray());
            else if (item.startsWith(u"hidden:"))
                Fixtures::writeDesktopEntry(folder.path(), id, id, "Hidden=true\n");
            else // settings pages hide from menus
                Fixtures::writeDesktopEntry(folder.path(), id, id, "NoDisplay=true\n");
        }
        const Profile &onLinux = Profile::of(System::Linux);
        const auto [links, viewer] = onLinux.desktopLinks().pick(
            desktop.split(u':', Qt::SkipEmptyParts), {folder.path() + u"/nothing-here"_s, folder.path()});
        QStringList shown;
        for (const OpenTarget &link : links) {
            // Started from the entry: its program, without the field code.
            QCOMPARE(link.arguments, QStringList{u"--from-entry"_s});
            shown << link.label + u" → "_s + link.program.section(u"/bin-"_s, 1);
        }
        QTEST(shown, "links");
        QTEST(viewer ? viewer->program.section(u"/bin-"_s, 1) : QString(), "viewer");
        if (viewer)
            QCOMPARE(viewer->label, viewer->program.section(u"/bin-"_s, 1)); // the entry's Name
    }
};

QTEST_GUILESS_MAIN(TestProfile)
#include "tst_profile.moc"
