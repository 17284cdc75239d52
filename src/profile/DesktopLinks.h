#pragma once

#include "platform/OpenTarget.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>

namespace lullwick {

/// An installed desktop entry that may stand for a link or the process viewer, and the desktops
/// (XDG_CURRENT_DESKTOP names) it belongs to; empty: any desktop.
struct DesktopCandidate {
    QStringList desktops;
    QString id; ///< desktop-file id without ".desktop"
};

/// One of the Summary page's settings links: a fixed URL, or the first installed desktop entry.
struct SettingsLinkSpec {
    QString label;
    QString url;
    QList<DesktopCandidate> candidates;
};

/// Where one system's program sends the user next: its settings links and process viewer, fixed
/// (the Mac's) or picked from the installed desktop entries (a Linux desktop's).
struct DesktopLinks {
    QList<SettingsLinkSpec> links;
    QList<DesktopCandidate> viewers;
    bool pickFromDesktop = false; ///< links and viewer from installed desktop entries, not fixed ones
    std::optional<OpenTarget> fixedViewer;

    /// The Mac's System Settings panes and Activity Monitor.
    [[nodiscard]] static DesktopLinks mac();
    /// Each Linux desktop's own settings pages and process viewers.
    [[nodiscard]] static DesktopLinks linuxDesktops();

    /// The links to show and the viewer: the fixed ones, or those that the entries under
    /// `folders` (applications folders, in order of precedence) provide, preferring those of
    /// `desktops`.
    [[nodiscard]] std::pair<QList<OpenTarget>, std::optional<OpenTarget>>
    pick(const QStringList &desktops, const QStringList &folders) const;
};

} // namespace lullwick
