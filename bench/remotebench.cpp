#include "app/mainwindow.h"
#include "app/nativestore.h"
#include "benchmarks.h"
#include "common/constants.h"
#include "remote/oscpackets.h"
#include "report.h"
#include "simulator/simulatedtransport.h"
#include "storage/settings.h"
#include "timedapplication.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

#include <memory>

namespace {

constexpr quint16 port = 39000;
constexpr int perSecond = 500;
constexpr int seconds = 5;

double guiTime()
{
    return static_cast<TimedApplication *>(qApp)->milliseconds();
}

/// A panel on a simulated device that needs no time. The window is shown, as in use.
struct RemotePanel
{
    explicit RemotePanel(bool isOn) : settings(constants::demoOrganisation, "Tamber_Remote")
    {
        leaveAlone(settings);
        QSettings store = nativeStore(QLatin1String(constants::demoOrganisation));
        store.setValue(
            QStringLiteral("Remote/reach"), isOn ? QStringLiteral("computer") : QString());
        store.setValue(QStringLiteral("Remote/port"), port);
        store.sync();
        window = std::make_unique<MainWindow>(settings, transport, demoEdition);
        window->show();
        runEvents(3000);
    }
    ~RemotePanel()
    {
        nativeStore(QLatin1String(constants::demoOrganisation))
            .remove(QStringLiteral("Remote/reach"));
    }

    simulator::RealClock clock;
    simulator::SimulatedTamber tamber{clock};
    simulator::SimulatedTransport transport{tamber};
    Settings settings;
    std::unique_ptr<MainWindow> window;
};

void send(
    QUdpSocket &socket, const QByteArray &address, const std::vector<remote::Argument> &values)
{
    socket.writeDatagram(
        remote::writeMessage({address, values}), QHostAddress(QHostAddress::LocalHost), port);
}

/// Returns the GUI thread's share of the processor while nothing happens, in percent.
double idleLoad()
{
    constexpr int time = 10000; // milliseconds
    const double before = guiTime();
    runEvents(time);
    return 100 * (guiTime() - before) / time;
}

} // namespace

/// Faders are moved by a client, 500 messages a second. The time of all that follows counts:
/// commits, requests, views, repaints, feedback.
void benchRemote()
{
    const RemotePanel panel(true);
    QUdpSocket client;
    client.bind(QHostAddress(QHostAddress::LocalHost), 0);
    send(client, "/subscribe", {});
    runEvents(500);
    int sent = 0;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        const float level = static_cast<float>(-(sent / 2 % 30));
        send(client, sent % 2 ? "/strip/3/fader" : "/strip/4/fader", {level});
        ++sent;
    });
    const double before = guiTime();
    timer.start(1000 / perSecond);
    runEvents(seconds * 1000);
    timer.stop();
    report::figure(
        QStringLiteral("messages a second"), double(sent) / seconds, QStringLiteral("1/s"));
    report::against(
        QStringLiteral("GUI thread, one message of remote control, with repaints"),
        (guiTime() - before) / sent, 2, QStringLiteral("ms"));
}

/// What remote control costs while nobody sends anything.
void benchRemoteIdle()
{
    const double off = [] {
        const RemotePanel panel(false);
        return idleLoad();
    }();
    const RemotePanel panel(true);
    const double on = idleLoad();
    QUdpSocket client;
    client.bind(QHostAddress(QHostAddress::LocalHost), 0);
    send(client, "/subscribe/meters", {});
    const double meters = idleLoad();
    int packets = 0;
    for (; client.hasPendingDatagrams(); ++packets)
        client.receiveDatagram();
    report::figure(QStringLiteral("packets of levels in ten seconds"), packets, QStringLiteral(""));
    report::figure(QStringLiteral("GUI thread, remote control off"), off, QStringLiteral("%"));
    report::figure(QStringLiteral("... on, without a client"), on, QStringLiteral("%"));
    report::against(
        QStringLiteral("... more with levels subscribed"), meters - on, 0.3, QStringLiteral("%"));
}
