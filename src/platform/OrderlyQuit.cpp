#include "platform/OrderlyQuit.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace lullwick {

namespace {

constexpr std::array handledSignals{SIGTERM, SIGINT, SIGHUP};

// The handler may only do async-signal-safe work: it writes the signal's number into a pipe
// that the event loop watches (the self-pipe trick; signalfd exists on Linux only).
int pipeFds[2] = {-1, -1};

extern "C" void onTerminationSignal(int signal)
{
    const int savedErrno = errno;
    const unsigned char number = static_cast<unsigned char>(signal);
    [[maybe_unused]] const ssize_t written = ::write(pipeFds[1], &number, 1);
    errno = savedErrno;
}

bool makePipe()
{
    if (::pipe(pipeFds) != 0)
        return false;
    for (const int fd : pipeFds) {
        // Not inherited by the tools we start; a full pipe drops a signal instead of blocking.
        ::fcntl(fd, F_SETFD, FD_CLOEXEC);
        ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
    }
    return true;
}

} // namespace

OrderlyQuit::OrderlyQuit(QObject *parent) : QObject(parent)
{
    Q_ASSERT(pipeFds[0] == -1);
    if (!makePipe())
        return; // no pipe, no handlers: the signals keep their default effect
    m_notifier = new QSocketNotifier(pipeFds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &OrderlyQuit::readSignal);

    struct sigaction action = {};
    action.sa_handler = onTerminationSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int signal : handledSignals) {
        // A signal ignored when we started stays ignored: nohup's SIGHUP, a background job's SIGINT.
        struct sigaction before = {};
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_IGN)
            continue;
        ::sigaction(signal, &action, nullptr);
        m_taken.append(signal);
    }
}

OrderlyQuit::~OrderlyQuit()
{
    if (!m_notifier)
        return;
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigemptyset(&action.sa_mask);
    for (const int signal : std::as_const(m_taken))
        ::sigaction(signal, &action, nullptr);
    delete m_notifier;
    for (int &fd : pipeFds) {
        ::close(fd);
        fd = -1;
    }
}

void OrderlyQuit::settle()
{
    // A destroyed service has ended its calls; their results wait in the queue of this thread.
    // Delivering them resumes the awaiting tasks, which find their model gone and end; what they
    // leave to deleteLater goes next (only an explicit request deletes outside an event loop).
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void OrderlyQuit::readSignal()
{
    unsigned char number = 0;
    while (::read(pipeFds[0], &number, 1) == 1) {
        // The first signal decides the status; later ones find the quit already under way.
        if (m_received == 0) {
            m_received = number;
            QCoreApplication::exit(128 + m_received);
        }
    }
}

} // namespace lullwick
