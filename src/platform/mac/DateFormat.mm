#include "platform/DateFormat.h"

#import <Foundation/Foundation.h>

namespace lullwick::DateFormat {

namespace {

QString format(const QDateTime &instant, NSDateFormatterStyle dateStyle, const Setting &setting)
{
    @autoreleasepool {
        NSDateFormatter *formatter = [[NSDateFormatter alloc] init];
        formatter.dateStyle = dateStyle;
        formatter.timeStyle = NSDateFormatterMediumStyle;
        if (!setting.localeId.isEmpty())
            formatter.locale = [NSLocale localeWithLocaleIdentifier:@(setting.localeId.constData())];
        if (!setting.timeZoneId.isEmpty())
            formatter.timeZone = [NSTimeZone timeZoneWithName:@(setting.timeZoneId.constData())];
        NSDate *date = [NSDate dateWithTimeIntervalSince1970:instant.toMSecsSinceEpoch() / 1000.0];
        return QString::fromNSString([formatter stringFromDate:date]);
    }
}

} // namespace

QString completeDateTime(const QDateTime &instant, const Setting &setting)
{
    return format(instant, NSDateFormatterFullStyle, setting);
}

QString standardTime(const QDateTime &instant, const Setting &setting)
{
    return format(instant, NSDateFormatterNoStyle, setting);
}

} // namespace lullwick::DateFormat
