#include "FakeToolDir.h"
#include "restart/RestartModel.h"
#include "restart/RestartView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QtTest>

using namespace lullwick;
using namespace Qt::StringLiterals;

namespace {

/// The texts of the shown labels and buttons of that name, joined by "|".
QString shown(const QWidget *view, const QString &objectName)
{
    QStringList texts;
    for (const QWidget *w : view->findChildren<QWidget *>(objectName)) {
        if (!w->isVisibleTo(view))
            continue;
        if (const auto *label = qobject_cast<const QLabel *>(w))
            texts.append(label->text());
        else if (const auto *button = qobject_cast<const QAbstractButton *>(w))
            texts.append(button->text());
    }
    return texts.join(u'|');
}

} // namespace

class TestRestartView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aWholeSession()
    {
        const QString shots = QStringLiteral(LULLWICK_SCREENSHOT_DIR);
        QVERIFY(QDir().mkpath(shots));
        const auto screenshot = [&](const RestartView &view, const QString &name) {
            QTest::qWait(20); // let layouts and palette changes settle
            QVERIFY(view.widget()->grab().save(shots + u'/' + name + u".png"_s));
        };
        FakeToolDir fake; // its folder holds the stall report too
        fake.setOutputFromFixture(u"assertions"_s, u"assertions-software-update.txt"_s);
        fake.setOutputFromFixture(u"log"_s, u"loginwindow-compact.txt"_s);
        fake.setOutputFromFixture(u"spindump"_s, u"spindump-decoded.txt"_s);
        fake.setSleep(u"log"_s, 0.3);
        QFile report(fake.path() + u"/loginwindow_2026-11-19-220531_Mac.shutdownStall"_s);
        QVERIFY(fake.isValid() && report.open(QIODevice::WriteOnly));
        const QList<RunningAppInfo> apps{
            {u"TextEdit"_s, {}, 301}, {u"Preview"_s, {}, 302}, {u"Pages"_s, {}, 303}};
        RestartModel model([&] { return apps; }, fake.pmsetPath(), fake.logPath(), fake.spindumpPath(),
                           fake.path());
        const auto settled = [&] {
            return QTest::qWaitFor([&] { return !model.isAnalyzing() && !model.isDecoding(); }, 20'000);
        };
        RestartView view(&model);
        view.resize(720, 1300);
        view.show();
        QVERIFY(QTest::qWaitForWindowActive(&view));

        QCOMPARE(shown(&view, u"analyzeButton"_s), u"Analyze"_s);
        QCOMPARE(shown(&view, u"analyzeHint"_s),
                 u"Click Analyze to check what's holding up a restart right now."_s);
        QCOMPARE(shown(&view, u"verdictLabel"_s), QString());
        screenshot(view, u"restart-before-analysis"_s);

        // The shortcut starts the analysis (after the button's brief pressed look).
        QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(model.isAnalyzing());
        QVERIFY(!view.findChild<QAbstractButton *>(u"analyzeButton"_s)->isEnabled());
        QCOMPARE(shown(&view, u"analyzeProgressText"_s), u"Reading pmset, scanning loginwindow logs…"_s);
        QCOMPARE(shown(&view, u"analyzeHint"_s) + shown(&view, u"verdictLabel"_s), QString());
        screenshot(view, u"restart-first-analysis"_s);

        QVERIFY(settled());
        QCOMPARE(shown(&view, u"analyzeButton"_s), u"Analyze again"_s);
        QVERIFY(shown(&view, u"checkedLabel"_s).startsWith(u"Checked "_s));
        QCOMPARE(shown(&view, u"verdictLabel"_s), u"Found a likely cause that's holding up restart."_s);
        QCOMPARE(shown(&view, u"severityTag"_s), u"Likely|Possible|Possible|For reference"_s);
        QCOMPARE(shown(&view, u"decodeButton"_s) + shown(&view, u"revealButton"_s),
                 u"Decode latest stall reportReveal report"_s);
        QCOMPARE(shown(&view, u"decodedProcessLabel"_s), QString());
        screenshot(view, u"restart-all-findings"_s);

        view.findChild<QAbstractButton *>(u"decodeButton"_s)->click();
        QVERIFY(settled());
        QCOMPARE(shown(&view, u"decodedProcessLabel"_s), u"Process that hung the shutdown: backupd [1180]"_s);
        QCOMPARE(shown(&view, u"decodeButton"_s), u"Decode again"_s);
        screenshot(view, u"restart-decoded"_s);
        // Every button is named for assistive technology by its visible label.
        for (const QAbstractButton *button : view.findChildren<QAbstractButton *>())
            QCOMPARE(button->accessibleName(), button->text());

        const QPalette light = QApplication::palette();
        QPalette dark(QColor(0x3a, 0x3a, 0x3a), QColor(0x1e, 0x1e, 0x1e));
        dark.setColor(QPalette::WindowText, QColor(0xf0, 0xf0, 0xf0));
        QApplication::setPalette(dark);
        screenshot(view, u"restart-decoded-dark"_s);
        QApplication::setPalette(light);

        // Only the running apps are left: a green verdict over one blue card.
        fake.setOutput(u"assertions"_s, "Listed by owning process:\n");
        fake.setExitStatus(u"log"_s, 1);
        QVERIFY(report.remove());
        view.findChild<QAbstractButton *>(u"analyzeButton"_s)->click();
        QVERIFY(settled());
        QCOMPARE(shown(&view, u"verdictLabel"_s),
                 u"No obvious restart blocker found. If restart still hangs, "
                 u"it's most likely an app with an unsaved document."_s);
        QCOMPARE(shown(&view, u"severityTag"_s), u"For reference"_s);
        QCOMPARE(shown(&view, u"findingTitle"_s), u"3 apps are open and will be asked to quit"_s);
        QCOMPARE(shown(&view, u"decodeButton"_s), QString());
        screenshot(view, u"restart-running-apps-only"_s);
    }
};

QTEST_MAIN(TestRestartView)
#include "tst_restartview.moc"
