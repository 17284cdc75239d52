#include "catalog/ProcessCatalog.h"

#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;
using lullwick::ProcessCatalog;

class TestCatalog : public QObject {
    Q_OBJECT

private slots:
    void lookup_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("headline"); // null: no entry matches
        QTest::addRow("letter case ignored") << u"WindowServer"_s << u"Recent keyboard or mouse activity"_s;
        QTest::addRow("key with a space") << u"QuickTime Player"_s << u"QuickTime Player is playing media"_s;
        QTest::addRow("underscore continues") << u"mdworker_shared"_s << u"Spotlight is processing a file"_s;
        QTest::addRow("hyphen continues") << u"mdworker-x"_s << u"Spotlight is processing a file"_s;
        QTest::addRow("letter does not continue") << u"mdworkers"_s << QString();
        QTest::addRow("mixed-case key, upper case") << u"ITUNES"_s << u"iTunes is playing"_s;
        QTest::addRow("mixed-case key, lower case") << u"itunes"_s << u"iTunes is playing"_s;
        QTest::addRow("dotted key") << u"Zoom.us"_s << u"Zoom call is active"_s;
        QTest::addRow("short zoom key") << u"zoom"_s << u"Zoom call is active"_s;
        QTest::addRow("hyphenated key") << u"channels-dvr"_s << u"Channels DVR is serving or recording"_s;
        QTest::addRow("first part of a hyphenated key") << u"channels"_s << QString();
        QTest::addRow("leading space is not trimmed") << u" smbd"_s << QString();
        QTest::addRow("empty name") << u""_s << QString();
        QTest::addRow("key later in the name") << u"com.apple.mds"_s << QString();
        QTest::addRow("space does not continue") << u"Spotify Helper"_s << QString();
        QTest::addRow("mds_stores wins") << u"mds_stores"_s << u"Spotlight is writing its index"_s;
        QTest::addRow("backupd-helper wins") << u"backupd-helper"_s << u"Time Machine helper is mid-backup"_s;
    }
    void lookup()
    {
        QFETCH(QString, name);
        QFETCH(QString, headline);
        const auto info = ProcessCatalog::info(name);
        QCOMPARE(info.has_value(), !headline.isNull());
        if (info)
            QCOMPARE(info->headline, headline);
    }

    // Escapes, so that an editor normalising punctuation in both files cannot hide a change.
    void backupEntryKeepsItsTypography()
    {
        const auto info = ProcessCatalog::info(u"backupd");
        QVERIFY(info);
        QCOMPARE(info->headline, u"Time Machine is running a backup"_s);
        QCOMPARE(info->explanation,
                 u"`backupd` is Time Machine\u2019s backup daemon. A backup is in progress, "
                 u"being prepared, or being verified."_s);
        QCOMPARE(info->callToAction, u"Let it finish. You can check progress in System Settings \u2192 "
                                     u"General \u2192 Time Machine."_s);
    }

    void everyKeyHasItsOwnEntry()
    {
        const QStringList keys =
            (u"caffeinate,coreaudiod,backupd,backupd-helper,mds,mdworker,mds_stores,smbd,"
             u"windowserver,powerd,softwareupdated,mobileassetd,apsd,bluetoothd,hidd,locationd,"
             u"assertiond,runningboardd,nsurlsessiond,screensharingd,ardagent,distnoted,"
             u"spotify,music,iTunes,vlc,quicktime player,iina,zoom,zoom.us,discord,facetime,"
             u"obs,channels-dvr"_s)
                .split(u',');
        QSet<QString> headlines;
        for (const QString &key : keys) {
            const auto info = ProcessCatalog::info(key);
            QVERIFY2(info && info->callToAction && !info->callToAction->isEmpty(), qPrintable(key));
            headlines.insert(info->headline);
        }
        // The two Zoom keys share one text; any other collision means a key reached the wrong entry.
        QCOMPARE(headlines.size(), keys.size() - 1);
        QCOMPARE(ProcessCatalog::info(u"zoom"), ProcessCatalog::info(u"zoom.us"));
    }
};

QTEST_APPLESS_MAIN(TestCatalog)
#include "tst_catalog.moc"
