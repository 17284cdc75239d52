#pragma once

#include <QImage>
#include <QSize>
#include <QString>

namespace lullwick::SystemSymbols {

/// Apple builds only: the system symbol `name` drawn in black on transparent, fitted into
/// `pixelSize`; null when the system has no such symbol.
[[nodiscard]] QImage image(const QString &name, QSize pixelSize);

} // namespace lullwick::SystemSymbols
