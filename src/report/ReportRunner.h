#pragma once

#include "report/ReportOptions.h"

#include <QByteArray>
#include <QCoroTask>
#include <memory>

namespace lullwick {

class AssertionsModel;
class RestartModel;

/// What a report run writes and how it ends.
struct ReportOutcome {
    QByteArray standardOutput;
    QByteArray standardError;
    int exitStatus = ReportOptions::ok;
};

/// Takes a reading the way the window does (a model refresh, with a restart analysis beside it
/// when asked for) and renders it with the window's own clipboard builders or as JSON.
class ReportRunner {
public:
    /// Builds the models; a QCoreApplication must exist, since the tools are found beside it.
    explicit ReportRunner(ReportOptions options);
    ~ReportRunner();
    Q_DISABLE_COPY_MOVE(ReportRunner)

    /// Runs the reading in the caller's event loop; the runner must outlive the task.
    [[nodiscard]] QCoro::Task<ReportOutcome> run();

private:
    [[nodiscard]] ReportOutcome outcome() const;
    [[nodiscard]] QByteArray render() const;

    ReportOptions m_options;
    std::unique_ptr<AssertionsModel> m_assertions;
    std::unique_ptr<RestartModel> m_restart; // only for the restart report
};

} // namespace lullwick
