// Feeds arbitrary bytes to the readers of the Linux restart evidence, the stand-in's lines and the
// journal's entries, and to the reader of the last suspends: they must never crash, and whatever
// they make must stay on its lines.

#include "restart/InhibitorEvidence.h"
#include "restart/LastShutdownFinding.h"
#include "sleep/LastSuspends.h"

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

    // The journal's entries as the last suspends read them: one finding a cause, each on its lines.
    const LastSuspends::Context context{"0f1e2d3c4b5a69788796a5b4c3d2e1f0", {QStringLiteral("XHC0")}, {}};
    const QList<Finding> findings = LastSuspends::fromJournal(bytes, context);
    if (findings.size() > 9)
        std::abort();
    for (const Finding &finding : findings) {
        if (breaksLines(finding.title) || finding.detail.count(u'\n') > 24)
            std::abort();
    }
    return 0;
}
