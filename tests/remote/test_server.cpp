#include "remote/server.h"
#include "tests/remote/remoteclient.h"
#include "tests/remote/remoteconsole.h"

using namespace mixer;
using namespace remote;

/// The server with clients on the loopback interface.
class TestServer : public QObject
{
    Q_OBJECT

private slots:
    void setsAndAnswers_data();
    void setsAndAnswers();
    void stateAndChanges();
    void movesAreNotEchoed();
    void meters();
    void answersToAnotherPort();
    void twoClientsAndTheWindow();
    void faultyPackets();
    void flood();
    void lostAndReorderedPackets();
    void nobodyAnswersErrors();
    void noPlace();
    void panelDoesNotHearItself();
    void refusingAll();
    void portInUse();
};

namespace {

/// A console with a server on a free port, and two clients.
struct Studio : RemoteConsole
{
    Studio()
    {
        if (!server.listen(Reach::Computer, 0)) qFatal("no server");
        first = std::make_unique<RemoteClient>(server.port());
        second = std::make_unique<RemoteClient>(server.port());
    }

    Server server{store, mixer, presence, panel(), clock};
    std::unique_ptr<RemoteClient> first;
    std::unique_ptr<RemoteClient> second;
};

Argument number(double value)
{
    return float(value);
}

} // namespace

void TestServer::setsAndAnswers_data()
{
    QTest::addColumn<bool>("isNew");
    QTest::newRow("IPv4") << false;
    QTest::newRow("IPv6") << true;
}

void TestServer::setsAndAnswers()
{
    QFETCH(const bool, isNew);
    const QHostAddress address(isNew ? QHostAddress::LocalHostIPv6 : QHostAddress::LocalHost);
    if (!QUdpSocket().bind(address, 0)) QSKIP("This machine has no such address.");
    Studio studio;
    RemoteClient client(studio.server.port(), address);
    client.send("/strip/3/fader", {number(-6)});
    QVERIFY(client.ask("/strip/3/fader") == number(-6));
    client.send("/nowhere", {1});
    QCOMPARE(client.takeError(), "There is no address /nowhere."_s);
    studio.settle();
    QCOMPARE(studio.input(3).fader, std::int8_t{-6});
}

/// The whole state first, then changes of any cause, until the subscription ends.
void TestServer::stateAndChanges()
{
    Studio studio;
    storeVariety(studio.store);
    RemoteClient &client = *studio.first;
    client.send("/subscribe");
    client.settle();
    const auto told = client.values;
    for (const Address &address : addresses()) {
        if (!address.hasValue() || !address.canWrite()) continue;
        QVERIFY2(told.count(address.path), address.path.constData());
        client.send(address.path);
        studio.clock.milliseconds += 5; // fewer than 500 a second
        QCoreApplication::processEvents();
    }
    client.settle();
    QVERIFY(client.values == told);
    client.values.clear();
    client.counts.clear();
    const bool isLinked = isOn(studio.store.values(), pair(9), storage::strip::link);
    studio.mixer.setLinked(pair(9), !isLinked);
    QVERIFY(client.take("/strip/9-10/link") == Argument(int(!isLinked)));
    QCOMPARE(client.counts["/strip/3/fader"], 0);
    studio.scene = 7;
    studio.server.sendScene();
    QVERIFY(client.take("/scene/recall") == Argument(7));
    studio.server.sendEverything();
    QVERIFY(client.take("/strip/16/comp/release") != Argument());
    client.counts.clear();
    studio.clock.milliseconds += Clients::subscription;
    studio.mixer.setPosition(faderOf(track(3)), 200);
    QTest::qWait(0);
    client.settle();
    QCOMPARE(client.counts["/strip/3/fader"], 0);
}

/// The client that moves a fader hears its last value only, when it has stopped; the other one
/// hears every bundle.
void TestServer::movesAreNotEchoed()
{
    Studio studio;
    for (RemoteClient *client : {studio.first.get(), studio.second.get()}) {
        client->send("/subscribe");
        client->settle();
        client->counts.clear();
        client->values.clear();
    }
    for (const double level : {-1.0, -2.0, -3.4}) {
        studio.first->send("/strip/3/fader", {number(level)});
        QVERIFY(studio.second->take("/strip/3/fader") != Argument());
        studio.clock.milliseconds += Clients::settlingTime - 1;
    }
    studio.first->settle();
    QCOMPARE(studio.first->counts["/strip/3/fader"], 0);
    studio.clock.milliseconds += 1;
    QVERIFY(studio.first->take("/strip/3/fader") == number(-3));
    QCOMPARE(studio.first->counts["/strip/3/fader"], 1);
    // What follows from a message is no echo.
    studio.first->send("/strip/3/fader/step", {1});
    QVERIFY(studio.first->take("/strip/3/fader") == number(-2));
}

