#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

/// What goes over the wire, and in which order.
class TestSender : public QObject
{
    Q_OBJECT

private slots:
    void safeForEars();
    void linkingIsSafeForEars();
    void linkingSendsNothingInBetween();
    void everythingOnce();
    void mutesFirstInAFullSend();
    void clicksDoNotWaitForAFullSend();
    void unmutingTakesItsChannelAlong();
    void recallSendsDifferencesOnly();
    void hiddenStripIsNotSent();
    void newestValueOnly();
    void busOptionsAreSentBeforeTheyAreStored();
    void heldSenderSendsNothing();
};

namespace {

/// Those of the commands that concern levels and mutes of the channels.
QStringList levels(const QStringList &commands)
{
    return commands.filter(QRegularExpression("^(Mute|Fader) of input"_s));
}

void recall(Console &console, const storage::Entries &scene)
{
    console.mixer.recall(storage::Values(scene), "Recall"_s);
}

} // namespace

/// First the mutes that come on, then everything else, then the mutes that go off and the bus
/// options. The values of a change set do not decide.
void TestSender::safeForEars()
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

/// The right channel, at full level from now on, is silent before it gets there.
void TestSender::linkingIsSafeForEars()
{
    Console console("[Track5]\nMute=true\nFader_pos=157\n[Track6]\nFader_pos=230\n");
    console.mixer.setLinked(pair(5), true);
    console.settle();
    QCOMPARE(
        levels(console.takeCommands()),
        (QStringList{"Mute of input 6 on"_s, "Fader of input 6 to 0 dB"_s}));

    // Parted, it stays muted until its own level is there.
    recall(console, {{"Track6/Fader_pos", "230"}, {"Track5/Mute", "true"}});
    console.settle();
    QCOMPARE(
        levels(console.takeCommands()),
        (QStringList{"Fader of input 6 to -54 dB"_s, "Mute of input 6 off"_s}));
}

void TestSender::linkingSendsNothingInBetween()
{
    Console console("[Track5]\nMute=true\nFader_pos=187\n[Track6]\nMute=true\nFader_pos=187\n");
    console.mixer.setLinked(pair(5), true);
    console.settle();
    // Only the compressors' link flag is another one.
    const QStringList expected = {"Compressor of input 5 off"_s, "Compressor of input 6 off"_s};
    QCOMPARE(console.takeCommands(), expected);
}

/// The whole state, each command once.
void TestSender::everythingOnce()
{
    Console console;
    storeVariety(console.store);
    console.settle();
    QCOMPARE(console.differences(), QStringList());
    console.takeCommands();
    console.setPlugged(false);
    console.tamber.setPlugged(true);
    console.pass(500);
    QStringList commands = console.takeCommands();
    QCOMPARE(commands.size(), static_cast<int>(allCommands().size()));
    // The words do not say all of an EQ's band.
    QCOMPARE(commands.removeDuplicates(), 0);
    QCOMPARE(console.differences(), QStringList());
}

/// A device that starts with open channels is silent before it gets its levels.
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
    // Both bus options are among those that are sent last.
    QCOMPARE(commands.mid(commands.size() - 16).filter("Mute of input"_s).size(), 14);
}

/// They are among the next few commands.
void TestSender::clicksDoNotWaitForAFullSend()
{
    for (const int progress : {0, 20, 70, 150}) {
        Console console;
        console.takeCommands();
        console.presence.sendEverything();
        QStringList sent;
        while ((sent += console.takeCommands()).size() < progress)
            QCoreApplication::processEvents();
        auto lock = console.cable.hold();
        console.mixer.setMute(track(16), true);
        lock.unlock();
        while (!console.input(16).mute)
            QCoreApplication::processEvents();
        const QStringList meanwhile = console.takeCommands();
        QVERIFY2(meanwhile.size() < 12, qPrintable(meanwhile.join(QLatin1Char('\n'))));
        console.settle();
        QCOMPARE(console.differences(), QStringList());
    }
}

/// A channel that is unmuted by hand during a full send must not be heard with values that wait.
void TestSender::unmutingTakesItsChannelAlong()
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

/// Neither what the device has already nor anything twice.
void TestSender::recallSendsDifferencesOnly()
{
    Console console;
    storeVariety(console.store);
    const storage::Values scene = console.store.values();
    console.settle();
    console.mixer.setLineOut(4, 3);
    console.mixer.setMute(track(4), !isOn(scene, track(4), storage::strip::mute));
    console.mixer.stepFader(track(7), 20);
    console.settle();
    console.takeCommands();
    console.mixer.recall(scene, "Recall"_s);
    console.settle();
    QCOMPARE(console.takeCommands().size(), 3);
    QCOMPARE(console.differences(), QStringList());
}

void TestSender::hiddenStripIsNotSent()
{
    Console console("[Track1_2]\nLink=true\n");
    console.mixer.stepFader(track(2), 30);
    console.mixer.setMute(track(2), true);
    console.mixer.stepFader(pair(5), 30);
    console.mixer.setEq(pair(5), true);
    console.settle();
    QCOMPARE(console.takeCommands(), QStringList());
    QCOMPARE(console.stored("Track2/Fader_pos"), QByteArray("187"));
    QCOMPARE(console.stored("Track5_6/Eq"), QByteArray("true"));
}

/// A drag that is faster than the device sends its last position, and few of those before.
void TestSender::newestValueOnly()
{
    Console console;
    {
        const auto lock = console.cable.hold();
        for (int i = 0; i < 50; ++i) {
            console.mixer.stepFader(track(3), 1);
            QCoreApplication::processEvents();
        }
    }
    console.settle();
    QVERIFY(console.takeCommands().size() <= 3);
    QCOMPARE(console.differences(), QStringList());
}

/// The mixer's controls rest before the device is told, and it is told before the file is written.
void TestSender::busOptionsAreSentBeforeTheyAreStored()
{
    Console console;
    QStringList steps;
    connect(&console.mixer, &Mixer::bypassChanging, this, [&](bool bypassed) {
        steps += bypassed ? "rest"_s : "use"_s;
    });
    const auto note = [&](const char *what, unsigned char on, bool stored) {
        steps += "%1 told %2, stored %3"_s.arg(QLatin1String(what)).arg(on).arg(stored);
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
        "rest"_s, "bypass told 1, stored 0"_s, "use"_s, "bypass told 0, stored 1"_s,
        "bus told 0, stored 1"_s};
    QCOMPARE(steps, expected);
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

/// As long as the settings file cannot be read only queries go to the device.
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
