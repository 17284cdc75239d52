// Feeds arbitrary text to the pmset listing reader: it must never crash, and every record it
// builds must hold together.

#include "pmset/PMSetParser.h"

#include <QDateTime>
#include <cstdint>
#include <cstdlib>

using namespace lullwick;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const AssertionsSnapshot snapshot = PMSetParser::parse(text, QDateTime());
    if (snapshot.rawOutput != text)
        std::abort();

    for (const Assertion &a : snapshot.assertions) {
        (void)a.createdForPID();
        if (a.extras && a.extras->isEmpty())
            std::abort(); // absent, never empty
        if (a.processName.contains(u')') || a.processName.contains(u'\n'))
            std::abort();
    }
    for (SleepKind kind : allSleepKinds) {
        if (snapshot.blockers(kind).size() > snapshot.assertions.size())
            std::abort();
    }
    return 0;
}
