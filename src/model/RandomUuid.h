#pragma once

#include <QUuid>

namespace lullwick {

/// A fresh random (version 4) UUID for a record. Ids only tell records of one reading apart,
/// so a fast seeded generator serves; a system-entropy call per record would dominate parsing.
[[nodiscard]] QUuid newRandomUuid();

} // namespace lullwick
