#pragma once

#include "summary/AssertionsModel.h"

namespace lullwick {

/// Hands readings to an `AssertionsModel` the way a refresh stores them, without running pmset,
/// so that views can be tested and measured state by state.
class AssertionsModelFeeder {
public:
    explicit AssertionsModelFeeder(AssertionsModel &model) : m_model(model) {}

    void setSnapshot(AssertionsSnapshot snapshot) { m_model.setSnapshot(std::move(snapshot)); }
    void setSettingsRaw(QString text) { m_model.setSettingsRaw(std::move(text)); }
    void setLastError(std::optional<QString> error) { m_model.setLastError(std::move(error)); }
    /// One name arriving, as a look-up stores it.
    void storeResolvedName(qint64 pid, QString name) { m_model.storeResolvedName(pid, std::move(name)); }

private:
    AssertionsModel &m_model;
};

} // namespace lullwick
