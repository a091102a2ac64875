#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QSignalSpy>
#include <QtTest>

#include <functional>

using namespace mixer;

Q_DECLARE_METATYPE(std::function<void(Mixer &)>)

/// The panel with a device that is unplugged and plugged in again, or that fails.
class TestPresence : public QObject
{
    Q_OBJECT

private slots:
    void unplugAndPlugAgain();
    void startWithoutADevice();
    void recoversFromFaults_data();
    void recoversFromFaults();
    void lostCommandsAreSentAgain_data();
    void lostCommandsAreSentAgain();
    void refusedForGood();
    void newValueGetsAllItsAttempts();
    void singleMeterFailure();
    void metersThatFailInARow();
    void powerCycleThatNobodySees();
    void looseCableDuringAFullSend();
    void fewQueriesDuringAFullSend();
    void oneQuestionATick();
    void hangingTransfer();
};

namespace {

/// A cable that loses its contact: for some requests the device has no power.
class LooseCable final : public Transport
{
public:
    explicit LooseCable(std::unique_ptr<Transport> behind) : m_behind(std::move(behind)) {}

    /// Loses the contact after this many messages, until this many requests have failed. Call it
    /// only while hold() of the transport in front is in effect.
    void loosen(simulator::SimulatedTamber &tamber, int messages, int requests)
    {
        m_tamber = &tamber;
        m_requests = requests;
        m_messages = messages;
    }

    int find(TransportContext &context, int index) override
    {
        return counted(m_behind->find(context, index));
    }
    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override
    {
        if (m_messages > 0 && --m_messages == 0) m_tamber->setPlugged(false);
        return counted(m_behind->transferOut(device, request, value, index, length, data));
    }
    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override
    {
        return counted(m_behind->transferIn(device, request, value, index, length, data));
    }
    int sampleRate(TransportContext &device, std::uint32_t &rate) override
    {
        return counted(m_behind->sampleRate(device, rate));
    }

private:
    int counted(int result)
    {
        if (result != 0 && m_requests > 0 && --m_requests == 0) m_tamber->setPlugged(true);
        return result;
    }

    const std::unique_ptr<Transport> m_behind;
    simulator::SimulatedTamber *m_tamber = nullptr;
    int m_messages = 0;
    int m_requests = 0;
};

constexpr int minute = 60 * 1000;
const int wholeState = static_cast<int>(allCommands().size());

} // namespace

void TestPresence::unplugAndPlugAgain()
{
    Console console;
    storeVariety(console.store);
    const QSignalSpy gone(&console.presence, &Presence::disconnected);
    const QSignalSpy back(&console.presence, &Presence::reconnected);
    console.pass(1000);
    console.takeCommands();
    for (int round = 1; round <= 2; ++round) {
        console.setPlugged(false);
        QVERIFY(!console.presence.isAnswering());
        console.pass(minute); // the signal is not repeated
        QCOMPARE(gone.count(), round);
        console.mixer.setMute(track(5), round == 1);
        console.mixer.shift(faderOf(track(3)), -20);
        console.settle(); // these commands fail
        console.setPlugged(true);
        QVERIFY(console.presence.isAnswering());
        QCOMPARE(back.count(), round);
        console.pass(1000);
        QStringList commands = console.takeCommands();
        QCOMPARE(commands.size(), wholeState);
        QCOMPARE(commands.removeDuplicates(), 0);
        QCOMPARE(console.differences(), QStringList());
    }
}

void TestPresence::startWithoutADevice()
{
    Console console(Console::Unplugged);
    const QSignalSpy gone(&console.presence, &Presence::disconnected);
    console.presence.tick();
    QCOMPARE(gone.count(), 1);
    QVERIFY(!console.presence.isAnswering());
    console.setPlugged(true);
    QVERIFY(console.presence.isAnswering());
    QCOMPARE(console.differences(), QStringList());
    QCOMPARE(gone.count(), 1);
}

void TestPresence::recoversFromFaults_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("busy") << static_cast<int>(simulator::Fault::Busy);
    QTest::newRow("short reads") << static_cast<int>(simulator::Fault::ShortRead);
    QTest::newRow("refuses") << static_cast<int>(simulator::Fault::Refused);
    QTest::newRow("garbage") << static_cast<int>(simulator::Fault::Malformed);
}

