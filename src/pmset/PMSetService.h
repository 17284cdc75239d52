#pragma once

#include "model/AssertionsSnapshot.h"
#include "platform/SerialWorker.h"
#include "pmset/PMSetError.h"
#include "pmset/PMSetParser.h"
#include "profile/ToolPaths.h"

#include <QDateTime>
#include <QFuture>
#include <QString>
#include <QStringList>
#include <optional>
#include <variant>

namespace lullwick {

/// The door to the power-management tool: runs pmset and ps one call at a time on a worker
/// thread of its own, and parses the assertions listing.
class PMSetService {
public:
    template <typename T> using Result = std::variant<T, PMSetError>;

    explicit PMSetService(QString pmsetPath = ToolPaths::pmset(), QString psPath = ToolPaths::ps());
    /// Ends the child under way and drops the calls queued behind it; never waits for a tool.
    ~PMSetService();
    Q_DISABLE_COPY_MOVE(PMSetService)

    /// Runs `pmset -g assertions` and parses it, stamped with the instant pmset finished.
    [[nodiscard]] QFuture<Result<AssertionsSnapshot>> fetchAssertions();
    /// Runs `pmset -g` and returns its text unchanged.
    [[nodiscard]] QFuture<Result<QString>> fetchSettings();
    /// The bare executable name of process `pid`, via `ps`; nothing when it can't be found.
    [[nodiscard]] QFuture<std::optional<QString>> resolveProcessName(qint64 pid);

    /// Reads a `pmset -g assertions` listing. Pure; never fails; unreadable lines are skipped.
    [[nodiscard]] static AssertionsSnapshot parse(const QString &output, const QDateTime &capturedAt)
    {
        return PMSetParser::parse(output, capturedAt);
    }

private:
    [[nodiscard]] static Result<QString> runPMSet(const QString &pmsetPath, const QStringList &arguments,
                                                  const std::atomic<bool> &stop);

    const QString m_pmsetPath;
    const QString m_psPath;
    SerialWorker m_worker; // last member: destroyed first, while the paths are still alive
};

} // namespace lullwick
