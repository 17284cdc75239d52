// Plays systemd-logind on the bus named by DBUS_SYSTEM_BUS_ADDRESS, and GNOME's session manager
// and KDE's power policy agent on the bus named by DBUS_SESSION_BUS_ADDRESS, for tst_standin;
// PackageKit on the system bus too.
// Prints "ready PID" once its names are taken, PID being a process that has already exited. One
// lock is held by a child named systemd-inhibit, which runs a child named rsync.
// --malformed-logind answers ListInhibitors with a string; --deny-gnome refuses GetInhibitors;
// --silent-gnome never answers the session manager's calls; --slow-gnome answers each after 0.4 s.
// --delay-shutdown holds two delay locks instead of the usual locks, and sets a 30 s delay limit.

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QHash>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

struct Lock {
    QString what, who, why, mode;
    uint uid, pid;
};
struct Inhibition {
    QString application, reason;
};
Q_DECLARE_METATYPE(Lock)
Q_DECLARE_METATYPE(Inhibition)

QDBusArgument &operator<<(QDBusArgument &a, const Lock &l)
{
    a.beginStructure();
    a << l.what << l.who << l.why << l.mode << l.uid << l.pid;
    a.endStructure();
    return a;
}
QDBusArgument &operator<<(QDBusArgument &a, const Inhibition &i)
{
    a.beginStructure();
    a << i.application << i.reason;
    a.endStructure();
    return a;
}
// Only sent, never read; the registration wants both directions.
const QDBusArgument &operator>>(const QDBusArgument &a, Lock &)
{
    return a;
}
const QDBusArgument &operator>>(const QDBusArgument &a, Inhibition &)
{
    return a;
}

/// Answers "PATH MEMBER" with a fixed value, or an error when the answer is an error name.
class FakeObjects : public QDBusVirtualObject {
public:
    QHash<QString, QVariant> answers;
    QString silentUnder; ///< calls to paths under this one get no answer
    QString slowUnder;   ///< calls to paths under this one are answered late

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &call, const QDBusConnection &bus) override
    {
        const auto it = answers.constFind(call.path() + u' ' + call.member());
        if (it == answers.cend())
            return false;
        if (!silentUnder.isEmpty() && call.path().startsWith(silentUnder)) {
            call.setDelayedReply(true); // and never sent
            return true;
        }
        const QDBusMessage reply =
            it->typeId() == QMetaType::QByteArray
                ? call.createErrorReply(QString::fromLatin1(it->toByteArray()), QStringLiteral("no"))
                : call.createReply(*it);
        if (!slowUnder.isEmpty() && call.path().startsWith(slowUnder)) {
            call.setDelayedReply(true);
            QTimer::singleShot(400, [bus, reply] { QDBusConnection(bus).send(reply); });
            return true;
        }
        return bus.send(reply);
    }
};

