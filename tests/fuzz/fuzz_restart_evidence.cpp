// Feeds arbitrary bytes to the two readers of the Linux restart evidence, the stand-in's lines and
// the journal's entries: they must never crash, and whatever they make must stay on its lines.

#include "restart/InhibitorEvidence.h"
#include "restart/LastShutdownFinding.h"

#include <cstdint>
#include <cstdlib>

using namespace lullwick;

namespace {

bool breaksLines(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), qsizetype(size));

    const InhibitorEvidence evidence = InhibitorEvidence::parse(bytes);
    for (const InhibitorEvidence::ShutdownLock &lock : evidence.shutdownLocks) {
        if (breaksLines(lock.who) || breaksLines(lock.why) || breaksLines(lock.processName) || lock.pid < 0)
            std::abort();
    }
    for (const InhibitorEvidence::LogoutInhibitor &inhibitor : evidence.logoutInhibitors) {
        if (breaksLines(inhibitor.appId) || breaksLines(inhibitor.reason) || inhibitor.pid < 0)
            std::abort();
    }

    if (const std::optional<RestartFinding> finding = LastShutdownFinding::fromJournal(bytes)) {
        // One title line; the detail is its lead, an empty line and a short list.
        if (breaksLines(finding->title) || finding->detail.count(u'\n') > 9)
            std::abort();
    }
    return 0;
}
