#include "FakeToolDir.h"
#include "Fixtures.h"
#include "restart/RestartModel.h"
#include "restart/RestartView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

constexpr int waitMs = 20'000;

QString textOf(const QWidget *scope, const QString &objectName)
{
    const auto *label = scope->findChild<QLabel *>(objectName);
    return label && label->isVisibleTo(scope) ? label->text() : QString();
}

QStringList visibleTexts(const QWidget *scope, const QString &objectName)
{
    QStringList texts;
    for (const QLabel *label : scope->findChildren<QLabel *>(objectName))
        if (label->isVisibleTo(scope))
            texts.append(label->text());
    return texts;
}

QAbstractButton *buttonOf(const QWidget *scope, const QString &objectName)
{
    return scope->findChild<QAbstractButton *>(objectName);
}

} // namespace

class TestRestartView : public QObject {
    Q_OBJECT

    const QString shots = QStringLiteral(LULLWICK_SCREENSHOT_DIR);
    FakeToolDir m_fake;
    QTemporaryDir m_reports;
    QList<RunningAppInfo> m_apps{{u"TextEdit"_s, u"com.apple.TextEdit"_s, 301},
                                 {u"Preview"_s, u"com.apple.Preview"_s, 302},
                                 {u"Pages"_s, u"com.apple.iWork.Pages"_s, 303}};

    void screenshot(RestartView &view, const QString &name)
    {
        QTest::qWait(20); // let layouts and palette changes settle
        QVERIFY(view.widget()->grab().save(shots + u'/' + name + u".png"_s));
    }

    bool settle(const RestartModel &model)
    {
        return QTest::qWaitFor([&] { return !model.isAnalyzing() && !model.isDecoding(); }, waitMs);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir().mkpath(shots));
        QVERIFY(m_fake.isValid() && m_reports.isValid());
    }

    void aWholeSession()
    {
        m_fake.setOutputFromFixture(u"assertions"_s, u"assertions-software-update.txt"_s);
        m_fake.setOutputFromFixture(u"log"_s, u"loginwindow-compact.txt"_s);
        m_fake.setOutputFromFixture(u"spindump"_s, u"spindump-decoded.txt"_s);
        m_fake.setSleep(u"log"_s, 0.3);
        QFile report(m_reports.filePath(u"loginwindow_2026-11-19-220531_Mac.shutdownStall"_s));
        QVERIFY(report.open(QIODevice::WriteOnly));
        RestartModel model([this] { return m_apps; }, m_fake.pmsetPath(), m_fake.logPath(),
                           m_fake.spindumpPath(), m_reports.path());
        RestartView view(&model);
        view.resize(720, 1300);
        view.show();
        QVERIFY(QTest::qWaitForWindowActive(&view));

        QAbstractButton *analyze = buttonOf(&view, u"analyzeButton"_s);
        QCOMPARE(analyze->text(), u"Analyze"_s);
        QVERIFY(!textOf(&view, u"analyzeHint"_s).isEmpty());
        QVERIFY(!view.findChild<QWidget *>(u"verdictLabel"_s)->isVisibleTo(&view));
        screenshot(view, u"restart-before-analysis"_s);

        // The shortcut starts the analysis (after the button's brief pressed look).
        QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(model.isAnalyzing());
        QVERIFY(!analyze->isEnabled());
        QCOMPARE(textOf(&view, u"analyzeProgressText"_s), u"Reading pmset, scanning loginwindow logs…"_s);
        QVERIFY(textOf(&view, u"analyzeHint"_s).isNull());
        QVERIFY(!view.findChild<QWidget *>(u"verdictLabel"_s)->isVisibleTo(&view));
        screenshot(view, u"restart-first-analysis"_s);

        QVERIFY(settle(model));
        QCOMPARE(analyze->text(), u"Analyze again"_s);
        QVERIFY(textOf(&view, u"checkedLabel"_s).startsWith(u"Checked "_s));
        QCOMPARE(textOf(&view, u"verdictLabel"_s), u"Found a likely cause that's holding up restart."_s);
        QCOMPARE(visibleTexts(&view, u"severityTag"_s),
                 (QStringList{u"Likely"_s, u"Possible"_s, u"Possible"_s, u"For reference"_s}));
        QCOMPARE(buttonOf(&view, u"decodeButton"_s)->text(), u"Decode latest stall report"_s);
        QCOMPARE(buttonOf(&view, u"revealButton"_s)->text(), u"Reveal report"_s);
        QVERIFY(textOf(&view, u"decodedProcessLabel"_s).isNull());
        screenshot(view, u"restart-all-findings"_s);

        QTest::mouseClick(buttonOf(&view, u"decodeButton"_s), Qt::LeftButton);
        QVERIFY(settle(model));
        QCOMPARE(textOf(&view, u"decodedProcessLabel"_s),
                 u"Process that hung the shutdown: backupd [1180]"_s);
        QCOMPARE(buttonOf(&view, u"decodeButton"_s)->text(), u"Decode again"_s);
        screenshot(view, u"restart-decoded"_s);

        // Every button is named for assistive technology by its visible label.
        for (const QAbstractButton *button : view.findChildren<QAbstractButton *>())
            if (button->isVisibleTo(&view))
                QCOMPARE(button->accessibleName(), button->text());

        const QPalette light = QApplication::palette();
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(0x1e, 0x1e, 0x1e));
        dark.setColor(QPalette::WindowText, QColor(0xf0, 0xf0, 0xf0));
        dark.setColor(QPalette::Base, QColor(0x28, 0x28, 0x28));
        dark.setColor(QPalette::Button, QColor(0x3a, 0x3a, 0x3a));
        dark.setColor(QPalette::ButtonText, QColor(0xf0, 0xf0, 0xf0));
        QApplication::setPalette(dark);
        screenshot(view, u"restart-decoded-dark"_s);
        QApplication::setPalette(light);

        // Only the running apps are left: a green verdict over one blue card.
        m_fake.setOutput(u"assertions"_s, "Listed by owning process:\n");
        m_fake.setExitStatus(u"log"_s, 1);
        QVERIFY(QFile::remove(report.fileName()));
        analyze->click();
        QVERIFY(settle(model));
        QCOMPARE(textOf(&view, u"verdictLabel"_s),
                 u"No obvious restart blocker found. If restart still hangs, it's most likely an app with an "
                 u"unsaved document."_s);
        QCOMPARE(visibleTexts(&view, u"severityTag"_s), QStringList{u"For reference"_s});
        QCOMPARE(visibleTexts(&view, u"findingTitle"_s),
                 QStringList{u"3 apps are open and will be asked to quit"_s});
        QVERIFY(!buttonOf(&view, u"decodeButton"_s) ||
                !buttonOf(&view, u"decodeButton"_s)->isVisibleTo(&view));
        screenshot(view, u"restart-running-apps-only"_s);
    }
};

QTEST_MAIN(TestRestartView)
#include "tst_restartview.moc"
