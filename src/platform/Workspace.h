#pragma once

#include <QString>
#include <QUrl>

namespace lullwick::Workspace {

/// Asks the system to open `url` (a settings pane, a web page); false when it could not.
bool openUrl(const QUrl &url);

/// Asks the system to open the application or file at `path`; false when there is nothing there or
/// the system could not open it.
bool openPath(const QString &path);

/// Replaces the clipboard's contents with `text` as plain text.
void copyPlainText(const QString &text);

} // namespace lullwick::Workspace
