#include "remote/clients.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace remote;
using Verdict = Clients::Verdict;

/// Who may speak and who is told what, with a clock that is stepped.
class TestClients : public QObject
{
    Q_OBJECT

private slots:
    void computersInTheNetworkAreAskedAboutOnce();
    void questionsAreLimited();
    void answersCanBeTakenBack();
    void refusingAll();
    void eightClients();
    void fiveHundredMessagesASecond();
    void portsDoNotRaiseTheLimit();
    void subscriptionsEnd();
    void movesAreNotEchoed();
    void anotherPortForAnswers();
    void silentClientsLeaveTheList();
};

namespace {

Endpoint local(int port)
{
    return {QHostAddress(QHostAddress::LocalHost), quint16(port)};
}

Endpoint distant(int computer, int port = 9001)
{
    return {QHostAddress("192.0.2.%1"_s.arg(computer)), quint16(port)};
}

struct Fixture
{
    SteppedWallClock clock;
    Clients clients{clock};
};

} // namespace

void TestClients::computersInTheNetworkAreAskedAboutOnce()
{
    Fixture f;
    QCOMPARE(f.clients.admit(local(1)), Verdict::Take);
    QCOMPARE(f.clients.admit({QHostAddress(QHostAddress::LocalHostIPv6), 1}), Verdict::Take);
    QCOMPARE(f.clients.admit(distant(7)), Verdict::Ask);
    QCOMPARE(f.clients.admit(distant(7)), Verdict::Ignore);
    QCOMPARE(f.clients.admit(distant(7, 9002)), Verdict::Ignore);
    f.clients.answer(distant(7).address, Permission::Now);
    QCOMPARE(f.clients.admit(distant(7)), Verdict::Take);
    QCOMPARE(f.clients.admit(distant(7, 9002)), Verdict::Take);
    QCOMPARE(f.clients.admit(distant(8)), Verdict::Ask);
    for (const Permission no : {Permission::Refuse, Permission::Never}) {
        f.clients.answer(distant(8).address, no);
        QCOMPARE(f.clients.admit(distant(8)), Verdict::Ignore);
    }
    QCOMPARE(f.clients.admit({QHostAddress("192.0.2.9"_s), 0}), Verdict::Ignore);
}

/// Forged addresses cannot open any number of boxes.
void TestClients::questionsAreLimited()
{
    Fixture f;
    for (int computer = 1; computer <= Clients::mostQuestions; ++computer)
        QCOMPARE(f.clients.admit(distant(computer)), Verdict::Ask);
    QCOMPARE(f.clients.admit(distant(100)), Verdict::Ignore);
    f.clients.answer(distant(1).address, Permission::Never);
    QCOMPARE(f.clients.admit(distant(100)), Verdict::Ask);
    f.clients.answer(distant(2).address, Permission::Refuse); // the user wants to be left alone
    QCOMPARE(f.clients.admit(distant(101)), Verdict::Ignore);
    f.clock.milliseconds += Clients::quietTime;
    QCOMPARE(f.clients.admit(distant(101)), Verdict::Ask);
}

void TestClients::answersCanBeTakenBack()
{
    Fixture f;
    f.clients.setPermissions({{"192.0.2.7"_s, Permission::Always}});
    QCOMPARE(f.clients.admit(distant(7)), Verdict::Take);
    f.clients.subscribe(distant(7), true);
    f.clients.forget("192.0.2.7"_s);
    QVERIFY(f.clients.list().empty());
    QVERIFY(f.clients.subscribers().empty());
    QCOMPARE(f.clients.admit(distant(7)), Verdict::Ask);
}

void TestClients::refusingAll()
{
    Fixture f;
    f.clients.admit(local(1));
    f.clients.subscribe(local(1), true);
    f.clients.subscribeMeters(local(1), true);
    f.clients.setRefusingAll(true);
    QCOMPARE(f.clients.admit(local(1)), Verdict::Ignore);
    QCOMPARE(f.clients.admit(distant(7)), Verdict::Ignore);
    QVERIFY(f.clients.subscribers().empty() && f.clients.meterSubscribers().empty());
    f.clients.setRefusingAll(false);
    QCOMPARE(f.clients.admit(local(1)), Verdict::Take);
}

/// A subscriber keeps its place; otherwise the client that has been silent longest makes space.
void TestClients::eightClients()
{
    Fixture f;
    for (int port = 1; port <= Clients::most; ++port) {
        QCOMPARE(f.clients.admit(local(port)), Verdict::Take);
        f.clock.milliseconds += 10;
    }
    f.clients.subscribe(local(1), true);
    QCOMPARE(f.clients.admit(local(9)), Verdict::Take);
    const auto clients = f.clients.list();
    QCOMPARE(int(clients.size()), Clients::most);
    QVERIFY(clients[0].endpoint == local(1) && clients[1].endpoint == local(3));
    for (const Client &client : clients)
        f.clients.subscribe(client.endpoint, true);
    QCOMPARE(f.clients.admit(local(10)), Verdict::Full);
    QCOMPARE(f.clients.admit(local(9)), Verdict::Take);
    f.clock.milliseconds += Clients::subscription;
    QCOMPARE(f.clients.admit(local(10)), Verdict::Take);
}

