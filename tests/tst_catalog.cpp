#include "catalog/ProcessCatalog.h"

#include <QSet>
#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;
using lullwick::ProcessCatalog;

namespace {

// Every key of the table, as it is written there (one of them mixed-case).
// clang-format off
const QStringList allKeys{
    u"caffeinate"_s, u"coreaudiod"_s, u"backupd"_s, u"backupd-helper"_s, u"mds"_s, u"mdworker"_s,
    u"mds_stores"_s, u"smbd"_s, u"windowserver"_s, u"powerd"_s, u"softwareupdated"_s, u"mobileassetd"_s,
    u"apsd"_s, u"bluetoothd"_s, u"hidd"_s, u"locationd"_s, u"assertiond"_s, u"runningboardd"_s,
    u"nsurlsessiond"_s, u"screensharingd"_s, u"ardagent"_s, u"distnoted"_s, u"spotify"_s, u"music"_s,
    u"iTunes"_s, u"vlc"_s, u"quicktime player"_s, u"iina"_s, u"zoom"_s, u"zoom.us"_s,
    u"discord"_s, u"facetime"_s, u"obs"_s, u"channels-dvr"_s};
// clang-format on

} // namespace

class TestCatalog : public QObject {
    Q_OBJECT

private slots:
    void lookup_data();
    void lookup();
    void fullTexts_data();
    void fullTexts();
    void typographicCharactersSurvive();
    void everyKeyResolvesToItsOwnEntry();
    void zoomNamesShareTexts();
};

void TestCatalog::lookup_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("headline"); // null: no entry matches

    const QString none;
    const QString worker = u"Spotlight is processing a file"_s;
    const QString itunes = u"iTunes is playing"_s;
    const QString zoom = u"Zoom call is active"_s;
    const QString channels = u"Channels DVR is serving or recording"_s;
    const QString index = u"Spotlight is writing its index"_s;
    const QString helper = u"Time Machine helper is mid-backup"_s;

    QTest::addRow("mixed-case name, lower-case key")
        << u"WindowServer"_s << u"Recent keyboard or mouse activity"_s;
    QTest::addRow("key containing a space")
        << u"QuickTime Player"_s << u"QuickTime Player is playing media"_s;
    QTest::addRow("underscore continues a key") << u"mdworker_shared"_s << worker;
    QTest::addRow("hyphen continues a key") << u"mdworker-x"_s << worker;
    QTest::addRow("bare separator still continues a key") << u"mdworker-"_s << worker;
    QTest::addRow("letter does not continue a key") << u"mdworkers"_s << none;
    QTest::addRow("mixed-case key, same case") << u"iTunes"_s << itunes;
    QTest::addRow("mixed-case key, upper case") << u"ITUNES"_s << itunes;
    QTest::addRow("mixed-case key, lower case") << u"itunes"_s << itunes;
    QTest::addRow("dotted key, mixed case") << u"Zoom.us"_s << zoom;
    QTest::addRow("dotted key, exact") << u"zoom.us"_s << zoom;
    QTest::addRow("short zoom key") << u"zoom"_s << zoom;
    QTest::addRow("dot does not continue a key") << u"zoom.x"_s << none;
    QTest::addRow("hyphenated key, exact") << u"channels-dvr"_s << channels;
    QTest::addRow("hyphenated key, continued") << u"channels-dvr-2"_s << channels;
    QTest::addRow("first part of a hyphenated key") << u"channels"_s << none;
    QTest::addRow("leading space is not trimmed") << u" smbd"_s << none;
    QTest::addRow("trailing space is not trimmed") << u"smbd "_s << none;
    QTest::addRow("empty name") << QString() << none;
    QTest::addRow("unknown process") << u"Safari"_s << none;
    QTest::addRow("key later in the name") << u"com.apple.mds"_s << none;
    QTest::addRow("separator before the key") << u"_mds"_s << none;
    QTest::addRow("space does not continue a key") << u"Spotify Helper"_s << none;
    QTest::addRow("exact key beats shorter key plus underscore") << u"mds_stores"_s << index;
    QTest::addRow("exact key, upper case") << u"MDS_STORES"_s << index;
    QTest::addRow("longest continued key wins") << u"mds_stores_x"_s << index;
    QTest::addRow("short key continued") << u"mds_x"_s << u"Spotlight is indexing"_s;
    QTest::addRow("exact key beats shorter key plus hyphen") << u"backupd-helper"_s << helper;
    QTest::addRow("longest continued hyphenated key wins") << u"backupd-helper_2"_s << helper;
    QTest::addRow("short backup key continued") << u"backupd_x"_s << u"Time Machine is running a backup"_s;
}

