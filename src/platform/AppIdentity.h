#pragma once

#include <QString>

namespace lullwick::AppIdentity {

/// The program's reverse-DNS identifier: its bundle identifier on Apple, and on Linux its
/// desktop-file id (the installed entry is this name followed by ".desktop").
inline QString identifier()
{
    return QStringLiteral("io.github.lullwick.Lullwick");
}

} // namespace lullwick::AppIdentity
