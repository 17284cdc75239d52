#pragma once

#include "report/ReportOptions.h"

#include <QByteArray>
#include <functional>
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

    /// Starts the reading in the caller's event loop; `done` is called once when it is complete,
    /// and never when the runner is destroyed first (its models take their connections along).
    void start(std::function<void(const ReportOutcome &)> done);

private:
    [[nodiscard]] ReportOutcome outcome() const;
    [[nodiscard]] QByteArray render() const;
    [[nodiscard]] QByteArray metrics() const;
    void finishWhenDone();

    ReportOptions m_options;
    std::unique_ptr<AssertionsModel> m_assertions;
    std::unique_ptr<RestartModel> m_restart; // only for the restart report and the metrics
    std::function<void(const ReportOutcome &)> m_done;
};

} // namespace lullwick
