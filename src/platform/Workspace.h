#pragma once

#include "platform/OpenTarget.h"

#include <QString>
#include <QUrl>

namespace lullwick::Workspace {

/// Asks the system to open `url` (a settings pane, a web page); false when it could not.
bool openUrl(const QUrl &url);

/// Asks the system to open the application or file at `path`; false when there is nothing there or
/// the system could not open it.
bool openPath(const QString &path);

/// Opens a settings page or an application as `target` says: a URL that does not parse, or an
/// application that is not there, opens nothing. False when nothing was opened.
bool open(const OpenTarget &target);

/// Replaces the clipboard's contents with `text` as plain text.
void copyPlainText(const QString &text);

} // namespace lullwick::Workspace