void TestServer::meters()
{
    Studio studio;
    studio.pass(1000);
    RemoteClient &client = *studio.first;
    client.send("/subscribe/meters");
    client.settle();
    const int before = client.count;
    studio.server.sendMeters();
    QVERIFY(client.take("/reduction") != Argument());
    QCOMPARE(client.count - before, 19); // 16 inputs, the master's sides, the reduction
    const float level = std::get<float>(client.values.at("/strip/1/level"));
    const int gap = studio.presence.meters().readings()[0].gap;
    QVERIFY(gap < 106);
    QCOMPARE(level, -float(gap) / 2);
    client.send("/subscribe/meters", {0});
    client.settle();
    client.counts.clear();
    studio.server.sendMeters();
    client.settle();
    QCOMPARE(client.counts["/strip/1/level"], 0);
}

/// Everything for the first client goes to the port of the second.
void TestServer::answersToAnotherPort()
{
    Studio studio;
    studio.first->send("/subscribe", {int(studio.second->port())});
    QVERIFY(studio.second->take("/strip/16/comp/release") != Argument());
    studio.first->send("/nowhere");
    QCOMPARE(studio.second->takeError(), "There is no address /nowhere."_s);
    studio.first->send("/subscribe", {80});
    QCOMPARE(studio.second->takeError(), "/subscribe takes 1, 0, a port or no value."_s);
    studio.first->receive();
    QCOMPARE(studio.first->count, 0);
}

/// All three change the same values; in the end everyone knows the same.
void TestServer::twoClientsAndTheWindow()
{
    Studio studio;
    for (RemoteClient *client : {studio.first.get(), studio.second.get()})
        client->send("/subscribe");
    for (int round = 0; round < 100; ++round) {
        studio.first->send("/strip/3/fader", {number(-round % 40)});
        studio.second->send("/strip/3/fader", {number(-round % 30)});
        studio.mixer.step(faderOf(track(3)), round % 2 ? 3 : -3);
        studio.first->send("/strip/4/mute", {round % 2});
        studio.mixer.setMute(track(4), round % 3 == 0);
        QCoreApplication::processEvents();
    }
    studio.first->settle();
    studio.second->settle();
    studio.clock.milliseconds += Clients::settlingTime;
    const Argument level = number(
        numberAt(faderOf(track(3)), storedPosition(studio.store.values(), faderOf(track(3)))));
    for (RemoteClient *client : {studio.first.get(), studio.second.get()}) {
        const auto knows = [&] {
            client->receive();
            return client->values["/strip/3/fader"] == level &&
                   client->values["/strip/4/mute"] ==
                       Argument(int(isOn(studio.store.values(), track(4), storage::strip::mute)));
        };
        QTRY_VERIFY_WITH_TIMEOUT(knows(), RemoteClient::patience);
    }
    studio.settle();
    QCOMPARE(studio.differences(), QStringList());
}

void TestServer::faultyPackets()
{
    Studio studio;
    const QByteArray good = writeMessage({"/master/mute", {1}});
    const QByteArray bundle = writeBundles({{"/master/mute", {1}}, {"/nowhere", {1}}}).front();
    const auto before = studio.store.values();
    for (const QByteArray &packet :
         {good.chopped(4), good + "x", bundle.chopped(4), QByteArray(9000, '/'),
          QByteArray("\0", 1)}) {
        studio.first->sendPacket(packet);
        QCOMPARE(studio.first->takeError(), "The packet is not valid OSC or too large."_s);
    }
    QVERIFY(studio.store.values() == before);
    // Messages of a bundle are performed one by one.
    studio.first->sendPacket(bundle);
    QCOMPARE(studio.first->takeError(), "There is no address /nowhere."_s);
    QVERIFY(studio.first->ask("/master/mute") == Argument(1));
}