void TestClients::fiveHundredMessagesASecond()
{
    Fixture f;
    f.clock.milliseconds = 5000;
    f.clients.admit(local(1));
    QCOMPARE(f.clients.count(local(1), 499).messages, 499);
    const auto excess = f.clients.count(local(1), 3);
    QCOMPARE(excess.messages, 1);
    QVERIFY(excess.isExceeded);
    f.clock.milliseconds += 999;
    const auto more = f.clients.count(local(1), 1);
    QVERIFY(more.messages == 0 && !more.isExceeded); // one error a second
    f.clock.milliseconds += 1;
    QCOMPARE(f.clients.count(local(1), 1).messages, 1);
}

void TestClients::portsDoNotRaiseTheLimit()
{
    Fixture f;
    int taken = 0;
    for (int port = 1; port <= 10000; ++port) {
        QCOMPARE(f.clients.admit(local(port)), Verdict::Take);
        taken += f.clients.count(local(port), 1).messages;
    }
    QCOMPARE(taken, Clients::most * Clients::perSecond);
}

void TestClients::subscriptionsEnd()
{
    Fixture f;
    const auto isStateSent = [&] { return !f.clients.takeDueStates().empty(); };
    f.clock.milliseconds = 5000;
    f.clients.subscribe(local(1), true); // not in the list
    QVERIFY(!isStateSent());
    f.clients.admit(local(1));
    f.clients.subscribe(local(1), true);
    QVERIFY(isStateSent());
    f.clients.subscribeMeters(local(1), true);
    f.clock.milliseconds += Clients::subscription - 1;
    f.clients.subscribe(local(1), true);
    QVERIFY(!isStateSent()); // renewed: the client has the state
    QCOMPARE(int(f.clients.meterSubscribers().size()), 1);
    f.clock.milliseconds += 1;
    QVERIFY(f.clients.meterSubscribers().empty());
    f.clock.milliseconds += Clients::subscription - 1;
    QVERIFY(f.clients.subscribers().empty());
    f.clients.subscribe(local(1), true);
    QVERIFY(isStateSent());
    f.clients.subscribe(local(1), false);
    QVERIFY(f.clients.subscribers().empty());
    // A client that ends and begins all the time gets the state once a second, and the newest.
    for (int i = 0; i < 1000; ++i) {
        f.clients.subscribe(local(1), i % 2 == 1);
        QVERIFY(!isStateSent() || f.clock.milliseconds % Clients::stateInterval == 0);
    }
    QVERIFY(f.clients.isAnyStateDue());
    f.clock.milliseconds += Clients::stateInterval;
    QVERIFY(isStateSent());
    // After a refusal the client has missed changes, so its next subscription is a new one.
    f.clock.milliseconds += Clients::stateInterval;
    f.clients.setRefusingAll(true);
    f.clients.setRefusingAll(false);
    f.clients.subscribe(local(1), true);
    QVERIFY(isStateSent());
}

void TestClients::movesAreNotEchoed()
{
    Fixture f;
    for (const int port : {1, 2}) {
        f.clients.admit(local(port));
        f.clients.subscribe(local(port), true);
    }
    for (int i = 0; i < 10; ++i) {
        f.clients.noteMove(local(1), "/strip/3/fader");
        f.clock.milliseconds += Clients::settlingTime - 1;
        QVERIFY(f.clients.isMoving(local(1), "/strip/3/fader"));
        QVERIFY(!f.clients.isMoving(local(2), "/strip/3/fader"));
        QVERIFY(!f.clients.isMoving(local(1), "/strip/4/fader"));
        QVERIFY(f.clients.takeStops().empty());
    }
    f.clock.milliseconds += 1;
    const auto stops = f.clients.takeStops();
    QCOMPARE(int(stops.size()), 1);
    QVERIFY(stops[0].client == local(1) && stops[0].address == "/strip/3/fader");
    QVERIFY(f.clients.takeStops().empty());
    QVERIFY(!f.clients.isAnyMoving());
}

/// A client with another port for what it is told is one client, from whichever port it speaks.
void TestClients::anotherPortForAnswers()
{
    Fixture f;
    for (const int port : {1, 2})
        f.clients.admit(local(port));
    QVERIFY(f.clients.replyTo(local(1)) == local(1));
    for (const quint16 port : {3000, 2000}) // the last one counts
        f.clients.subscribe(local(1), true, port);
    QVERIFY(f.clients.replyTo(local(1)) == local(2000));
    f.clients.noteMove(local(1), "/strip/3/fader");
    QVERIFY(f.clients.isMoving(local(1), "/strip/3/fader"));
    f.clients.subscribe(local(2), true, 2000); // renews
    QVERIFY(f.clients.subscribers() == std::vector<Endpoint>{local(1)});
    f.clients.subscribe(local(2), false, 2000);
    QVERIFY(f.clients.subscribers().empty());
}

void TestClients::silentClientsLeaveTheList()
{
    Fixture f;
    f.clients.admit(local(1));
    f.clients.note(local(1), "/undo"_s);
    QCOMPARE(f.clients.list().at(0).last, "/undo"_s);
    f.clock.milliseconds += Clients::silentTime;
    QVERIFY(f.clients.list().empty());
}

QTEST_APPLESS_MAIN(TestClients)
#include "test_clients.moc"
