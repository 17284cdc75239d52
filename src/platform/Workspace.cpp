#include "platform/Workspace.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>

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

bool open(const OpenTarget &target)
{
    if (!target.program.isEmpty()) {
        // Started on its own, outside the program's process group: it outlives the window and
        // nothing waits for it. Never through a shell: a program path and its arguments.
        return QProcess::startDetached(target.program, target.arguments);
    }
    if (!target.path.isEmpty())
        return openPath(target.path);
    return openUrl(QUrl(target.url, QUrl::StrictMode));
}

void copyPlainText(const QString &text)
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(text);
}

} // namespace lullwick::Workspace