/// More than the limit is left out with one error, and does not reach another client's limit.
void TestServer::flood()
{
    Studio studio;
    studio.clock.milliseconds = 5000;
    for (int i = 0; i < 3000; ++i) {
        studio.first->send("/strip/3/fader/step", {i % 2 ? 1 : -1});
        if (i % 10 == 0) QCoreApplication::processEvents();
    }
    QCOMPARE(studio.first->takeError(), "More than 500 messages in a second are left out."_s);
    QVERIFY(studio.second->ask("/strip/3/fader") != Argument());
    studio.first->receive();
    QCOMPARE(studio.first->count, 1);
    studio.clock.milliseconds += 1000;
    QVERIFY(studio.first->ask("/strip/3/fader") != Argument());
}

/// Packets may be lost or overtake each other. A new subscription brings the state.
void TestServer::lostAndReorderedPackets()
{
    Studio studio;
    RemoteClient &client = *studio.first;
    client.send("/subscribe", {0}); // overtook the beginning
    client.send("/strip/3/fader", {number(-20)});
    client.send("/strip/3/fader", {number(-10)});
    client.send("/strip/3/fader", {number(-20)}); // sent twice
    client.settle();
    client.values.clear();
    client.send("/subscribe");
    client.settle();
    QVERIFY(client.values["/strip/3/fader"] == number(-20));
    // A client that vanished is sent nothing after its subscription, and takes no place for ever.
    studio.first.reset();
    studio.clock.milliseconds += Clients::silentTime;
    QVERIFY(studio.server.clients().list().empty());
}

/// Two servers that hear each other would send errors for ever.
void TestServer::nobodyAnswersErrors()
{
    Studio studio;
    studio.first->send("/error", {"There is no address /error."_s});
    studio.first->settle();
    QCOMPARE(studio.first->counts["/error"], 0);
}

/// The ninth client is told so once a second, and can start no loop of errors.
void TestServer::noPlace()
{
    Studio studio;
    std::vector<std::unique_ptr<RemoteClient>> others;
    for (int i = 0; i < Clients::most; ++i) {
        others.push_back(std::make_unique<RemoteClient>(studio.server.port()));
        others.back()->send("/subscribe");
        others.back()->settle();
    }
    studio.first->send("/error", {"There are eight clients already."_s});
    for (int i = 0; i < 100; ++i)
        studio.first->sendPacket("x");
    QCOMPARE(studio.first->takeError(), "There are eight clients already."_s);
    others.front()->settle();
    studio.first->receive();
    QCOMPARE(studio.first->count, 1);
}

/// A subscription for the panel's own port would make it perform its own state.
void TestServer::panelDoesNotHearItself()
{
    Studio studio;
    studio.first->send("/subscribe", {int(studio.server.port())});
    QCOMPARE(studio.first->takeError(), "Port %1 is the panel's own."_s.arg(studio.server.port()));
    QVERIFY(studio.server.clients().subscribers().empty());
}

void TestServer::refusingAll()
{
    Studio studio;
    studio.first->send("/subscribe");
    studio.first->settle();
    studio.server.clients().setRefusingAll(true);
    const int before = studio.first->count;
    studio.first->send("/master/mute", {1});
    studio.mixer.setMute(track(3), true);
    studio.server.sendMeters();
    // The second server shows that packets have arrived meanwhile.
    Server other(studio.store, studio.mixer, studio.presence, studio.panel(), studio.clock);
    QVERIFY(other.listen(Reach::Computer, 0));
    RemoteClient(other.port()).settle();
    studio.first->receive();
    QCOMPARE(studio.first->count, before);
    QVERIFY(!isOn(studio.store.values(), master(), storage::strip::mute));
    studio.server.clients().setRefusingAll(false);
    studio.clock.milliseconds += Clients::stateInterval;
    studio.first->values.clear();
    studio.first->send("/subscribe"); // has missed changes, so it is told everything
    QVERIFY(studio.first->take("/strip/3/mute") == Argument(1));
}

void TestServer::portInUse()
{
    Studio studio;
    Server other(studio.store, studio.mixer, studio.presence, studio.panel(), studio.clock);
    for (const Reach reach : {Reach::Computer, Reach::Network}) {
        QVERIFY(!other.listen(reach, studio.server.port()));
        QCOMPARE(other.port(), quint16(0));
    }
    QVERIFY(studio.first->ask("/master/mute") != Argument());
}

QTEST_GUILESS_MAIN(TestServer)
#include "test_server.moc"
