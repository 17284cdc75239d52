#pragma once

#include <QString>

namespace lullwick::FileBrowser {

/// Opens the system's file browser with the file at `path` selected. Returns at once; on Linux,
/// where no file manager answers the freedesktop call, the file's folder is opened instead.
void reveal(const QString &path);

} // namespace lullwick::FileBrowser
