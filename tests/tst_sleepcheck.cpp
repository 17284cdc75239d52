#include "Fixtures.h"
#include "PrivateMounts.h"
#include "profile/Profile.h"
#include "sleep/SleepCheck.h"
#include "sleep/SleepContext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>
#include <sys/stat.h>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

using Files = QList<std::pair<QString, QByteArray>>;
const QByteArray devNull = "<link to /dev/null>";
const QByteArray fifo = "<fifo>";
const std::atomic<bool> keepGoing{false};

/// Writes `files` under `root`: contents, links to /dev/null, or FIFOs.
void put(const QString &root, const Files &files)
{
    for (const auto &[path, bytes] : files) {
        const QString at = root + path;
        QVERIFY(QDir().mkpath(QFileInfo(at).path()));
        if (bytes == devNull)
            QVERIFY(QFile::link(u"/dev/null"_s, at));
        else if (bytes == fifo)
            QCOMPARE(::mkfifo(QFile::encodeName(at).constData(), 0600), 0);
        else
            Fixtures::writeFile(at, bytes);
    }
}

QStringList shown(const QList<Finding> &findings)
{
    QStringList lines;
    for (const Finding &f : findings)
        lines << word(f.severity) + u": "_s + f.title;
    return lines;
}

Files pciClasses(const QStringList &addresses, const QByteArray &classCode)
{
    Files files;
    for (const QString &a : addresses)
        files.append({u"/sys/bus/pci/devices/"_s + a + u"/class"_s, classCode + '\n'});
    return files;
}

} // namespace

