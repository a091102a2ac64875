#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QSignalSpy>
#include <QtTest>

using namespace mixer;

/// The panel's life with a device whose cable comes and goes, or that misbehaves.
class TestPresence : public QObject
{
    Q_OBJECT

private slots:
    void unplugAndPlugAgain();
    void startWithoutADevice();
    void troubleIsMadeGood_data();
    void troubleIsMadeGood();
    void lostCommandsAreSentAgain_data();
    void lostCommandsAreSentAgain();
    void refusedForGood();
    void newValueGetsAllItsAttempts();
    void singleMeterFailure();
    void metersThatFailInARow();
    void powerCycleThatNobodySees();
    void fewQueriesDuringAFullSend();
    void hangingTransfer();
};

namespace {

constexpr int minute = 60 * 1000;
const int wholeState = static_cast<int>(allCommands().size());

} // namespace

void TestPresence::unplugAndPlugAgain()
{
    Console console;
    const QSignalSpy gone(&console.presence, &Presence::disconnected);
    const QSignalSpy back(&console.presence, &Presence::reconnected);
    console.pass(1000);
    QCOMPARE(console.takeCommands(), QStringList());
    for (int round = 1; round <= 2; ++round) {
        console.setPlugged(false);
        QVERIFY(!console.presence.isAnswering());
        console.pass(minute); // however long it lasts
        QCOMPARE(gone.count(), round);
        console.mixer.setMute(track(5), round == 1);
        console.mixer.stepFader(track(3), 20);
        console.settle(); // in vain
        console.setPlugged(true);
        QVERIFY(console.presence.isAnswering());
        QCOMPARE(back.count(), round);
        console.pass(1000);
        QCOMPARE(console.takeCommands().size(), wholeState); // once
        QCOMPARE(console.differences(), QStringList());
    }
}

void TestPresence::startWithoutADevice()
{
    simulator::SteppedClock time;
    simulator::SimulatedTamber tamber(time);
    tamber.setPlugged(false);
    simulator::SimulatedTransport cable(tamber);
    CountingClock waits(&time);
    QVXDevice device(cable, waits);
    const storage::Store store;
    Sender sender(store, device);
    SteppedWallClock clock;
    Presence presence(store, device, sender, clock);
    const QSignalSpy gone(&presence, &Presence::disconnected);
    presence.tick();
    QCOMPARE(gone.count(), 1);
    QVERIFY(!presence.isAnswering());
    tamber.setPlugged(true);
    QTRY_VERIFY((presence.tick(), presence.isAnswering()));
    QTRY_COMPARE(differences(tamber.state(), storedState(store.values())), QStringList());
    QCOMPARE(gone.count(), 1);
}

void TestPresence::troubleIsMadeGood_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("busy") << static_cast<int>(simulator::Fault::Busy);
    QTest::newRow("short reads") << static_cast<int>(simulator::Fault::ShortRead);
    QTest::newRow("refuses") << static_cast<int>(simulator::Fault::Refused);
    QTest::newRow("garbage") << static_cast<int>(simulator::Fault::Malformed);
}

/// What was changed meanwhile reaches the device when it answers again, without a box.
void TestPresence::troubleIsMadeGood()
{
    QFETCH(int, fault);
    Console console;
    const QSignalSpy gone(&console.presence, &Presence::disconnected);
    console.pass(300);
    console.tamber.setFault(static_cast<simulator::Fault>(fault));
    console.mixer.setMute(track(7), true);
    console.pass(1000);
    QVERIFY(!console.presence.isAnswering());
    console.mixer.setMute(track(8), true);
    console.pass(minute);
    console.tamber.setFault(simulator::Fault::None);
    console.pass(1000);
    QVERIFY(console.presence.isAnswering());
    QVERIFY(console.input(7).mute && console.input(8).mute);
    QCOMPARE(console.differences(), QStringList());
    QCOMPARE(gone.count(), 0);
}

void TestPresence::lostCommandsAreSentAgain_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<int>("gesture");
    QTest::newRow("mute") << int(vxctl::tagMute) << 0;
    QTest::newRow("phase") << int(vxctl::tagPhase) << 1;
    QTest::newRow("EQ") << int(vxctl::tagEqBand) << 2;
    QTest::newRow("route") << int(vxctl::tagRouteSource) << 3;
    QTest::newRow("true bypass") << int(vxctl::tagTrueBypass) << 4;
    QTest::newRow("stereo bus") << int(vxctl::tagStereoBus) << 5;
}

