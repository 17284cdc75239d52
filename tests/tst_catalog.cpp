#include "catalog/ProcessCatalog.h"

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
        QTest::addRow("mixed-case key") << u"itunes"_s << u"iTunes is playing"_s;
        QTest::addRow("underscore continues") << u"mdworker_shared"_s << u"Spotlight is processing a file"_s;
        QTest::addRow("hyphen continues") << u"mdworker-x"_s << u"Spotlight is processing a file"_s;
        QTest::addRow("letter does not continue") << u"mdworkers"_s << QString();
        QTest::addRow("space does not continue") << u"Spotify Helper"_s << QString();
        QTest::addRow("first part of a hyphenated key") << u"channels"_s << QString();
        QTest::addRow("leading space is not trimmed") << u" smbd"_s << QString();
        QTest::addRow("key later in the name") << u"com.apple.mds"_s << QString();
        // "mds" comes first in the table and is also continued by these names.
        QTest::addRow("exact key beats a shorter key")
            << u"mds_stores"_s << u"Spotlight is writing its index"_s;
        QTest::addRow("longest continued key wins")
            << u"mds_stores_x"_s << u"Spotlight is writing its index"_s;
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
};

QTEST_APPLESS_MAIN(TestCatalog)
#include "tst_catalog.moc"