class TestSleepCheck : public QObject {
    Q_OBJECT
    const ScopedProfile m_linux{Profile::System::Linux};

private Q_SLOTS:
    // Every source over recorded files and logind answers, as the check composes and ranks them.
    void findings_data()
    {
        QTest::addColumn<Files>("files");
        QTest::addColumn<QByteArray>("evidence");
        QTest::addColumn<QByteArray>("desktop"); // XDG_CURRENT_DESKTOP, then ";" and gsettings' output
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QString>("cannotSuspend");
        const QByteArray lid = "logind\tOnExternalPower\tyes\nlogind\tHandleLidSwitchExternalPower\tignore\n";
        const Files lidSwitch{{u"/sys/class/input/input3/name"_s, "Lid Switch\n"}};

        QTest::addRow("a quiet computer says nothing")
            << Files{{u"/sys/power/mem_sleep"_s, "s2idle [deep]\n"}} << QByteArray() << QByteArray()
            << QStringList() << QString();
        QTest::addRow("suspend.target masked in /etc")
            << Files{{u"/etc/systemd/system/suspend.target"_s, devNull}} << QByteArray() << QByteArray()
            << QStringList{u"likely: This computer cannot suspend: suspend.target is masked"_s}
            << u"suspend.target is masked"_s;
        QTest::addRow("sleep.target masked in /run, until the next boot")
            << Files{{u"/run/systemd/system/sleep.target"_s, devNull}} << QByteArray() << QByteArray()
            << QStringList{u"likely: This computer cannot suspend: sleep.target is masked"_s}
            << u"sleep.target is masked"_s;
        QTest::addRow("a hibernation-only mask is for reference")
            << Files{{u"/etc/systemd/system/hibernate.target"_s, devNull}} << QByteArray() << QByteArray()
            << QStringList{u"info: Hibernation is turned off: hibernate.target is masked"_s} << QString();
        QTest::addRow("a unit file of its own masks nothing")
            << Files{{u"/etc/systemd/system/suspend.target"_s, "[Unit]\n"}} << QByteArray() << QByteArray()
            << QStringList() << QString();
        QTest::addRow("logind says na and the kernel offers no sleep state")
            << Files{{u"/sys/power/state"_s, "disk\n"}} << QByteArray("can-suspend\tna\n") << QByteArray()
            << QStringList{u"likely: This computer cannot suspend: the kernel offers no way to suspend"_s}
            << u"the kernel offers no way to suspend"_s;
        QTest::addRow("logind's na over a masked target is said once")
            << Files{{u"/etc/systemd/system/suspend.target"_s, devNull}} << QByteArray("can-suspend\tna\n")
            << QByteArray()
            << QStringList{u"likely: This computer cannot suspend: suspend.target is masked"_s}
            << u"suspend.target is masked"_s;
        QTest::addRow("suspend forbidden; junk answers skipped")
            << Files()
            << QByteArray("can-suspend\tmaybe\ncan-suspend\tno\ncan-suspend\tyes\textra\nlogind\tEvil\tx\n")
            << QByteArray() << QStringList{u"possible: You are not allowed to suspend this computer"_s}
            << QString();
        QTest::addRow("hibernation refused by kernel lockdown")
            << Files{{u"/sys/power/state"_s, "freeze mem disk\n"},
                     {u"/sys/kernel/security/lockdown"_s, "none [integrity] confidentiality\n"}}
            << QByteArray("can-suspend\tyes\ncan-hibernate\tna\n") << QByteArray()
            << QStringList{u"info: Hibernation isn’t available: the kernel is locked down"_s} << QString();
        QTest::addRow("suspend-to-idle only, as a Surface Book 2 says")
            << Files{{u"/sys/power/mem_sleep"_s, Fixtures::read(u"sleep-mem-sleep-s2idle-only.txt"_s)}}
            << QByteArray() << QByteArray() << QStringList{u"info: Suspend here is suspend-to-idle only"_s}
            << QString();
        QTest::addRow("suspend-to-idle chosen while deep is offered")
            << Files{{u"/sys/power/mem_sleep"_s, "[s2idle] deep\n"}} << QByteArray() << QByteArray()
            << QStringList{u"info: Suspend uses suspend-to-idle, though deep sleep is offered"_s}
            << QString();
        QTest::addRow("a failed suspend names the device and step")
            << Files{{u"/sys/power/suspend_stats/fail"_s, "3\n"},
                     {u"/sys/power/suspend_stats/success"_s, "10\n"},
                     {u"/sys/power/suspend_stats/last_failed_dev"_s, "usb2\n"},
                     {u"/sys/power/suspend_stats/last_failed_step"_s, "suspend\n"}}
            << QByteArray() << QByteArray()
            << QStringList{u"possible: A suspend failed: usb2 refused at the “suspend” step"_s} << QString();
        QTest::addRow("the lid ignored while plugged in")
            << lidSwitch << lid << QByteArray()
            << QStringList{u"possible: Closing the lid doesn’t suspend while plugged in: systemd-logind is set to “ignore”"_s}
            << QString();
        QTest::addRow("no lid, no lid finding")
            << Files() << lid << QByteArray() << QStringList() << QString();
        QTest::addRow("docked: HandleLidSwitchDocked decides")
            << lidSwitch << QByteArray("logind\tDocked\tyes\nlogind\tHandleLidSwitchDocked\tlock\n")
            << QByteArray()
            << QStringList{u"possible: Closing the lid doesn’t suspend while docked: systemd-logind is set to “lock”"_s}
            << QString();
        QTest::addRow("a program holding the lid lock decides instead of logind.conf")
            << lidSwitch << lid + "lid-handler\tPower Manager\tHandling the lid\t812\tgsd-power\n"
            << QByteArray() << QStringList{u"info: Power Manager decides what closing the lid does"_s}
            << QString();
        QTest::addRow("logind's own idle action")
            << Files() << QByteArray("logind\tIdleAction\tsuspend\nlogind\tIdleActionSec\t1800\n")
            << QByteArray()
            << QStringList{u"info: systemd-logind will suspend the computer after 30 minutes without input"_s}
            << QString();
        QTest::addRow("Plasma 5 with no automatic suspend plugged in")
            << Files{{u"/home/.config/powermanagementprofilesrc"_s,
                      "[AC]\nicon=battery-charging\n\n[AC][DPMSControl]\nidleTime=600\n\n[Battery]["
                      "SuspendSession]\n"
                      "idleTime=900000\nsuspendType=1\n"}}
            << QByteArray() << QByteArray("KDE")
            << QStringList{u"possible: Your desktop never suspends on its own while plugged in"_s}
            << QString();
        QTest::addRow("Plasma 6 suspending after 15 minutes")
            << Files{{u"/home/.config/powerdevilrc"_s,
                      "[AC][SuspendAndShutdown]\nAutoSuspendAction=1\nAutoSuspendIdleTimeoutSec=900\n"}}
            << QByteArray() << QByteArray("KDE")
            << QStringList{u"info: KDE Plasma suspends after 15 minutes without input while plugged in"_s}
            << QString();
        QTest::addRow("Xfce on battery, after half an hour")
            << Files{{u"/home/.config/xfce4/xfconf/xfce-perchannel-xml/xfce4-power-manager.xml"_s,
                      R"(<?xml version="1.0" encoding="UTF-8"?><channel name="xfce4-power-manager" version="1.0">
<property name="xfce4-power-manager" type="empty"><property name="inactivity-on-battery" type="uint" value="30"/>
</property></channel>)"}}
            << QByteArray("logind\tOnExternalPower\tno\n") << QByteArray("XFCE")
            << QStringList{u"info: Xfce suspends after 30 minutes without input on battery"_s} << QString();
        QTest::addRow("Xfce never set up never suspends")
            << Files() << QByteArray() << QByteArray("XFCE")
            << QStringList{u"possible: Your desktop never suspends on its own while plugged in"_s}
            << QString();
        // MATE's lid values as `gsettings get` printed them in a bug report: 'suspend', 'nothing'.
        QTest::addRow("MATE does nothing on the lid and never suspends")
            << lidSwitch << QByteArray()
            << QByteArray("MATE;org.mate.power-manager button-lid-ac 'nothing'\n"
                          "org.mate.power-manager button-lid-battery 'suspend'\n"
                          "org.mate.power-manager sleep-computer-ac 0\norg.mate.power-manager "
                          "sleep-computer-battery 1800\n")
            << QStringList{u"possible: Your desktop never suspends on its own while plugged in"_s,
                           u"possible: MATE does nothing when you close the lid while plugged in"_s}
            << QString();
        QTest::addRow("the ACPI wake-up table of an AMD desktop")
            << Files{{u"/proc/acpi/wakeup"_s, Fixtures::read(u"sleep-proc-acpi-wakeup.txt"_s)}} +
                   pciClasses({u"0000:0d:00.3"_s, u"0000:0d:00.4"_s, u"0000:04:00.0"_s}, "0x0c0330") +
                   pciClasses({u"0000:00:01.1"_s, u"0000:00:01.6"_s, u"0000:00:08.1"_s}, "0x060400")
            << QByteArray() << QByteArray()
            << QStringList{u"info: USB controller and 5 more may wake this computer"_s} << QString();
        QTest::addRow("a USB device by its name; root hubs and interfaces left out")
            << Files{{u"/sys/bus/usb/devices/1-2/product"_s, "USB Receiver\n"},
                     {u"/sys/bus/usb/devices/1-2/manufacturer"_s, "Logitech\n"},
                     {u"/sys/bus/usb/devices/1-2/power/wakeup"_s, "enabled\n"},
                     {u"/sys/bus/usb/devices/1-3/power/wakeup"_s, "disabled\n"},
                     {u"/sys/bus/usb/devices/usb1/power/wakeup"_s, "enabled\n"},
                     {u"/sys/bus/usb/devices/1-2:1.0/power/wakeup"_s, "enabled\n"}}
            << QByteArray() << QByteArray()
            << QStringList{u"info: Logitech USB Receiver may wake this computer"_s} << QString();
        QTest::addRow("recent wake-ups, most recent first")
            << Files{{u"/sys/class/wakeup/wakeup0/name"_s, "0000:00:14.0\n"},
                     {u"/sys/class/wakeup/wakeup0/wakeup_count"_s, "3\n"},
                     {u"/sys/class/wakeup/wakeup0/last_change_ms"_s, "5000\n"},
                     {u"/sys/class/wakeup/wakeup1/name"_s, "PNP0C0C:00\n"},
                     {u"/sys/class/wakeup/wakeup1/wakeup_count"_s, "1\n"},
                     {u"/sys/class/wakeup/wakeup1/last_change_ms"_s, "9000\n"},
                     {u"/sys/class/wakeup/wakeup2/wakeup_count"_s, "0\n"}} +
                   pciClasses({u"0000:00:14.0"_s}, "0x0c0330")
            << QByteArray() << QByteArray()
            << QStringList{u"info: Recent wake-ups came from power button and USB controller (0000:00:14.0)"_s}
            << QString();
        QTest::addRow("a hostile device name stays one clean finding")
            << Files{{u"/sys/bus/usb/devices/1-2/product"_s, "\x1b[31mEvil\n[Likely] Fake\tfinding\xff"},
                     {u"/sys/bus/usb/devices/1-2/power/wakeup"_s, "enabled\n"}}
            << QByteArray() << QByteArray() << QStringList{u"info: [31mEvil may wake this computer"_s}
            << QString();
        QTest::addRow("a huge mem_sleep and a FIFO in place of suspend_stats say nothing")
            << Files{{u"/sys/power/mem_sleep"_s, QByteArray(1 << 20, 'x')},
                     {u"/sys/power/suspend_stats/fail"_s, fifo}}
            << QByteArray(1 << 20, '\t') << QByteArray() << QStringList() << QString();
    }

    void findings()
    {
        QFETCH(Files, files);
        QFETCH(QByteArray, desktop);
        QFETCH(QByteArray, evidence);
        QTemporaryDir root;
        put(root.path(), files);
        SleepCheck check{u"/nonexistent"_s, root.path(), {}};
        check.desktop.configDir = root.path() + u"/home/.config"_s;
        const QList<QByteArray> desktopAndOutput = desktop.split(';');
        check.desktop.desktops = {QString::fromUtf8(desktopAndOutput.value(0))};
        if (desktopAndOutput.size() > 1) {
            // gsettings played by a script that prints what it was given.
            Fixtures::writeFile(root.filePath(u"gsettings.out"_s), desktopAndOutput[1]);
            check.desktop.gsettingsPath = root.filePath(u"gsettings"_s);
            Fixtures::writeFile(check.desktop.gsettingsPath, "#!/bin/sh\ncat \"${0%/*}/gsettings.out\"\n");
            QVERIFY(QFile::setPermissions(check.desktop.gsettingsPath, QFile::ReadOwner | QFile::ExeOwner));
        }
        const SleepFindings found = check.evaluate(SleepEvidence::parse(evidence), keepGoing);
        QTEST(shown(found.findings), "expected");
        QTEST(found.cannotSuspend.value_or(QString()), "cannotSuspend");
        // Nothing that starts a line or a second finding gets into what a card or a copy shows.
        for (const Finding &f : found.findings) {
            const QString oneLine = f.title + f.source;
            QVERIFY(std::none_of(oneLine.cbegin(), oneLine.cend(),
                                 [](QChar c) { return c.category() == QChar::Other_Control; }));
        }
    }

    // GNOME's automatic suspend as the real gsettings reads it from dconf, on a session bus and
    // with a schema folder of the test's own.
    void realGSettings_data()
    {
        QTest::addColumn<QStringList>("set");
        QTest::addColumn<QString>("expected");
        QTest::addRow("GNOME's defaults")
            << QStringList() << u"info: GNOME suspends after 20 minutes without input while plugged in"_s;
        QTest::addRow("automatic suspend off")
            << QStringList{u"sleep-inactive-ac-type"_s, u"nothing"_s}
            << u"possible: Your desktop never suspends on its own while plugged in"_s;
        QTest::addRow("after an hour")
            << QStringList{u"sleep-inactive-ac-timeout"_s, u"3600"_s}
            << u"info: GNOME suspends after 1 hour without input while plugged in"_s;
    }

    void realGSettings()
    {
        const QString gsettings = u"/usr/bin/gsettings"_s;
        for (const QString &tool : {gsettings, u"/usr/bin/glib-compile-schemas"_s, u"/usr/bin/dbus-daemon"_s,
                                    u"/usr/libexec/dconf-service"_s}) {
            if (!QFileInfo::exists(tool))
                QSKIP(qPrintable(tool + u" is not there (scripts/install-deps.sh installs it)"_s));
        }
        QFETCH(QStringList, set);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        QVERIFY(QDir().mkpath(dir.filePath(u"schemas"_s)));
        Fixtures::writeFile(dir.filePath(u"schemas/org.gnome.settings-daemon.plugins.power.gschema.xml"_s),
                            Fixtures::read(u"gsettings-gnome-power.gschema.xml"_s));
        QCOMPARE(QProcess::execute(u"/usr/bin/glib-compile-schemas"_s, {dir.filePath(u"schemas"_s)}), 0);
        // Before the bus starts: the dconf service it starts writes where these say.
        qputenv("GSETTINGS_SCHEMA_DIR", QFile::encodeName(dir.filePath(u"schemas"_s)));
        qputenv("GSETTINGS_BACKEND", "dconf");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(dir.filePath(u"config"_s)));
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(dir.path()));
        QProcess bus;
        bus.start(u"/usr/bin/dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address=1"_s});
        QVERIFY(bus.waitForReadyRead(10000));
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
        const QString schema = u"org.gnome.settings-daemon.plugins.power"_s;
        if (!set.isEmpty())
            QCOMPARE(QProcess::execute(gsettings, {u"set"_s, schema, set[0], set[1]}), 0);

        DesktopSuspend::Setup setup;
        setup.desktops = {u"ubuntu"_s, u"GNOME"_s};
        const std::optional<DesktopSuspend::Settings> read = DesktopSuspend::read(setup, keepGoing);
        bus.terminate();
        bus.waitForFinished();
        QVERIFY(read);
        SleepContext pluggedIn{SystemFiles(dir.path()), {}, true, false, false};
        QCOMPARE(shown(DesktopSuspend::findings(*read, pluggedIn)), QStringList{expected});
    }

    // systemd-logind itself, with its own logind.conf, a /sys/power of the test's own and masked
    // targets as real links, in a private mount namespace; the stand-in and the report read it.
    void realLogind()
    {
        if (const std::optional<QString> why = privateMountsUnavailable(
                {u"/lib/systemd/systemd-logind"_s, u"/usr/bin/systemd-inhibit"_s, u"/usr/bin/busctl"_s}))
            QSKIP(qPrintable(*why));
        QTemporaryDir work;
        qputenv("DBUS_SESSION_BUS_ADDRESS", QFile::encodeName(u"unix:path="_s + work.filePath(u"nowhere"_s)));
        QProcess rig;
        rig.start(u"/usr/bin/unshare"_s,
                  {u"-m"_s, u"--propagation"_s, u"private"_s, u"/bin/sh"_s,
                   QStringLiteral(LULLWICK_SLEEP_RIG), work.path(), QStringLiteral(LULLWICK_BIN_DIR)});
        QVERIFY(rig.waitForFinished(120000));
        const QByteArray output = rig.readAllStandardOutput();
        QVERIFY2(rig.exitCode() == 0, rig.readAllStandardError().constData());
        const qsizetype split = output.indexOf("----\n");
        QVERIFY2(split > 0, output.constData());

        const SleepEvidence evidence = SleepEvidence::parse(output.first(split));
        QCOMPARE(evidence.logind.value(u"HandleLidSwitch"_s), u"ignore"_s);
        QCOMPARE(evidence.logind.value(u"IdleAction"_s), u"suspend"_s);
        QCOMPARE(evidence.logind.value(u"IdleActionSec"_s), u"1200"_s);
        QCOMPARE(evidence.lidHandlers.size(), 1);
        QCOMPARE(evidence.lidHandlers[0].who, u"Lid Tester"_s);
        QCOMPARE(evidence.lidHandlers[0].processName, u"systemd-inhibit"_s);

        const QJsonObject report = QJsonDocument::fromJson(output.sliced(split + 5)).object();
        QCOMPARE(
            report.value(u"verdict"_s).toString(),
            u"Nothing holds a sleep lock, but this computer cannot suspend: suspend.target is masked."_s);
        QStringList titles;
        for (const QJsonValue &f : report.value(u"sleepFindings"_s).toArray())
            titles << f[u"severity"_s].toString() + u": "_s + f[u"title"_s].toString();
        QCOMPARE(titles,
                 (QStringList{
                     u"likely: This computer cannot suspend: suspend.target is masked"_s,
                     u"info: Suspend here is suspend-to-idle only"_s,
                     u"info: Lid Tester decides what closing the lid does"_s,
                     u"info: systemd-logind will suspend the computer after 20 minutes without input"_s}));
    }
};

QTEST_GUILESS_MAIN(TestSleepCheck)
#include "tst_sleepcheck.moc"