/// Changes during the fault reach the device when it answers again. There is no disconnection.
void TestPresence::recoversFromFaults()
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
    QTest::addColumn<std::function<void(Mixer &)>>("gesture");
    const auto row = [](const char *name, int tag, const std::function<void(Mixer &)> &gesture) {
        QTest::newRow(name) << tag << gesture;
    };
    row("mute", vxctl::tagMute, [](Mixer &m) { m.setMute(track(7), true); });
    row("phase", vxctl::tagPhase, [](Mixer &m) { m.setPhase(7, true); });
    row("EQ", vxctl::tagEqBand, [](Mixer &m) { m.setEq(track(7), true); });
    row("route", vxctl::tagRouteSource, [](Mixer &m) { m.setLineOut(7, 2); });
    row("true bypass", vxctl::tagTrueBypass, [](Mixer &m) { m.setTrueBypass(true); });
    row("stereo bus", vxctl::tagStereoBus, [](Mixer &m) { m.setStereoBus(false); });
}

/// A command that is lost while other commands succeed is resent alone, a second later.
void TestPresence::lostCommandsAreSentAgain()
{
    QFETCH(int, tag);
    QFETCH(std::function<void(Mixer &)>, gesture);
    Console console;
    console.pass(300);
    console.cable.lose(tag);
    gesture(console.mixer);
    console.pass(500);
    QVERIFY(!console.differences().isEmpty());
    console.cable.lose(0);
    console.takeCommands();
    console.pass(1000);
    QCOMPARE(console.differences(), QStringList());
    QCOMPARE(console.takeCommands().size(), tag == vxctl::tagEqBand ? 4 : 1);
    QVERIFY(!console.presence.isRefusing());
}

/// A command that the device always refuses is resent three times. No other command is resent.
void TestPresence::refusedForGood()
{
    Console console;
    const auto attempts = [&] { return console.cable.lost() / 10; }; // an attempt is ten transfers
    console.pass(300);
    console.takeCommands();
    console.cable.lose(vxctl::tagTrueBypass);
    console.mixer.setTrueBypass(true);
    QList<int> seconds;
    for (int second = 0, before = 0; second < 60; ++second, before = attempts()) {
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

/// The whole state is resent because the device may have restarted.
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

/// The device is switched off and on between two ticks of the panel.
void TestPresence::powerCycleThatNobodySees()
{
    Console console("[Track3]\nMute=true\n");
    console.pass(300);
    console.tamber.setPlugged(false);
    console.tamber.setPlugged(true);
    QVERIFY(!console.input(3).mute);
    console.clock.milliseconds += 1000; // a late tick, but not late enough
    console.pass(100);
    QVERIFY(!console.input(3).mute);
    console.clock.milliseconds += 1300;
    console.pass(100);
    QCOMPARE(console.differences(), QStringList());
}

/// The contact is back before anything asks whether the device is there. What it had received is
/// lost.
void TestPresence::looseCableDuringAFullSend()
{
    for (const int requests : {12, 50}) { // a message is tried ten times
        LooseCable *cable = nullptr;
        const auto wrap = [&](std::unique_ptr<Transport> behind, simulator::DeviceClock &) {
            auto made = std::make_unique<LooseCable>(std::move(behind));
            cable = made.get();
            return made;
        };
        Console console(QByteArray(), wrap);
        storeVariety(console.store);
        console.pass(300);
        {
            const auto lock = console.cable.hold();
            cable->loosen(console.tamber, wholeState / 2, requests);
        }
        console.presence.sendEverything();
        console.settle();
        QVERIFY(console.tamber.isPlugged());
        console.pass(2000);
        QCOMPARE(console.differences(), QStringList());
    }
}

/// Commands of a full send take precedence over meter queries.
void TestPresence::fewQueriesDuringAFullSend()
{
    Console console;
    console.pass(300);
    const QSignalSpy asked(&console.device, &QVXDevice::sig_get_meter);
    const auto lock = console.cable.hold();
    console.presence.sendEverything();
    for (int tick = 0; tick < 14; ++tick) {
        console.clock.milliseconds += 100;
        console.presence.tick();
        console.device.recv_get_meter(true, QByteArray(144, '\0'), 18);
    }
    QCOMPARE(asked.count(), 2);
}

/// A command never waits behind all questions about the identity.
void TestPresence::oneQuestionATick()
{
    Console console;
    // The console itself asks for the name.
    const QSignalSpy rate(&console.device, &QVXDevice::sig_get_sample_rate);
    const QSignalSpy version(&console.device, &QVXDevice::sig_get_version);
    const QSignalSpy build(&console.device, &QVXDevice::sig_get_build);
    const auto questions = [&] { return rate.count() + version.count() + build.count(); };
    console.pass(100);
    QCOMPARE(questions(), 0);
    for (const int asked : {0, 1, 2, 3}) { // the name is the first
        console.presence.askIdentity();    // again before all has been asked
        console.pass(100);
        QCOMPARE(questions(), asked);
    }
    QVERIFY(rate.count() == 1 && version.count() == 1 && build.count() == 1);
    console.pass(1000);
    QCOMPARE(questions(), 5); // name, rate and version of the last call
}

/// The presence reports a transfer that hangs, and resends the whole state afterwards.
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
