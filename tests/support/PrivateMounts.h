#pragma once

#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <optional>
#include <unistd.h>

/// Why a test cannot run real system parts in a private mount namespace here (not root, no
/// namespaces allowed, as in a container without CAP_SYS_ADMIN, or one of `needed` missing), or
/// nothing when it can.
inline std::optional<QString> privateMountsUnavailable(const QStringList &needed)
{
    if (::geteuid() != 0)
        return QStringLiteral("needs root for a private mount namespace");
    for (const QString &file : needed + QStringList{QStringLiteral("/usr/bin/unshare")}) {
        if (!QFileInfo::exists(file))
            return file + QStringLiteral(" is not there");
    }
    QProcess probe;
    probe.start(QStringLiteral("/usr/bin/unshare"), {QStringLiteral("-m"), QStringLiteral("--propagation"),
                                                     QStringLiteral("private"), QStringLiteral("/bin/true")});
    if (!probe.waitForFinished(30000) || probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
        return QStringLiteral("no private mount namespace allowed here");
    return std::nullopt;
}