int main(int argc, char *argv[])
{
    // Forked before Qt starts any thread.
    const pid_t exited = fork();
    if (exited == 0)
        _exit(0);
    waitpid(exited, nullptr, 0);
    // A systemd-inhibit that runs rsync: the lock is its own, the command its child. Both go
    // when we do.
    const pid_t inhibit = fork();
    if (inhibit == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        prctl(PR_SET_NAME, "systemd-inhibit");
        if (fork() == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            prctl(PR_SET_NAME, "rsync");
        }
        for (;;)
            pause();
    }

    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    qDBusRegisterMetaType<Lock>();
    qDBusRegisterMetaType<QList<Lock>>();
    qDBusRegisterMetaType<Inhibition>();
    qDBusRegisterMetaType<QList<Inhibition>>();
    const uint self = uint(QCoreApplication::applicationPid());

    FakeObjects objects;
    auto &a = objects.answers;
    const QString login1 = QStringLiteral("/org/freedesktop/login1");
    a[login1 + " ListInhibitors"] =
        args.contains("--malformed-logind") ? QVariant(QStringLiteral("nonsense"))
        : args.contains("--delay-shutdown")
            ? QVariant::fromValue(QList<Lock>{
                  {"shutdown", "Unattended Upgrades Shutdown", "Stop ongoing upgrades", "delay", 0, self},
                  {"sleep", "NetworkManager", "NetworkManager needs to turn off networks", "delay", 0, self},
              })
            : QVariant::fromValue(QList<Lock>{
                  {"idle", "GNOME Shell", "Playing video", "block", 1000, self},
                  {"sleep", "Backup", "Copying \"photos\" to Bücher – 東京", "block", 0, self},
                  {"sleep", "NetworkManager", "NetworkManager needs to turn off networks", "delay", 0, self},
                  {"shutdown", "apt", "Upgrading packages", "block", 0, self},
                  {"idle:sleep", "old-job", "Left behind", "block", 1000, uint(exited)},
                  {"idle", "rsync -a /home /backup", "Nightly backup", "block", 0, uint(inhibit)},
                  {"sleep", "Updater", "Weak\rhold", "block-weak", 0, self},
              });
    QVariantMap settings{{"IdleAction", "lock"},
                         {"IdleActionUSec", qulonglong(1800000000)},
                         {"HandleLidSwitch", "suspend"},
                         {"IdleHint", false}};
    if (args.contains("--delay-shutdown"))
        settings.insert("InhibitDelayMaxUSec", qulonglong(30000000));
    a[login1 + " GetAll"] = settings;

    const QString gsm = QStringLiteral("/org/gnome/SessionManager");
    a[gsm + " GetInhibitors"] = args.contains("--deny-gnome")
                                    ? QVariant(QByteArray("org.freedesktop.DBus.Error.AccessDenied"))
                                    : QVariant::fromValue(QList<QDBusObjectPath>{
                                          QDBusObjectPath(gsm + "/Inhibitor1"),
                                          QDBusObjectPath(gsm + "/Inhibitor2"),
                                          QDBusObjectPath(gsm + "/Inhibitor3"),
                                          QDBusObjectPath(gsm + "/Inhibitor4"), // released meanwhile
                                          QDBusObjectPath(gsm + "/Inhibitor5"),
                                      });
    const struct {
        int number;
        const char *app, *reason;
        uint flags;
        const char *client; // under the session manager's path; empty: no client
    } inhibitors[] = {{1, "org.gnome.Totem", "Playing a video", 8, "/Client1"},
                      {2, "firefox", "Downloading files", 4, ""},
                      {3, "org.gnome.TextEditor", "Unsaved documents", 1, ""},
                      // Suspend and idle, as video players ask, for a client whose process is unknown.
                      {5, "io.github.celluloid_player.Celluloid", "Watching\ta\033film", 12, "/Client2"}};
    for (const auto &inhibitor : inhibitors) {
        const QString path = gsm + "/Inhibitor" + QString::number(inhibitor.number) + ' ';
        a[path + "GetAppId"] = QString::fromUtf8(inhibitor.app);
        a[path + "GetReason"] = QString::fromUtf8(inhibitor.reason);
        a[path + "GetFlags"] = inhibitor.flags;
        const QString client =
            *inhibitor.client ? gsm + QLatin1String(inhibitor.client) : QStringLiteral("/");
        a[path + "GetClientId"] = QVariant::fromValue(QDBusObjectPath(client));
    }
    a[gsm + "/Client1 GetUnixProcessId"] = uint(getppid()); // the test plays the application
    a[gsm + "/Client2 GetUnixProcessId"] = uint(0);

    if (args.contains("--silent-gnome"))
        objects.silentUnder = gsm;
    if (args.contains("--slow-gnome"))
        objects.slowUnder = gsm;

    const QString agent = QStringLiteral("/org/kde/Solid/PowerManagement/PolicyAgent");
    a[agent + " ListInhibitions"] = QVariant::fromValue(QList<Inhibition>{{"vlc", "Playing media"}});

    // PackageKit: a package update under way, and a cache refresh, which changes no software.
    const QString packageKit = QStringLiteral("/org/freedesktop/PackageKit");
    const QStringList transactions{QStringLiteral("/17_update"), QStringLiteral("/18_refresh")};
    a[packageKit + " GetTransactionList"] = QVariant::fromValue(
        QList<QDBusObjectPath>{QDBusObjectPath(transactions[0]), QDBusObjectPath(transactions[1])});
    a[transactions[0] + " Get"] = QVariant::fromValue(QDBusVariant(uint(22)));
    a[transactions[1] + " Get"] = QVariant::fromValue(QDBusVariant(uint(13)));

    QDBusConnection system = QDBusConnection::systemBus();
    QDBusConnection session = QDBusConnection::sessionBus();
    const bool ok = system.registerVirtualObject(login1, &objects) &&
                    system.registerVirtualObject(packageKit, &objects) &&
                    system.registerVirtualObject(transactions[0], &objects) &&
                    system.registerVirtualObject(transactions[1], &objects) &&
                    system.registerService("org.freedesktop.PackageKit") &&
                    session.registerVirtualObject(gsm, &objects, QDBusConnection::SubPath) &&
                    session.registerVirtualObject(agent, &objects) &&
                    system.registerService("org.freedesktop.login1") &&
                    session.registerService("org.gnome.SessionManager") &&
                    session.registerService("org.kde.Solid.PowerManagement.PolicyAgent");
    if (!ok)
        return 1;
    std::printf("ready %d\n", int(exited));
    std::fflush(stdout);
    return QCoreApplication::exec();
}
