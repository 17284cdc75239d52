#include "platform/DateFormat.h"

#include <memory>
#include <unicode/udat.h>
#include <unicode/ustring.h>

namespace lullwick::DateFormat {

namespace {

// ICU's full date and medium time styles are what the platform formatter calls the complete
// date and the standard time; ICU also supplies the locale's own joiner (" at " in English)
// and spacing (a narrow no-break space before AM/PM in recent data).
QString format(const QDateTime &instant, UDateFormatStyle dateStyle, const Setting &setting)
{
    const QString zone = QString::fromLatin1(setting.timeZoneId);
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UDateFormat, decltype(&udat_close)> formatter(
        udat_open(UDAT_MEDIUM, dateStyle, setting.localeId.isEmpty() ? nullptr : setting.localeId.constData(),
                  zone.isEmpty() ? nullptr : reinterpret_cast<const UChar *>(zone.utf16()),
                  zone.isEmpty() ? 0 : int32_t(zone.size()), nullptr, 0, &status),
        &udat_close);
    if (U_FAILURE(status))
        return instant.toLocalTime().toString(Qt::TextDate);

    const UDate when = UDate(instant.toMSecsSinceEpoch());
    UChar buffer[128];
    status = U_ZERO_ERROR;
    int32_t length = udat_format(formatter.get(), when, buffer, int32_t(std::size(buffer)), nullptr, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        QString text(length, Qt::Uninitialized);
        status = U_ZERO_ERROR;
        length = udat_format(formatter.get(), when, reinterpret_cast<UChar *>(text.data()), length + 1,
                             nullptr, &status);
        return U_FAILURE(status) ? QString() : text.left(length);
    }
    if (U_FAILURE(status) && status != U_STRING_NOT_TERMINATED_WARNING)
        return QString();
    return QString(reinterpret_cast<const QChar *>(buffer), length);
}

} // namespace

QString completeDateTime(const QDateTime &instant, const Setting &setting)
{
    return format(instant, UDAT_FULL, setting);
}

QString standardTime(const QDateTime &instant, const Setting &setting)
{
    return format(instant, UDAT_NONE, setting);
}

} // namespace lullwick::DateFormat
