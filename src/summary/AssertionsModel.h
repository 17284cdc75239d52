#pragma once

#include "model/AssertionsSnapshot.h"
#include "profile/ToolPaths.h"
#include "sleep/SleepCheck.h"
#include "summary/ResolvedNames.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>
#include <memory>
#include <optional>

namespace lullwick {

class PMSetService;
class SerialWorker;

/// The latest reading of the power assertions and the settings text, kept on the UI thread.
/// Every setter that receives an equal value notifies nobody.
class AssertionsModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(std::optional<lullwick::AssertionsSnapshot> snapshot READ snapshot NOTIFY snapshotChanged)
    Q_PROPERTY(QString settingsRaw READ settingsRaw NOTIFY settingsRawChanged)
    Q_PROPERTY(std::optional<QString> lastError READ lastError NOTIFY lastErrorChanged)
    Q_PROPERTY(bool isFetching READ isFetching NOTIFY isFetchingChanged)
    Q_PROPERTY(lullwick::ResolvedNames resolvedNames READ resolvedNames NOTIFY resolvedNamesChanged)
    Q_PROPERTY(bool showNonBlockedFirst READ showNonBlockedFirst WRITE setShowNonBlockedFirst NOTIFY
                   showNonBlockedFirstChanged)

public:
    /// With `sleepCheck`, every reading runs it too, on a worker of its own beside pmset's.
    explicit AssertionsModel(QString pmsetPath = ToolPaths::pmset(), QString psPath = ToolPaths::ps(),
                             std::optional<SleepCheck> sleepCheck = std::nullopt, QObject *parent = nullptr);
    ~AssertionsModel() override;

    [[nodiscard]] const std::optional<AssertionsSnapshot> &snapshot() const { return m_snapshot; }
    [[nodiscard]] const QString &settingsRaw() const { return m_settingsRaw; }
    [[nodiscard]] const std::optional<QString> &lastError() const { return m_lastError; }
    [[nodiscard]] bool isFetching() const { return m_isFetching; }
    [[nodiscard]] const ResolvedNames &resolvedNames() const { return m_resolvedNames; }
    [[nodiscard]] bool showNonBlockedFirst() const { return m_showNonBlockedFirst; }
    void setShowNonBlockedFirst(bool value);
    /// What the last sleep check found; nothing before the first one, or without a sleep check.
    [[nodiscard]] const std::optional<SleepFindings> &sleepFindings() const { return m_sleepFindings; }

    /// Takes a new reading: assertions, settings text, then the created-for process names.
    /// Failures end up in `lastError`. Refreshes asked for while one runs queue behind it, and
    /// `isFetching` stays true until the last has ended.
    void refresh();

Q_SIGNALS:
    void snapshotChanged();
    void settingsRawChanged();
    void lastErrorChanged();
    void isFetchingChanged();
    void resolvedNamesChanged();
    void showNonBlockedFirstChanged();
    void sleepFindingsChanged();

private:
    friend class AssertionsModelFeeder; // tests and benchmarks hand in readings without running pmset

    QCoro::Task<void> runRefresh();
    QCoro::Task<void> resolveCreatedForPIDs(AssertionsSnapshot snapshot);

    /// Stores `value` and emits `changed`, unless the property already holds an equal value.
    template <typename T> void assign(T &property, T value, void (AssertionsModel::*changed)());
    void setSnapshot(AssertionsSnapshot snapshot);
    void setSettingsRaw(QString text);
    void setLastError(std::optional<QString> error);
    void setIsFetching(bool value);
    void setResolvedNames(ResolvedNames names);
    void storeResolvedName(qint64 pid, QString name);
    void setSleepFindings(SleepFindings findings);

    std::optional<AssertionsSnapshot> m_snapshot;
    QString m_settingsRaw;
    std::optional<QString> m_lastError;
    bool m_isFetching = false;
    int m_refreshesUnderWay = 0;
    ResolvedNames m_resolvedNames;
    bool m_showNonBlockedFirst = true;
    std::optional<SleepFindings> m_sleepFindings;
    std::optional<SleepCheck> m_sleepCheck;
    std::unique_ptr<PMSetService> m_service;
    std::unique_ptr<SerialWorker> m_sleepWorker; // destroyed first: its call reads m_sleepCheck
};

} // namespace lullwick
