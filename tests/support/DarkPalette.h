#pragma once

#include <QColor>
#include <QPalette>

/// A dark palette like the system's dark appearance, for screenshots and colour checks.
inline QPalette darkPalette()
{
    QPalette p(QColor(0x3a, 0x3a, 0x3c), QColor(0x26, 0x26, 0x28));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(role, QColor(0xf0, 0xf0, 0xf0));
    p.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    p.setColor(QPalette::Highlight, QColor(0x0a, 0x84, 0xff));
    return p;
}
