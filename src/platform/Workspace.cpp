#include "platform/Workspace.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>

namespace lullwick::Workspace {

bool openUrl(const QUrl &url)
{
    return url.isValid() && QDesktopServices::openUrl(url);
}

bool openPath(const QString &path)
{
    // Checked first: on Linux a missing target would otherwise start a helper only to fail.
    return QFileInfo::exists(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void copyPlainText(const QString &text)
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(text);
}

} // namespace lullwick::Workspace
