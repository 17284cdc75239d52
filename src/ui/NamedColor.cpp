#include "ui/NamedColor.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace lullwick::NamedColor {

namespace {

struct Hue {
    QRgb light;
    QRgb dark;
};

// The macOS system colours with their dark-appearance variants.
constexpr Hue orangeHue{0xFF9500, 0xFF9F0A};
constexpr Hue greenHue{0x34C759, 0x30D158};
constexpr Hue redHue{0xFF3B30, 0xFF453A};
constexpr Hue blueHue{0x007AFF, 0x0A84FF};

QColor pick(const Hue &hue, bool dark)
{
    return QColor::fromRgb(dark ? hue.dark : hue.light);
}

QColor withAlpha(QColor color, qreal factor)
{
    color.setAlphaF(float(color.alphaF() * factor));
    return color;
}

/// Re-applies a role to its widget's foreground whenever the palette it is read from may differ.
class ForegroundBinding : public QObject {
public:
    ForegroundBinding(QWidget *widget, Role role) : QObject(widget), m_widget(widget), m_role(role)
    {
        setObjectName(QStringLiteral("lullwick-foreground-binding"));
        widget->installEventFilter(this);
    }

    void setRole(Role role)
    {
        m_role = role;
        apply();
    }

    void apply()
    {
        const QColor color = resolve(m_role, basePalette(m_widget));
        QPalette palette = m_widget->palette();
        if (palette.color(QPalette::WindowText) == color && palette.color(QPalette::Text) == color &&
            palette.color(QPalette::ButtonText) == color)
            return;
        for (QPalette::ColorRole target : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(target, color);
        // Setting an equal palette sends no further PaletteChange, so this settles after one round.
        m_widget->setPalette(palette);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_widget) {
            switch (event->type()) {
            case QEvent::PaletteChange:
            case QEvent::ParentChange:
            case QEvent::ApplicationPaletteChange:
                apply();
                break;
            default:
                break;
            }
        }
        return false;
    }

private:
    QWidget *m_widget;
    Role m_role;
};

} // namespace

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightnessF() < 0.5;
}

QColor resolve(Role role, const QPalette &palette)
{
    const bool dark = isDark(palette);
    const QColor text = palette.color(QPalette::WindowText);
    switch (role) {
    case Role::primary:
        return text;
    case Role::secondary:
        return withAlpha(text, 0.55);
    case Role::tertiary:
        return withAlpha(text, 0.30);
    case Role::orange:
        return pick(orangeHue, dark);
    case Role::green:
        return pick(greenHue, dark);
    case Role::red:
        return pick(redHue, dark);
    case Role::blue:
        return pick(blueHue, dark);
    case Role::accent:
        return palette.color(QPalette::Highlight);
    }
    return text;
}

QColor resolve(Role role, const QPalette &palette, qreal opacity)
{
    return withAlpha(resolve(role, palette), opacity);
}

QPalette basePalette(const QWidget *widget)
{
    const QWidget *window = widget->window();
    if (window == widget)
        return QApplication::palette(widget);
    return window->palette();
}

void bindForeground(QWidget *widget, Role role)
{
    for (QObject *child : widget->children()) {
        if (auto *binding = dynamic_cast<ForegroundBinding *>(child)) {
            binding->setRole(role);
            return;
        }
    }
    (new ForegroundBinding(widget, role))->apply();
}

} // namespace lullwick::NamedColor
