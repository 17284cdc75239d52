#include "platform/AppcastFeed.h"
#include "platform/linux/FeedUpdater.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace lullwick;

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
        QTest::addRow("a tenth part is newer than a ninth") << "1.10"
                                                            << "1.9" << 1;
        QTest::addRow("missing parts read as zero") << "1.0"
                                                    << "1" << 0;
        QTest::addRow("older major") << "0.9.9"
                                     << "1.0" << -1;
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
        QTest::addColumn<QByteArray>("feedText"); // null: unreachable feed
        QTest::addColumn<QString>("headline");
        QTest::addColumn<QString>("detailStart");
        QTest::addColumn<QString>("downloadPage"); // empty: no download button
        QTest::addRow("newer version, highest of several")
            << feed({"0.1.5", "0.2.0", "0.1.9"}) << "A new version of Lullwick is available."
            << "Lullwick 0.2.0 is available — you have 0.1.0."
            << "https://example.org/lullwick/0.2.0";
        QTest::addRow("same version") << feed({"0.1.0"}) << "You’re up to date."
                                      << "Lullwick 0.1.0 is the newest version available."
                                      << "";
        QTest::addRow("older version") << feed({"0.0.9"}) << "You’re up to date."
                                       << "Lullwick 0.1.0 is the newest version available."
                                       << "";
        QTest::addRow("malformed feed") << QByteArray("<rss><channel><item>") << "Couldn’t check for updates."
                                        << "The update feed at "
                                        << "";
        QTest::addRow("feed without versions") << feed({}) << "Couldn’t check for updates."
                                               << "The update feed at "
                                               << "";
        QTest::addRow("unreachable feed") << QByteArray() << "Couldn’t check for updates."
                                          << "Connection refused"
                                          << "";
    }
    void checkAnswersInItsDialog()
    {
        QFETCH(QByteArray, feedText);
        QFETCH(QString, headline);
        QFETCH(QString, detailStart);
        QFETCH(QString, downloadPage);
        QTemporaryDir dir;
        QUrl url(QStringLiteral("http://127.0.0.1:1/appcast.xml")); // nothing listens on port 1
        if (!feedText.isNull()) {
            QFile file(dir.filePath(QStringLiteral("appcast.xml")));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(feedText) == feedText.size());
            url = QUrl::fromLocalFile(file.fileName());
        }
        FeedUpdater updater(url, QStringLiteral("0.1.0"));
        updater.start();
        updater.checkForUpdates();
        QVERIFY(updater.dialog());
        auto *headlineLabel = updater.dialog()->findChild<QLabel *>(QStringLiteral("updateHeadline"));
        auto *detail = updater.dialog()->findChild<QLabel *>(QStringLiteral("updateDetail"));
        auto *download = updater.dialog()->findChild<QPushButton *>(QStringLiteral("updateDownload"));
        QVERIFY(headlineLabel && detail && download);
        QTRY_COMPARE_WITH_TIMEOUT(headlineLabel->text(), headline, 10'000);
        QVERIFY2(detail->text().startsWith(detailStart), qPrintable(detail->text()));
        QCOMPARE(download->isVisibleTo(updater.dialog()), !downloadPage.isEmpty());
    }

    void unconfiguredBuildSaysSo()
    {
        FeedUpdater updater(QUrl(), QStringLiteral("0.1.0"));
        updater.checkForUpdates();
        QVERIFY(updater.dialog() && updater.dialog()->isVisible());
        QCOMPARE(updater.dialog()->findChild<QLabel *>(QStringLiteral("updateHeadline"))->text(),
                 QStringLiteral("Update checks aren’t available in this build."));
    }
};

QTEST_MAIN(TestUpdater)
#include "tst_updater.moc"
