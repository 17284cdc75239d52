#include "Fixtures.h"
#include "platform/AppcastFeed.h"
#include "platform/linux/FeedUpdater.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

QByteArray feed(const QStringList &versions)
{
    QByteArray items;
    for (const QString &v : versions)
        items += "<item><title>Lullwick " + v.toUtf8() + "</title><link>https://example.org/lullwick/" +
                 v.toUtf8() + "</link><enclosure url=\"https://example.org/Lullwick-" + v.toUtf8() +
                 ".zip\" sparkle:shortVersionString=\"" + v.toUtf8() + "\" sparkle:version=\"9" + v.toUtf8() +
                 "\"/></item>";
    return "<?xml version=\"1.0\"?><rss version=\"2.0\" "
           "xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel>" +
           items + "</channel></rss>";
}

} // namespace

class TestUpdater : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void versionsCompareByNumber_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<int>("order");
        QTest::addRow("a tenth part is newer than a ninth") << u"1.10"_s << u"1.9"_s << 1;
        QTest::addRow("missing parts read as zero") << u"1.0"_s << u"1"_s << 0;
        QTest::addRow("leading zeros read as the number") << u"1.02"_s << u"1.2"_s << 0;
        QTest::addRow("older major") << u"0.9.9"_s << u"1.0"_s << -1;
        QTest::addRow("parts beyond 64 bits")
            << u"1.99999999999999999999"_s << u"1.100000000000000000000"_s << -1;
        QTest::addRow("a beta is older than its release") << u"1.2.0-beta"_s << u"1.2.0"_s << -1;
        QTest::addRow("a beta is older than its release written shorter")
            << u"1.2.0-beta"_s << u"1.2"_s << -1;
        QTest::addRow("a beta is newer than the release before") << u"1.2.0-beta"_s << u"1.1.9"_s << 1;
        QTest::addRow("a candidate is newer than an older minor") << u"1.10rc1"_s << u"1.9"_s << 1;
        QTest::addRow("a candidate is older than its release") << u"1.10rc1"_s << u"1.10"_s << -1;
        QTest::addRow("candidates by number") << u"1.10rc2"_s << u"1.10rc10"_s << -1;
        QTest::addRow("beta before candidate") << u"2.0b3"_s << u"2.0rc1"_s << -1;
        QTest::addRow("numbered beta after the plain one") << u"1.2.0-beta.1"_s << u"1.2.0-beta"_s << 1;
        QTest::addRow("a patch release is newer than a pre-release") << u"1.2.1"_s << u"1.2rc1"_s << 1;
        QTest::addRow("letter case does not matter") << u"1.0-RC1"_s << u"1.0rc1"_s << 0;
    }
    void versionsCompareByNumber()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(int, order);
        QCOMPARE(AppcastFeed::compareVersions(a, b), order);
        QCOMPARE(AppcastFeed::compareVersions(b, a), -order);
    }

    void checkAnswersInItsDialog_data()
    {
        QTest::addColumn<QByteArray>("feedText"); // null: read from the address below instead
        QTest::addColumn<QUrl>("address");
        QTest::addColumn<QString>("headline");
        QTest::addColumn<QString>("detailStart");
        QTest::addColumn<bool>("download");
        const QString upToDate = u"You’re up to date."_s;
        const QString newest = u"Lullwick 0.1.0 is the newest version available."_s;
        const QString failed = u"Couldn’t check for updates."_s;
        QTest::addRow("newer version, highest of several")
            << feed({"0.1.5", "0.2.0", "0.1.9"}) << QUrl() << u"A new version of Lullwick is available."_s
            << u"Lullwick 0.2.0 is available — you have 0.1.0."_s << true;
        QTest::addRow("same version") << feed({"0.1.0"}) << QUrl() << upToDate << newest << false;
        QTest::addRow("older version") << feed({"0.0.9"}) << QUrl() << upToDate << newest << false;
        QTest::addRow("malformed feed")
            << QByteArray("<rss><channel><item>") << QUrl() << failed << u"The update feed at "_s << false;
        QTest::addRow("feed without versions")
            << feed({}) << QUrl() << failed << u"The update feed at "_s << false;
        QTest::addRow("unreachable feed") // nothing listens on port 1
            << QByteArray() << QUrl(u"http://127.0.0.1:1/appcast.xml"_s) << failed << u"Connection refused"_s
            << false;
        QTest::addRow("build without a feed address")
            << QByteArray() << QUrl() << u"Update checks aren’t available in this build."_s
            << u"This copy of Lullwick was built without"_s << false;
    }
    void checkAnswersInItsDialog()
    {
        QFETCH(QByteArray, feedText);
        QFETCH(QUrl, address);
        QFETCH(QString, headline);
        QFETCH(QString, detailStart);
        QFETCH(bool, download);
        QTemporaryDir dir;
        if (!feedText.isNull()) {
            Fixtures::writeFile(dir.filePath(u"appcast.xml"_s), feedText);
            address = QUrl::fromLocalFile(dir.filePath(u"appcast.xml"_s));
        }
        FeedUpdater updater(address, u"0.1.0"_s);
        updater.start();
        updater.checkForUpdates();
        QVERIFY(updater.dialog() && updater.dialog()->isVisible());
        auto *headlineLabel = updater.dialog()->findChild<QLabel *>(u"updateHeadline"_s);
        auto *detail = updater.dialog()->findChild<QLabel *>(u"updateDetail"_s);
        auto *button = updater.dialog()->findChild<QPushButton *>(u"updateDownload"_s);
        QVERIFY(headlineLabel && detail && button);
        QTRY_COMPARE_WITH_TIMEOUT(headlineLabel->text(), headline, 10'000);
        QVERIFY2(detail->text().startsWith(detailStart), qPrintable(detail->text()));
        QCOMPARE(button->isVisibleTo(updater.dialog()), download);
    }
};

QTEST_MAIN(TestUpdater)
#include "tst_updater.moc"
