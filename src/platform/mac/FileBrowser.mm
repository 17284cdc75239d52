#include "platform/FileBrowser.h"

#import <AppKit/AppKit.h>

namespace lullwick::FileBrowser {

void reveal(const QString &path)
{
    @autoreleasepool {
        NSURL *url = [NSURL fileURLWithPath:path.toNSString()];
        [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ url ]];
    }
}

} // namespace lullwick::FileBrowser