/// A command that gets lost while all else works is sent again a second later, alone.
void TestPresence::lostCommandsAreSentAgain()
{
    QFETCH(int, tag);
    QFETCH(int, gesture);
    void (*const gestures[])(Mixer &) = {
        [](Mixer &m) { m.setMute(track(7), true); }, [](Mixer &m) { m.setPhase(7, true); },
        [](Mixer &m) { m.setEq(track(7), true); },   [](Mixer &m) { m.setLineOut(7, 2); },
        [](Mixer &m) { m.setTrueBypass(true); },     [](Mixer &m) { m.setStereoBus(false); },
    };
    Console console;
    console.pass(300);
    console.cable.lose(tag);
    gestures[gesture](console.mixer);
    console.pass(500);
    QVERIFY(!console.differences().isEmpty());
    console.cable.lose(0);
    console.takeCommands();
    console.pass(1000);
    QCOMPARE(console.differences(), QStringList());
    QCOMPARE(console.takeCommands().size(), tag == vxctl::tagEqBand ? 4 : 1);
    QVERIFY(!console.presence.isRefusing());
}

/// A command that the device never takes is not sent for ever, and nothing else with it.
void TestPresence::refusedForGood()
{
    Console console;
    const auto attempts = [&] { return console.cable.lost() / 10; }; // each is tried ten times
    console.pass(300);
    console.takeCommands();
    console.cable.lose(vxctl::tagTrueBypass);
    console.mixer.setTrueBypass(true);
    QList<int> seconds;
    for (int second = 0; second < 60; ++second) {
        const int before = attempts();
        console.pass(1000);
        if (attempts() != before) seconds += second;
    }
    QCOMPARE(seconds, (QList<int>{0, 1, 3, 7})); // after 1, 2 and 4 seconds
    QCOMPARE(attempts(), 4);
    QVERIFY(console.presence.isRefusing() && console.presence.isAnswering());
    QCOMPARE(console.takeCommands(), QStringList());

    console.cable.lose(0);
    console.mixer.setTrueBypass(false);
    console.pass(200);
    QVERIFY(!console.presence.isRefusing());
    QCOMPARE(console.differences(), QStringList());
}

void TestPresence::newValueGetsAllItsAttempts()
{
    Console console;
    console.pass(300);
    console.cable.lose(vxctl::tagMute);
    console.mixer.setMute(track(1), true);
    console.pass(20000);
    QVERIFY(console.presence.isRefusing());
    console.mixer.setMute(track(1), false);
    console.mixer.setMute(track(1), true);
    console.pass(500);
    QVERIFY(!console.presence.isRefusing());
    console.cable.lose(0);
    console.pass(4000);
    QCOMPARE(console.differences(), QStringList());
}

void TestPresence::singleMeterFailure()
{
    Console console;
    const QSignalSpy gone(&console.presence, &Presence::disconnected);
    const QSignalSpy status(&console.presence, &Presence::statusChanged);
    console.pass(300);
    console.cable.loseOne(vxctl::tagMeter);
    console.pass(2000);
    QCOMPARE(console.cable.lost(), 10);
    QCOMPARE(console.takeCommands(), QStringList());
    QCOMPARE(gone.count() + status.count(), 0);
}

/// The device may have restarted meanwhile.
void TestPresence::metersThatFailInARow()
{
    Console console;
    console.pass(300);
    console.cable.lose(vxctl::tagMeter);
    console.pass(1000);
    QVERIFY(!console.presence.isAnswering());
    QCOMPARE(console.takeCommands(), QStringList());
    console.cable.lose(0);
    console.pass(1000);
    QVERIFY(console.presence.isAnswering());
    QCOMPARE(console.takeCommands().size(), wholeState);
}

/// The panel stands still while the device is switched off and on.
void TestPresence::powerCycleThatNobodySees()
{
    Console console("[Track3]\nMute=true\n");
    console.pass(300);
    console.tamber.setPlugged(false);
    console.tamber.setPlugged(true);
    QVERIFY(!console.input(3).mute);
    console.clock.milliseconds += 1000; // late, but not so late
    console.pass(100);
    QVERIFY(!console.input(3).mute);
    console.clock.milliseconds += 1300;
    console.pass(100);
    QCOMPARE(console.differences(), QStringList());
}

/// What is being sent comes first.
void TestPresence::fewQueriesDuringAFullSend()
{
    Console console;
    console.pass(300);
    const QSignalSpy asked(&console.device, &QVXDevice::sig_get_meter);
    const auto lock = console.cable.hold();
    console.presence.sendEverything();
    for (int tick = 0; tick < 9; ++tick) {
        console.clock.milliseconds += 100;
        console.presence.tick();
        console.device.recv_get_meter(true, QByteArray(144, '\0'), 18);
    }
    QCOMPARE(asked.count(), 3);
}

/// A transfer that hangs is told, and the state is sent again afterwards.
void TestPresence::hangingTransfer()
{
    Console console;
    console.pass(300);
    {
        const auto held = console.cable.hold();
        QTRY_VERIFY_WITH_TIMEOUT((console.presence.tick(), !console.presence.isAnswering()), 30000);
        console.tamber.setPlugged(false);
        console.tamber.setPlugged(true);
    }
    console.pass(1000);
    QVERIFY(console.presence.isAnswering());
    QCOMPARE(console.differences(), QStringList());
}

QTEST_GUILESS_MAIN(TestPresence)
#include "test_presence.moc"
