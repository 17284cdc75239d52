#include "platform/RunningApps.h"

#import <AppKit/AppKit.h>

namespace lullwick::RunningApps {

QList<RunningAppInfo> current(const QString &)
{
    QList<RunningAppInfo> apps;
    @autoreleasepool {
        for (NSRunningApplication *app in NSWorkspace.sharedWorkspace.runningApplications) {
            // Regular: a Dock icon and menus. Accessory and background-only processes never
            // put up the save prompt that stops a restart.
            if (app.activationPolicy != NSApplicationActivationPolicyRegular)
                continue;
            RunningAppInfo info;
            info.name = app.localizedName ? QString::fromNSString(app.localizedName) : QString();
            if (app.bundleIdentifier)
                info.bundleID = QString::fromNSString(app.bundleIdentifier);
            info.pid = app.processIdentifier;
            apps.append(std::move(info));
        }
    }
    return apps;
}

std::optional<QString> ownIdentifier()
{
    @autoreleasepool {
        NSString *identifier = NSBundle.mainBundle.bundleIdentifier;
        if (!identifier)
            return std::nullopt;
        return QString::fromNSString(identifier);
    }
}

} // namespace lullwick::RunningApps
