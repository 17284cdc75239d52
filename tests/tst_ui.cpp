#include "ui/Card.h"
#include "ui/DisclosureGroup.h"
#include "ui/Icons.h"
#include "ui/NamedColor.h"
#include "ui/TextStyle.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QtTest>

using namespace lullwick;
using NamedColor::Role;

namespace {

QPalette darkPalette()
{
    QPalette p;
    p.setColor(QPalette::Window, QColor(0x1e, 0x1e, 0x1e));
    p.setColor(QPalette::WindowText, QColor(0xf0, 0xf0, 0xf0));
    return p;
}

} // namespace

class TestUi : public QObject {
    Q_OBJECT

private slots:
    // Every symbol name the program uses draws, in exactly the tint asked for.
    void everySymbolHasATintedIcon()
    {
        const QStringList used =
            QStringLiteral("moon.zzz exclamationmark.triangle.fill checkmark.circle.fill info.circle.fill "
                           "info.circle gearshape chart.line.uptrend.xyaxis list.bullet.rectangle "
                           "exclamationmark.octagon.fill magnifyingglass.circle.fill magnifyingglass "
                           "stethoscope arrow.turn.down.right wand.and.stars folder restart.circle "
                           "doc.text.magnifyingglass doc.on.doc arrow.clockwise")
                .split(u' ');
        QCOMPARE(Icons::symbolNames().size(), used.size());
        const QColor tint(0x12, 0x34, 0x56);
        for (const QString &name : used) {
            const QImage image = Icons::pixmap(name, tint, 16, 2.0).toImage();
            QVERIFY2(image.size() == QSize(32, 32), qPrintable(name));
            int opaque = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (const QColor c = image.pixelColor(x, y); c.alpha() == 255) {
                        ++opaque;
                        QCOMPARE(c.rgb(), tint.rgb());
                    }
            QVERIFY2(opaque > 10, qPrintable(name));
        }
        QVERIFY(Icons::icon(u"no.such.symbol").isNull());
    }

    void colorsFollowThePalette()
    {
        QWidget window;
        auto *label =
            TextStyle::label(QStringLiteral("Careful"), TextStyle::Style::callout, Role::orange, {}, &window);
        QCOMPARE(label->palette().color(QPalette::WindowText), QColor(0xFF9500));
        QCOMPARE(TextStyle::font(TextStyle::Style::callout).pointSizeF(),
                 QGuiApplication::font().pointSizeF() * 12 / 13);

        window.setPalette(darkPalette());
        QVERIFY(NamedColor::isDark(window.palette()));
        QCOMPARE(label->palette().color(QPalette::WindowText), QColor(0xFF9F0A));
        QCOMPARE(NamedColor::resolve(Role::secondary, window.palette()).alphaF(), 0.55f);
        // The icon engine reads the palette when it draws, so the same QIcon re-tints.
        const QIcon gear = Icons::icon(u"gearshape", Role::primary, label);
        const auto strongest = [](const QImage &image) { // the colour of the most opaque pixel
            QColor best(Qt::transparent);
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (image.pixelColor(x, y).alpha() > best.alpha())
                        best = image.pixelColor(x, y);
            return best.rgb();
        };
        const auto near = [](QRgb a, QRgb b) { // premultiplied pixels round by one step
            return std::abs(qRed(a) - qRed(b)) <= 1 && std::abs(qGreen(a) - qGreen(b)) <= 1 &&
                   std::abs(qBlue(a) - qBlue(b)) <= 1;
        };
        QVERIFY(near(strongest(gear.pixmap(32, 1.0).toImage()), qRgb(0xf0, 0xf0, 0xf0)));
        window.setPalette(QPalette());
        QVERIFY(
            near(strongest(gear.pixmap(32, 1.0).toImage()), QPalette().color(QPalette::WindowText).rgb()));
    }

    void disclosureGroupWorksFromTheKeyboard()
    {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        auto *group = new DisclosureGroup(QStringLiteral("Display sleep"));
        auto *field = new QLineEdit;
        group->setContent(field);
        auto *after = new QLineEdit;
        layout->addWidget(group);
        layout->addWidget(after);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(group->header()->accessibleName(), QStringLiteral("Display sleep"));
        QSignalSpy toggled(group, &DisclosureGroup::toggled);

        group->header()->setFocus();
        QTest::keyClick(group->header(), Qt::Key_Space);
        QCOMPARE(toggled.size(), 1);
        QCOMPARE(toggled.at(0).at(0).toBool(), false);
        QVERIFY(!field->isVisible());
        QTest::keyClick(group->header(), Qt::Key_Tab); // closed content is skipped
        QVERIFY(after->hasFocus());

        group->header()->setFocus();
        QTest::keyClick(group->header(), Qt::Key_Return);
        QCOMPARE(toggled.size(), 2);
        QVERIFY(field->isVisible());
        QTest::keyClick(group->header(), Qt::Key_Tab);
        QVERIFY(field->hasFocus());

        group->setExpanded(false); // the caller's state: shown, not reported
        QCOMPARE(toggled.size(), 2);
        QVERIFY(!field->isVisible());
    }
};

QTEST_MAIN(TestUi)
#include "tst_ui.moc"