void TestCatalog::lookup()
{
    QFETCH(QString, name);
    QFETCH(QString, headline);

    const auto info = ProcessCatalog::info(name);
    if (headline.isNull()) {
        if (info)
            QFAIL(qPrintable(u"expected no entry, got: "_s + info->headline));
        return;
    }
    QVERIFY(info);
    QCOMPARE(info->headline, headline);
}

void TestCatalog::fullTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("headline");
    QTest::addColumn<QString>("explanation");
    QTest::addColumn<QString>("callToAction");

    QTest::addRow("quotes and an unspaced em dash")
        << u"coreaudiod"_s << u"An audio device or routing session is active"_s
        << u"Core Audio is macOS’s sound engine. It holds a sleep assertion any time an audio device or virtual routing layer is in use—that includes apps playing audio (Music, Spotify, video calls) AND routing tools like Rogue Amoeba’s ARK/Loopback/SoundSource, BlackHole, Audio Hijack, and similar virtual interfaces. The “Created for PID” line below identifies the actual app responsible."_s
        << u"Check the “Created for” process. If it’s an audio routing tool you intentionally have running, this is expected; otherwise quit or pause the responsible app."_s;
    QTest::addRow("backquotes and arrows")
        << u"backupd"_s << u"Time Machine is running a backup"_s
        << u"`backupd` is Time Machine’s backup daemon. A backup is in progress, being prepared, or being verified."_s
        << u"Let it finish. You can check progress in System Settings → General → Time Machine."_s;
    QTest::addRow("spaced em dash")
        << u"LocationD"_s << u"Location Services is active"_s
        << u"`locationd` is macOS’s Location Services daemon — an app or system feature is using your location."_s
        << u"System Settings → Privacy & Security → Location Services lists what’s using it."_s;
}

void TestCatalog::fullTexts()
{
    QFETCH(QString, name);
    QFETCH(QString, headline);
    QFETCH(QString, explanation);
    QFETCH(QString, callToAction);

    const auto info = ProcessCatalog::info(name);
    QVERIFY(info);
    QCOMPARE(info->headline, headline);
    QCOMPARE(info->explanation, explanation);
    QCOMPARE(info->callToAction, std::optional<QString>(callToAction));
}

// Spelled with escapes so that an editor normalising punctuation in both files cannot hide a change.
void TestCatalog::typographicCharactersSurvive()
{
    const auto audio = ProcessCatalog::info(u"coreaudiod");
    QVERIFY(audio);
    QVERIFY(audio->explanation.contains(u"macOS\u2019s sound"));
    QVERIFY(audio->explanation.contains(u"in use\u2014that includes"));
    QVERIFY(audio->explanation.contains(u"\u201CCreated for PID\u201D"));

    const auto backup = ProcessCatalog::info(u"backupd");
    QVERIFY(backup && backup->callToAction);
    QVERIFY(backup->callToAction->contains(u"Settings \u2192 General \u2192 Time"));
}

void TestCatalog::everyKeyResolvesToItsOwnEntry()
{
    QSet<QString> headlines;
    QSet<QString> explanations;
    for (const QString &key : allKeys) {
        const auto info = ProcessCatalog::info(key);
        QVERIFY2(info, qPrintable(key));
        QVERIFY2(!info->headline.isEmpty() && !info->explanation.isEmpty(), qPrintable(key));
        QVERIFY2(info->callToAction && !info->callToAction->isEmpty(), qPrintable(key));
        headlines.insert(info->headline);
        explanations.insert(info->explanation);

        QVERIFY2(ProcessCatalog::info(key.toUpper()) == info, qPrintable(key));
        QVERIFY2(ProcessCatalog::info(key + u"-x"_s) == info, qPrintable(key));
        QVERIFY2(ProcessCatalog::info(key + u"_x"_s) == info, qPrintable(key));
        // Not "no entry": backupd-helper.x still continues the key "backupd".
        QVERIFY2(ProcessCatalog::info(key + u".x"_s) != info, qPrintable(key));
        QVERIFY2(!ProcessCatalog::info(u"x"_s + key), qPrintable(key));
    }
    // Only the two Zoom entries share texts; any other collision means a key reached the wrong entry.
    QCOMPARE(headlines.size(), 33);
    QCOMPARE(explanations.size(), 33);
}

void TestCatalog::zoomNamesShareTexts()
{
    const auto zoom = ProcessCatalog::info(u"zoom");
    const auto zoomUs = ProcessCatalog::info(u"zoom.us");
    QVERIFY(zoom && zoomUs);
    QCOMPARE(*zoomUs, *zoom);
    QCOMPARE(zoom->callToAction, std::optional<QString>(u"End or leave the meeting."_s));
}

QTEST_APPLESS_MAIN(TestCatalog)
#include "tst_catalog.moc"
