#include "details/DetailsClipboard.h"

using namespace Qt::StringLiterals;

namespace lullwick {

QString DetailsClipboard::text(const std::optional<AssertionsSnapshot> &snapshot, const QString &settingsRaw)
{
    QString result = u"=== pmset -g assertions ===\n"_s;
    // An empty listing is still a listing: only a missing snapshot says "(no output)".
    result += snapshot ? snapshot->rawOutput : u"(no output)\n"_s;
    if (!result.endsWith(u'\n'))
        result += u'\n';
    result += u"\n=== pmset -g ===\n"_s;
    result += settingsRaw.isEmpty() ? u"(no output)\n"_s : settingsRaw;
    return result;
}

} // namespace lullwick
