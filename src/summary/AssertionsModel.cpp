#include "summary/AssertionsModel.h"

#include "platform/SerialWorker.h"
#include "pmset/PMSetService.h"

#include <QCoroFuture>
#include <QCoroSignal>
#include <QCoroTask>
#include <QFutureWatcher>
#include <QPointer>

namespace lullwick {

namespace {

/// Waits until `future` has ended, cancelled or not. Awaiting a cancelled QFuture directly would
/// resume at once, while its task may still be running on the service's worker.
template <typename T> QCoro::Task<void> untilEnded(QFuture<T> future)
{
    if (future.isFinished())
        co_return;
    QFutureWatcher<T> watcher;
    watcher.setFuture(future);
    co_await qCoro(&watcher, &QFutureWatcherBase::finished);
}

} // namespace

AssertionsModel::AssertionsModel(QString pmsetPath, QString psPath, std::optional<SleepCheck> sleepCheck,
                                 QObject *parent)
    : QObject(parent), m_sleepCheck(std::move(sleepCheck)),
      m_service(std::make_unique<PMSetService>(std::move(pmsetPath), std::move(psPath)))
{
    if (m_sleepCheck)
        m_sleepWorker = std::make_unique<SerialWorker>();
}

AssertionsModel::~AssertionsModel() = default;

void AssertionsModel::refresh()
{
    runRefresh();
}

QCoro::Task<void> AssertionsModel::runRefresh()
{
    // The model can go away while a step is awaited; every resumption checks first.
    const QPointer<AssertionsModel> self(this);

    ++m_refreshesUnderWay;
    setIsFetching(true);
    QFuture<PMSetService::Result<AssertionsSnapshot>> assertionsRead = m_service->fetchAssertions();
    QFuture<PMSetService::Result<QString>> settingsRead = m_service->fetchSettings();
    // The sleep check runs beside pmset, on its own worker, so a reading waits for the slower of
    // the two rather than for both.
    QFuture<SleepFindings> sleepRead;
    if (m_sleepWorker)
        sleepRead = m_sleepWorker->run(
            [check = *m_sleepCheck](const std::atomic<bool> &stop) { return check.run(stop); });

    PMSetService::Result<AssertionsSnapshot> assertions = co_await assertionsRead;
    if (!self)
        co_return;

    if (const auto *error = std::get_if<PMSetError>(&assertions)) {
        const QString description = error->errorDescription();
        settingsRead.cancel(); // skipped by the service if it hasn't started yet
        co_await untilEnded(settingsRead);
        if (!self)
            co_return;
        setLastError(description);
        setIsFetching(--m_refreshesUnderWay > 0);
        co_return;
    }

    setSnapshot(std::get<AssertionsSnapshot>(std::move(assertions)));

    const PMSetService::Result<QString> settings = co_await settingsRead;
    if (!self)
        co_return;
    // A failed settings read only empties the text; it is not the user's concern.
    const auto *settingsText = std::get_if<QString>(&settings);
    setSettingsRaw(settingsText ? *settingsText : QString());
    setLastError(std::nullopt);
    setResolvedNames({});

    co_await resolveCreatedForPIDs(*m_snapshot);
    if (!self)
        co_return;
    // The check has been running beside pmset and ps all along; it is usually done by now.
    if (m_sleepWorker) {
        co_await untilEnded(sleepRead);
        if (!self)
            co_return;
        if (sleepRead.resultCount() > 0)
            setSleepFindings(sleepRead.result());
    }
    // Busy until the last of overlapping refreshes has ended, not the first.
    setIsFetching(--m_refreshesUnderWay > 0);
}

QCoro::Task<void> AssertionsModel::resolveCreatedForPIDs(AssertionsSnapshot snapshot)
{
    const QPointer<AssertionsModel> self(this);

    QList<qint64> pids;
    QSet<qint64> seen;
    for (const Assertion &a : snapshot.assertions) {
        if (const auto pid = a.createdForPID(); pid && !seen.contains(*pid)) {
            seen.insert(*pid);
            pids.append(*pid);
        }
    }

    // Every look-up is queued at once; the service answers them one by one in request order,
    // so awaiting them in that order takes each name the moment it arrives.
    QList<QFuture<std::optional<QString>>> lookups;
    lookups.reserve(pids.size());
    for (qint64 pid : pids)
        lookups.append(m_service->resolveProcessName(pid));

    for (qsizetype i = 0; i < lookups.size(); ++i) {
        std::optional<QString> name = co_await lookups[i];
        if (!self)
            co_return;
        if (name)
            storeResolvedName(pids[i], std::move(*name));
    }
}

template <typename T> void AssertionsModel::assign(T &property, T value, void (AssertionsModel::*changed)())
{
    if (property == value)
        return;
    property = std::move(value);
    Q_EMIT(this->*changed)();
}

void AssertionsModel::setShowNonBlockedFirst(bool value)
{
    assign(m_showNonBlockedFirst, value, &AssertionsModel::showNonBlockedFirstChanged);
}

void AssertionsModel::setSnapshot(AssertionsSnapshot snapshot)
{
    // Snapshots have no equality: every reading is new (its ids always are).
    m_snapshot = std::move(snapshot);
    Q_EMIT snapshotChanged();
}

void AssertionsModel::setSettingsRaw(QString text)
{
    assign(m_settingsRaw, std::move(text), &AssertionsModel::settingsRawChanged);
}

void AssertionsModel::setLastError(std::optional<QString> error)
{
    assign(m_lastError, std::move(error), &AssertionsModel::lastErrorChanged);
}

void AssertionsModel::setIsFetching(bool value)
{
    assign(m_isFetching, value, &AssertionsModel::isFetchingChanged);
}

void AssertionsModel::setResolvedNames(ResolvedNames names)
{
    assign(m_resolvedNames, std::move(names), &AssertionsModel::resolvedNamesChanged);
}

void AssertionsModel::setSleepFindings(SleepFindings findings)
{
    // Every check makes new ids; findings that say the same things keep the cards shown.
    if (m_sleepFindings && m_sleepFindings->sameAs(findings))
        return;
    m_sleepFindings = std::move(findings);
    Q_EMIT sleepFindingsChanged();
}

void AssertionsModel::storeResolvedName(qint64 pid, QString name)
{
    const auto existing = m_resolvedNames.constFind(pid);
    if (existing != m_resolvedNames.cend() && *existing == name)
        return;
    m_resolvedNames.insert(pid, std::move(name));
    Q_EMIT resolvedNamesChanged();
}

} // namespace lullwick
