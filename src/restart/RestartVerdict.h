#pragma once

#include "model/RestartAnalysis.h"

#include <QString>

namespace lullwick {

/// The one-sentence judgement over an analysis, shared by the Restart tab and its clipboard text.
class RestartVerdict {
public:
    enum Case : quint8 { likelyCause, worthChecking, noObviousBlocker };

    /// The first rule that matches: a likely finding, else a possible one, else neither.
    [[nodiscard]] static RestartVerdict of(const RestartAnalysis &analysis);

    [[nodiscard]] Case verdictCase() const { return m_case; }
    /// The verdict's sentence.
    [[nodiscard]] QString text() const;

private:
    explicit RestartVerdict(Case c) : m_case(c) {}
    Case m_case;
};

} // namespace lullwick
