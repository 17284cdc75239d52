#include "Fixtures.h"
#include "catalog/ProcessCatalog.h"
#include "model/AssertionKind.h"
#include "platform/Profile.h"
#include "standin/TypeWords.h"
#include "summary/AssertionRowText.h"

#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;
using System = Profile::System;

Q_DECLARE_METATYPE(System)

namespace {

/// The headline of the entry `name` gets, or an empty text when it gets none.
QString headlineOf(const QString &name, System system)
{
    const std::optional<ProcessInfo> info = ProcessCatalog::info(name, Profile::of(system));
    return info ? info->headline : QString();
}

Assertion assertion(qint64 pid, const QString &processName, const QString &type,
                    std::optional<QString> extras = std::nullopt)
{
    Assertion a;
    a.pid = pid;
    a.processName = processName;
    a.kind = AssertionKind::fromRawType(type);
    a.extras = std::move(extras);
    return a;
}

/// A desktop entry in `folder` whose program is a script there, unless `program` is given.
void writeEntry(const QString &folder, const QString &id, const QString &name, const QString &extra = {},
                QString program = {})
{
    if (program.isNull()) {
        program = folder + u"/bin-"_s + id;
        Fixtures::writeFile(program, "#!/bin/sh\n");
        QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
    }
    Fixtures::writeFile(folder + u'/' + id + u".desktop"_s,
                        (u"[Desktop Entry]\nType=Application\nName=%1\nExec=\"%2\" --page %U\n%3"_s)
                            .arg(name, program, extra)
                            .toUtf8());
}

} // namespace

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
        const QString unattended = u"Unattended upgrades will finish before shutdown"_s;
        const QString session = u"An application asked the desktop session to stay awake"_s;
        row("exact name, any letter case", System::Linux, u"NetworkManager"_s,
            u"NetworkManager will disconnect before suspend"_s);
        row("15-character cut name matches the key it begins", System::Linux, u"unattended-upgr"_s,
            unattended);
        row("cut name: the first of two keys it begins", System::Linux, u"UNATTENDED-UPGR"_s, unattended);
        row("cut KDE power daemon", System::Linux, u"org_kde_powerde"_s,
            u"KDE’s power management is handling the power keys"_s);
        row("cut session manager is the proxy for applications", System::Linux, u"gnome-session-s"_s,
            session);
        row("session manager's whole name from its command line", System::Linux, u"gnome-session-binary"_s,
            session);
        row("14 characters are no cut name", System::Linux, u"unattended-upg"_s, QString());
        row("16 characters begin a key but are no cut name", System::Linux, u"unattended-upgra"_s, QString());
        row("15 characters that begin no key", System::Linux, u"gnome-session-x"_s, QString());
        row("systemd-inhibit is 15 characters and its own key", System::Linux, u"systemd-inhibit"_s,
            u"A command is holding a sleep lock through systemd-inhibit"_s);
        row("a key continued by a hyphen", System::Linux, u"xdg-desktop-portal-gnome"_s,
            u"An app is asking through the desktop portal"_s);
        row("a Mac process is unknown on Linux", System::Linux, u"coreaudiod"_s, QString());
        row("the Mac catalog keeps names whole", System::macOS, u"quicktime playe"_s, QString());
        row("the Mac catalog is unchanged", System::macOS, u"QuickTime Player"_s,
            u"QuickTime Player is playing media"_s);
        row("a Linux daemon is unknown on a Mac", System::macOS, u"NetworkManager"_s, QString());
    }
    void catalogLookup()
    {
        QFETCH(System, system);
        QFETCH(QString, name);
        QTEST(headlineOf(name, system), "headline");
    }

    void linuxCatalogIsWholeAndUnique()
    {
        const QList<CatalogEntry> &entries = Profile::of(System::Linux).catalog();
        QVERIFY(entries.size() >= 35);
        QSet<QString> keys;
        for (const CatalogEntry &e : entries) {
            QVERIFY2(!keys.contains(e.key), qPrintable(e.key));
            keys.insert(e.key);
            QVERIFY2(e.info.callToAction.has_value(), qPrintable(e.key));
        }
        for (const char *holder :
             {"networkmanager", "upowerd", "modemmanager", "gsd-power", "gsd-media-keys", "gnome-shell",
              "gnome-session-service", "org_kde_powerdevil", "unattended-upgrade-shutdown", "packagekitd",
              "firefox", "vlc", "mpv", "systemd-inhibit"})
            QVERIFY2(keys.contains(QString::fromLatin1(holder)), holder);
        QCOMPARE(Profile::of(System::macOS).catalog().size(), 34);
    }

    // Linux texts are written with typographic apostrophes and quotation marks.
    void linuxTextsAreTypographic()
    {
        const Profile &onLinux = Profile::of(System::Linux);
        QStringList texts = onLinux.allTexts();
        for (const CatalogEntry &e : onLinux.catalog())
            texts << e.info.headline << e.info.explanation << e.info.callToAction.value_or(QString());
        for (const QString &text : std::as_const(texts))
            QVERIFY2(!text.contains(u'\'') && !text.contains(u'"'), qPrintable(text));
    }

    // A lock held for someone else is titled and explained by that one, once ps names it.
    void proxyRowsExplainWhomTheyHoldFor_data()
    {
        QTest::addColumn<Assertion>("held");
        QTest::addColumn<QString>("createdForName"); // empty: not resolved yet
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("createdForLine");
        const Assertion inhibit =
            assertion(900, u"systemd-inhibit"_s, u"PreventUserIdleDisplaySleep"_s, u"Created for PID: 901"_s);
        const Assertion session = assertion(1500, u"gnome-session-b"_s, u"PreventUserIdleDisplaySleep"_s,
                                            u"Created for PID: 4200\nApplication: org.gnome.Totem"_s);
        QTest::addRow("systemd-inhibit before its command is named")
            << inhibit << QString() << u"A command is holding a sleep lock through systemd-inhibit"_s
            << u"Created for pid 901"_s;
        QTest::addRow("systemd-inhibit running rsync")
            << inhibit << u"rsync"_s << u"rsync is copying files"_s << u"Created for rsync (pid 901)"_s;
        QTest::addRow("session inhibitor of a video player")
            << session << u"totem"_s << u"Videos (Totem) is playing media"_s
            << u"Created for totem (pid 4200)"_s;
        QTest::addRow("session inhibitor of an unknown application keeps the session's title")
            << session << u"my-editor"_s << u"An application asked the desktop session to stay awake"_s
            << u"Created for my-editor (pid 4200)"_s;
    }
    void proxyRowsExplainWhomTheyHoldFor()
    {
        const ScopedProfile onLinux(System::Linux);
        QFETCH(Assertion, held);
        QFETCH(QString, createdForName);
        ResolvedNames names;
        if (!createdForName.isEmpty())
            names.insert(*held.createdForPID(), createdForName);
        const AssertionRowText row = AssertionRowText::make(held, names);
        QTEST(row.title, "title");
        QTEST(row.createdForLine.value_or(QString()), "createdForLine");
        QCOMPARE(row.revealPID, *held.createdForPID());
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
                writeEntry(folder.path(), id, id, {}, folder.path() + u"/not-here"_s);
            else if (item.startsWith(u"hidden:"))
                writeEntry(folder.path(), id, id, u"Hidden=true\n"_s);
            else
                writeEntry(folder.path(), id, id, u"NoDisplay=true\n"_s); // settings pages hide from menus
        }
        const Profile &onLinux = Profile::of(System::Linux);
        const auto [links, viewer] = Profile::pickFromDesktop(
            onLinux.settingsLinkSpecs(), onLinux.viewerCandidates(), desktop.split(u':', Qt::SkipEmptyParts),
            {folder.path() + u"/nothing-here"_s, folder.path()});
        QStringList shown;
        for (const OpenTarget &link : links) {
            // Started from the entry: its program, without the field code.
            QCOMPARE(link.arguments, QStringList{u"--page"_s});
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
