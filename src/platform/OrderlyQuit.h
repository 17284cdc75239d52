#pragma once

#include <QList>
#include <QObject>

class QSocketNotifier;

namespace lullwick {

/// Turns SIGTERM, SIGINT and SIGHUP (unless ignored when the program started) into an orderly quit: the event
/// loop ends with status 128 + the signal's number, so everything owned below main() is destroyed as on a
/// normal exit and the services end the tools they are running. One instance at a time.
///
///     QCoreApplication app(argc, argv);
///     OrderlyQuit quit;
///     int status;
///     { Program program; status = app.exec(); }
///     OrderlyQuit::settle();
///     return status;
class OrderlyQuit : public QObject {
    Q_OBJECT

public:
    /// Takes over the three signals until destroyed; create it after the application object.
    explicit OrderlyQuit(QObject *parent = nullptr);
    ~OrderlyQuit() override;
    Q_DISABLE_COPY_MOVE(OrderlyQuit)

    /// Call after the program's objects are gone and the event loop has ended: the tasks that were
    /// awaiting their services hear that the calls ended, and finish, so nothing is left half-done.
    static void settle();

    /// The signal that ended the event loop, or 0.
    [[nodiscard]] int received() const { return m_received; }

private:
    void readSignal();

    QSocketNotifier *m_notifier = nullptr;
    QList<int> m_taken; // the signals we handle; one ignored at start is left alone
    int m_received = 0;
};

} // namespace lullwick
