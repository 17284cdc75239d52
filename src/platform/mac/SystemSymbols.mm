#include "platform/SystemSymbols.h"

#import <AppKit/AppKit.h>

namespace lullwick::SystemSymbols {

QImage image(const QString &name, QSize pixelSize)
{
    @autoreleasepool {
        NSImage *symbol = [NSImage imageWithSystemSymbolName:name.toNSString() accessibilityDescription:nil];
        if (!symbol || pixelSize.isEmpty())
            return {};
        QImage result(pixelSize, QImage::Format_ARGB32_Premultiplied);
        result.fill(Qt::transparent);
        CGColorSpaceRef space = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
        CGContextRef context = CGBitmapContextCreate(result.bits(), result.width(), result.height(), 8,
                                                     result.bytesPerLine(), space,
                                                     kCGImageAlphaPremultipliedFirst | kCGBitmapByteOrder32Host);
        CGColorSpaceRelease(space);
        if (!context)
            return {};
        [NSGraphicsContext saveGraphicsState];
        NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context flipped:NO];
        // Symbols are template images (black on transparent); keep their aspect ratio, centred.
        const NSSize size = symbol.size;
        const CGFloat scale = MIN(pixelSize.width() / size.width, pixelSize.height() / size.height);
        const NSRect target = NSMakeRect((pixelSize.width() - size.width * scale) / 2,
                                         (pixelSize.height() - size.height * scale) / 2, size.width * scale,
                                         size.height * scale);
        [symbol drawInRect:target fromRect:NSZeroRect operation:NSCompositingOperationSourceOver fraction:1.0];
        [NSGraphicsContext restoreGraphicsState];
        CGContextRelease(context);
        return result;
    }
}

} // namespace lullwick::SystemSymbols
