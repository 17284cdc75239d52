#include "details/DetailsClipboard.h"

#include "profile/Profile.h"

using namespace Qt::StringLiterals;

namespace lullwick {

QString DetailsClipboard::text(const std::optional<AssertionsSnapshot> &snapshot, const QString &settingsRaw)
{
    QString result = u"=== "_s + Profile::current().details().inhibitorsHeading + u" ===\n"_s;
    // An empty listing is still a listing: only a missing snapshot says "(no output)".
    result += snapshot ? snapshot->rawOutput : u"(no output)\n"_s;
    if (!result.endsWith(u'\n'))
        result += u'\n';
    result += u"\n=== "_s + Profile::current().details().settingsHeading + u" ===\n"_s;
    result += settingsRaw.isEmpty() ? u"(no output)\n"_s : settingsRaw;
    return result;
}

} // namespace lullwick
