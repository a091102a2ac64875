#include "mixer/sender.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

#include <algorithm>

using namespace mixer;

/// The commands that are sent, and their order.
class TestSender : public QObject
{
    Q_OBJECT

private slots:
    void mutesBeforeLevels();
    void linkingMutesBeforeLevels();
    void linkingSendsNoIntermediateValues();
    void mutesFirstInAFullSend();
    void clicksOvertakeAFullSend();
    void unmutingSendsTheChannelFirst();
    void unmutingWaitsForTheValues();
    void unmutingWaitsForValuesInTheFacade();
    void recallSendsDifferencesOnly();
    void newestValueOnly();
    void busOptionsAreSentBeforeTheyAreStored();
    void heldSenderSendsNothing();
};

namespace {

/// The commands that set levels and mutes of inputs.
QStringList levels(const QStringList &commands)
{
    return commands.filter(QRegularExpression("^(Mute|Fader) of input"_s));
}

void recall(Console &console, const storage::Entries &scene)
{
    console.mixer.recall(storage::Values(scene), "Recall"_s);
}

} // namespace

/// Mutes that go on are sent first, mutes that go off and the bus options last. So no channel is
/// heard with an outdated level.
void TestSender::mutesBeforeLevels()
{
    Console console("[Track1]\nMute=true\nFader_pos=200\n[Misc]\nComputerOutToStereoBus=false\n"
                    "MixerTrueBypass=true\n");
    recall(
        console, {{"Track1/Fader_pos", "150"},
                  {"Track2/Fader_pos", "180"},
                  {"Track16/Mute", "true"},
                  {"Track15/Mute", "true"},
                  {"Track15/Fader_pos", "150"}});
    console.settle();
    const QStringList expected = {"Mute of input 15 on"_s,       "Mute of input 16 on"_s,
                                  "Fader of input 1 to 3 dB"_s,  "Fader of input 2 to -11 dB"_s,
                                  "Fader of input 15 to 3 dB"_s, "Mute of input 1 off"_s,
                                  "Mixer true bypass off"_s,     "Computer out to stereo bus on"_s};
    QCOMPARE(console.takeCommands(), expected);
    QCOMPARE(console.differences(), QStringList());
}

/// The right channel gets the left channel's higher level. It is muted before that.
void TestSender::linkingMutesBeforeLevels()
{
    Console console("[Track5]\nMute=true\nFader_pos=157\n[Track6]\nFader_pos=230\n");
    console.mixer.setLinked(pair(5), true);
    console.settle();
    QCOMPARE(
        levels(console.takeCommands()),
        (QStringList{"Mute of input 6 on"_s, "Fader of input 6 to 0 dB"_s}));

    // When the pair is unlinked, the channel stays muted until its own level is sent.
    recall(console, {{"Track6/Fader_pos", "230"}, {"Track5/Mute", "true"}});
    console.settle();
    QCOMPARE(
        levels(console.takeCommands()),
        (QStringList{"Fader of input 6 to -54 dB"_s, "Mute of input 6 off"_s}));
}

void TestSender::linkingSendsNoIntermediateValues()
{
    Console console("[Track5]\nMute=true\nFader_pos=187\n[Track6]\nMute=true\nFader_pos=187\n");
    console.mixer.setLinked(pair(5), true);
    console.settle();
    // Only the link flag of the compressors changes.
    const QStringList expected = {"Compressor of input 5 off"_s, "Compressor of input 6 off"_s};
    QCOMPARE(console.takeCommands(), expected);
}

/// A device whose channels are open after its start gets the mutes before the levels.
void TestSender::mutesFirstInAFullSend()
{
    Console console("[Track3]\nMute=true\n[Track9]\nMute=true\n[Master]\nMute=true\n");
    console.presence.sendEverything();
    console.settle();
    const QStringList commands = console.takeCommands();
    QStringList first = commands.mid(0, 4);
    first.sort();
    QCOMPARE(
        first, (QStringList{
                   "Mute of input 3 on"_s, "Mute of input 9 on"_s, "Mute of master left on"_s,
                   "Mute of master right on"_s}));
    // The last 16 commands are the mutes that go off and the two bus options.
    QCOMPARE(commands.mid(commands.size() - 16).filter("Mute of input"_s).size(), 14);
}

/// A click during a full send is among the next few commands.
void TestSender::clicksOvertakeAFullSend()
{
    for (const int progress : {0, 20, 70, 150, 155}) { // at last the other mutes are under way
        Console console;
        console.takeCommands();
        console.presence.sendEverything();
        // A click waits for no more than these.
        const std::vector<QVXDevice::Target> commands = mixer::allCommands();
        const auto underWay =
            std::count_if(commands.begin(), commands.end(), [&](const QVXDevice::Target &t) {
                return console.device.isWaiting(t);
            });
        QVERIFY(underWay < 4);
        QStringList sent;
        while ((sent += console.takeCommands()).size() < progress)
            QCoreApplication::processEvents();
        auto lock = console.cable.hold();
        console.mixer.setMute(track(16), true);
        lock.unlock();
        while (!console.input(16).mute)
            QCoreApplication::processEvents();
        const QStringList meanwhile = console.takeCommands();
        QVERIFY2(meanwhile.size() < 6, qPrintable(meanwhile.join(QLatin1Char('\n'))));
        console.settle();
        QCOMPARE(console.differences(), QStringList());
    }
}

