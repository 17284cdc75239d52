#pragma once

#include <QString>

namespace lullwick {

/// Why a pmset run failed, with the description the user is shown.
class PMSetError {
public:
    enum Case : quint8 { launchFailed, nonZeroExit };

    /// pmset could not be started; `reason` is the platform's wording.
    [[nodiscard]] static PMSetError makeLaunchFailed(QString reason);
    /// pmset exited with `status`, having written `standardError`.
    [[nodiscard]] static PMSetError makeNonZeroExit(qint32 status, QString standardError);

    [[nodiscard]] Case errorCase() const { return m_case; }
    [[nodiscard]] qint32 exitStatus() const { return m_status; }
    /// The launch failure's reason, or what pmset wrote to its error stream.
    [[nodiscard]] const QString &text() const { return m_text; }

    [[nodiscard]] QString errorDescription() const;

    bool operator==(const PMSetError &) const = default;

private:
    PMSetError(Case c, qint32 status, QString text) : m_case(c), m_status(status), m_text(std::move(text)) {}

    Case m_case;
    qint32 m_status;
    QString m_text;
};

} // namespace lullwick
