#include "pmset/PartialAssertion.h"

#include "model/RandomUuid.h"

namespace lullwick {

void PartialAssertion::appendExtra(QStringView line)
{
    if (hasExtras)
        extras.append(u'\n');
    extras.append(line);
    hasExtras = true;
}

Assertion PartialAssertion::materialize() &&
{
    Assertion a;
    a.id = newRandomUuid();
    a.pid = pid;
    a.processName = std::move(processName);
    a.assertionID = std::move(assertionID);
    a.timeHeld = std::move(timeHeld);
    a.kind = AssertionKind::fromRawType(rawType);
    a.namedReason = std::move(namedReason);
    if (hasExtras)
        a.extras = std::move(extras);
    return a;
}

} // namespace lullwick