/// If the user unmutes a channel during a full send, its pending values are sent before the mute.
void TestSender::unmutingSendsTheChannelFirst()
{
    Console console("[Track16]\nMute=true\nFader_pos=200\nPhase=true\n");
    console.presence.sendEverything();
    console.mixer.setMute(track(16), false);
    console.settle();
    const QStringList commands = console.takeCommands();
    const int unmuted = commands.lastIndexOf("Mute of input 16 off"_s);
    QVERIFY(unmuted >= 0 && unmuted < 60);
    for (const QString &value : commands.filter("input 16 "_s))
        QVERIFY2(commands.lastIndexOf(value) <= unmuted, qPrintable(value));
    QCOMPARE(console.differences(), QStringList());
}

/// A channel is unmuted after its values also if these wait for another command of their kind.
void TestSender::unmutingWaitsForTheValues()
{
    Console console("[Track10]\nMute=true\n");
    console.takeCommands();
    auto lock = console.cable.hold();
    console.mixer.shift(faderOf(track(9)), -20);
    storage::Store scene;
    scene.load(console.store.values());
    storage::Transaction transaction(scene);
    setFader(transaction, track(10), 200);
    setSwitch(transaction, track(10), storage::strip::mute, false);
    transaction.commit();
    console.mixer.recall(scene.values(), "Recall"_s);
    lock.unlock();
    console.settle();
    const QStringList commands = console.takeCommands();
    QCOMPARE(commands.last(), "Mute of input 10 off"_s);
    QCOMPARE(commands.filter("of input 10"_s).size(), 2);
}

/// The values can be in the facade already, behind those of other channels.
void TestSender::unmutingWaitsForValuesInTheFacade()
{
    Console console("[Track16]\nMute=true\n");
    console.takeCommands();
    {
        const auto lock = console.cable.hold();
        for (int input = 1; input <= 16; ++input)
            console.mixer.shift(faderOf(track(input)), -20);
        console.mixer.setMute(track(16), false);
        console.mixer.setMute(track(2), true);
        console.mixer.setMute(track(1), true);
        console.mixer.shift(faderOf(track(1)), 20);
    }
    console.settle();
    const QStringList commands = console.takeCommands();
    const auto last = [&](const char *command) {
        const QStringList all = commands.filter(QLatin1String(command));
        return all.isEmpty() ? -1 : commands.lastIndexOf(all.last());
    };
    QVERIFY(last("Fader of input 16 ") >= 0);
    QVERIFY(last("Mute of input 16 off") > last("Fader of input 16 "));
    QVERIFY(last("Mute of input 1 on") >= 0);
    QVERIFY(last("Fader of input 1 to 0 dB") > last("Mute of input 1 on"));
    QCOMPARE(console.differences(), QStringList());
}

/// A recall sends each changed value once, and no other value.
void TestSender::recallSendsDifferencesOnly()
{
    Console console;
    storeVariety(console.store);
    const storage::Values scene = console.store.values();
    console.settle();
    console.mixer.setLineOut(4, 3);
    console.mixer.setMute(track(4), !isOn(scene, track(4), storage::strip::mute));
    console.mixer.shift(faderOf(track(7)), -20);
    console.settle();
    console.takeCommands();
    console.mixer.recall(scene, "Recall"_s);
    console.settle();
    QCOMPARE(console.takeCommands().size(), 3);
    QCOMPARE(console.differences(), QStringList());
}

/// A drag that is faster than the device sends the last position and few others.
void TestSender::newestValueOnly()
{
    Console console;
    {
        const auto lock = console.cable.hold();
        for (int i = 0; i < 50; ++i) {
            console.mixer.shift(faderOf(track(3)), -1);
            QCoreApplication::processEvents();
        }
    }
    console.settle();
    QVERIFY(console.takeCommands().size() <= 3);
    QCOMPARE(console.differences(), QStringList());
}

/// The bypass first disables the mixer's controls, then sends the option, then stores it.
void TestSender::busOptionsAreSentBeforeTheyAreStored()
{
    Console console;
    QStringList steps;
    connect(&console.mixer, &Mixer::bypassChanging, this, [&](bool bypassed) {
        steps += bypassed ? "disable"_s : "enable"_s;
    });
    const auto note = [&](const char *what, unsigned char on, bool stored) {
        steps += "%1 sent %2, stored %3"_s.arg(QLatin1String(what)).arg(on).arg(stored);
    };
    const auto &store = console.store;
    connect(&console.device, &QVXDevice::sig_set_truebypass, this, [&](unsigned char on) {
        note("bypass", on, store.values().read(storage::trueBypass));
    });
    connect(&console.device, &QVXDevice::sig_set_send_stereobus, this, [&](unsigned char on) {
        note("bus", on, store.values().read(storage::stereoBus));
    });
    console.mixer.setTrueBypass(true);
    console.mixer.setTrueBypass(false);
    console.mixer.setStereoBus(false);
    const QStringList expected = {
        "disable"_s, "bypass sent 1, stored 0"_s, "enable"_s, "bypass sent 0, stored 1"_s,
        "bus sent 0, stored 1"_s};
    QCOMPARE(steps, expected);
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

/// While the sender is held, only queries are sent. It is held while the settings are unreadable.
void TestSender::heldSenderSendsNothing()
{
    Console console;
    console.sender.setHeld(true);
    console.presence.sendEverything();
    console.mixer.setMute(track(3), true);
    console.mixer.setTrueBypass(true);
    console.mixer.setLineOut(3, 1);
    console.pass(500);
    QCOMPARE(console.takeCommands(), QStringList());
    console.sender.setHeld(false);
    console.presence.sendEverything();
    console.settle();
    QCOMPARE(console.differences(), QStringList());
    QVERIFY(console.input(3).mute);
}

QTEST_GUILESS_MAIN(TestSender)
#include "test_sender.moc"
