#include "ui/Icons.h"

#include "platform/SystemSymbols.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QPointer>
#include <QSvgRenderer>

// Resources of a static library must be registered by hand.
static void initIconResources()
{
    Q_INIT_RESOURCE(icons);
}

namespace lullwick::Icons {

namespace {

// The macOS symbol names and the nearest Tabler icon in resources/icons.
const QHash<QString, QString> &tablerFiles()
{
    static const QHash<QString, QString> table{
        {QStringLiteral("moon.zzz"), QStringLiteral("moon")},
        {QStringLiteral("exclamationmark.triangle.fill"), QStringLiteral("alert-triangle-filled")},
        {QStringLiteral("checkmark.circle.fill"), QStringLiteral("circle-check-filled")},
        {QStringLiteral("info.circle.fill"), QStringLiteral("info-circle-filled")},
        {QStringLiteral("info.circle"), QStringLiteral("info-circle")},
        {QStringLiteral("gearshape"), QStringLiteral("settings")},
        {QStringLiteral("chart.line.uptrend.xyaxis"), QStringLiteral("chart-line")},
        {QStringLiteral("list.bullet.rectangle"), QStringLiteral("list-details")},
        {QStringLiteral("exclamationmark.octagon.fill"), QStringLiteral("alert-octagon-filled")},
        {QStringLiteral("magnifyingglass.circle.fill"), QStringLiteral("zoom-filled")},
        {QStringLiteral("magnifyingglass"), QStringLiteral("search")},
        {QStringLiteral("stethoscope"), QStringLiteral("stethoscope")},
        {QStringLiteral("arrow.turn.down.right"), QStringLiteral("corner-down-right")},
        {QStringLiteral("wand.and.stars"), QStringLiteral("wand")},
        {QStringLiteral("folder"), QStringLiteral("folder")},
        {QStringLiteral("restart.circle"), QStringLiteral("refresh")},
        {QStringLiteral("doc.text.magnifyingglass"), QStringLiteral("file-search")},
        {QStringLiteral("doc.on.doc"), QStringLiteral("copy")},
        {QStringLiteral("arrow.clockwise"), QStringLiteral("rotate-clockwise")},
    };
    return table;
}

/// The monochrome SVG text of a Tabler icon; empty for an unknown name.
QByteArray svgText(const QString &symbolName)
{
    static const bool registered = [] {
        initIconResources();
        return true;
    }();
    Q_UNUSED(registered);
    const auto file = tablerFiles().constFind(symbolName);
    if (file == tablerFiles().cend())
        return {};
    QFile svg(QStringLiteral(":/icons/%1.svg").arg(*file));
    return svg.open(QIODevice::ReadOnly) ? svg.readAll() : QByteArray();
}

/// The symbol's shape in opaque black on transparent, `pixels` square.
QImage mask(const QString &symbolName, int pixels)
{
#if defined(Q_OS_MACOS)
    if (QImage system = SystemSymbols::image(symbolName, QSize(pixels, pixels)); !system.isNull())
        return system;
#endif
    // Tabler draws with "currentColor"; Qt 6.4's SVG renderer has no colour context to fill it from.
    QByteArray text = svgText(symbolName);
    if (text.isEmpty())
        return {};
    text.replace("currentColor", "#000000");
    QSvgRenderer renderer(text);
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    return image;
}

/// Tints from the palette at paint time, so a palette change needs no re-creation of the icon.
class TintedIconEngine : public QIconEngine {
public:
    TintedIconEngine(QString symbolName, NamedColor::Role tint, const QWidget *context)
        : m_symbol(std::move(symbolName)), m_tint(tint), m_context(context)
    {}

    QIconEngine *clone() const override { return new TintedIconEngine(m_symbol, m_tint, m_context); }
    QString key() const override { return QStringLiteral("lullwick-tinted"); }
    QString iconName() override { return m_symbol; }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const int side = std::min(rect.width(), rect.height());
        const QPixmap image =
            Icons::pixmap(m_symbol, color(mode), side, painter->device()->devicePixelRatioF());
        painter->drawPixmap(
            QRect(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2, side, side),
            image);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        // Called with the size in device pixels (QIcon::pixmap multiplies by the ratio).
        return Icons::pixmap(m_symbol, color(mode), std::min(size.width(), size.height()), 1.0);
    }

private:
    QColor color(QIcon::Mode mode) const
    {
        const QPalette base =
            m_context ? NamedColor::basePalette(m_context) : QPalette(QGuiApplication::palette());
        QColor c = NamedColor::resolve(m_tint, base);
        if (mode == QIcon::Disabled)
            c.setAlphaF(c.alphaF() * 0.4f);
        return c;
    }

    QString m_symbol;
    NamedColor::Role m_tint;
    QPointer<const QWidget> m_context;
};

} // namespace

QIcon icon(QStringView symbolName, NamedColor::Role tint, const QWidget *context)
{
    if (!tablerFiles().contains(symbolName.toString()))
        return {};
    return QIcon(new TintedIconEngine(symbolName.toString(), tint, context));
}

QPixmap pixmap(QStringView symbolName, const QColor &color, int size, qreal devicePixelRatio)
{
    const int pixels = std::max(1, qRound(size * devicePixelRatio));
    // The colour is part of the key, so a palette change never reuses a pixmap of the old tint.
    const QString key = QStringLiteral("lullwick-icon/%1/%2/%3")
                            .arg(symbolName)
                            .arg(color.rgba(), 8, 16, QLatin1Char('0'))
                            .arg(pixels);
    QPixmap result;
    if (!QPixmapCache::find(key, &result)) {
        QImage image = mask(symbolName.toString(), pixels);
        if (image.isNull())
            return {};
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        painter.end();
        result = QPixmap::fromImage(std::move(image));
        QPixmapCache::insert(key, result);
    }
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

QStringList symbolNames()
{
    QStringList names = tablerFiles().keys();
    names.sort();
    return names;
}

} // namespace lullwick::Icons

namespace lullwick {

IconLabel::IconLabel(QString symbolName, NamedColor::Role tint, QWidget *parent)
    : QWidget(parent), m_symbol(std::move(symbolName)), m_tint(tint)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void IconLabel::setSymbol(QString symbolName, NamedColor::Role tint)
{
    m_symbol = std::move(symbolName);
    m_tint = tint;
    update();
}

QSize IconLabel::sizeHint() const
{
    const int side = fontMetrics().height();
    return {side, side};
}

void IconLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int side = std::min(width(), height());
    const QColor color = NamedColor::resolve(m_tint, NamedColor::basePalette(this));
    painter.drawPixmap(QRect((width() - side) / 2, (height() - side) / 2, side, side),
                       Icons::pixmap(m_symbol, color, side, devicePixelRatioF()));
}

} // namespace lullwick
