#include "mixer/faderscale.h"
#include "mixer/recallsummary.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

#include <algorithm>

using namespace mixer;

/// What each gesture stores and sends.
class TestRules : public QObject
{
    Q_OBJECT

private slots:
    void knobSendsItsSection_data();
    void knobSendsItsSection();
    void switchSendsAllThatDependsOnIt();
    void dragContinuesFromTheStoredValue();
    void eachDragIsOneStep();
    void endStopsAtTheDefault();
    void knobBelongsToItsStrip();
    void onlyOneStripIsSelected();
    void bypassedMixerTakesNoGesture();
    void foreignValues();
    void routes();
    void recallKeepsThePanelsOwnValues();
    void safeStrips();
    void summary();
    void initialize();
};

namespace {

using storage::Entries;

/// "Group/key=value" of each value that differs from `before`.
QByteArrayList changesSince(const Entries &before, const Console &console)
{
    const Entries now = console.store.values().entries();
    QByteArrayList changed;
    for (auto entry = now.begin(); entry != now.end(); ++entry)
        if (before.value(entry.key()) != *entry) changed += entry.key() + '=' + *entry;
    return changed;
}

void dragFader(Console &console, const StripId &strip, int down)
{
    console.mixer.press(faderOf(strip), QPointF(300, 400));
    console.mixer.move(faderOf(strip), QPointF(290, 400 + down));
}

void dragPan(Console &console, int input, int right)
{
    console.mixer.press(panOf(input), QPointF(300, 400));
    console.mixer.move(panOf(input), QPointF(300 + right, 400));
}

void dragKnob(Console &console, ParameterId id, int up)
{
    console.mixer.pressKnob(id, QPointF(300, 400));
    console.mixer.moveKnob(id, QPointF(310, 400 - up));
}

} // namespace

void TestRules::knobSendsItsSection_data()
{
    QTest::addColumn<QString>("stem");
    QTest::addColumn<int>("up");
    QTest::addColumn<QByteArrayList>("stored");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *stem, int up, const char *stored, const char *bytes) {
        QTest::newRow(stem) << QString::fromLatin1(stem) << up << QByteArray(stored).split(' ')
                            << QByteArray(bytes);
    };
    // Band 0 low, 1 high, 2 high-mid, 3 low-mid: gain, frequency, Q; all with the EQ off.
    row("lowGain", 10, "EqLowGainPos=73 EqLowGainValue=2", "51 02 00 52 02 02 53 02 07 54 02 00");
    row("lowFreq", -4, "EqLowFreqPos=24 EqLowFreqText=90", "51 02 00 52 02 00 53 02 06 54 02 00");
    row("lowMidGain", -63, "EqLowMidGainPos=0 EqLowMidGainValue=-12",
        "51 02 03 52 02 f4 53 02 10 54 02 02");
    row("lowMidFreq", 200, "EqLowMidFreqPos=127 EqLowMidFreqText=18.0k",
        "51 02 03 52 02 00 53 02 3f 54 02 02");
    row("lowMidQ", 90, "EqLowMidQFreqPos=127 EqLowMidQFreqText=16.00",
        "51 02 03 52 02 00 53 02 10 54 02 06");
    row("highMidGain", 3, "EqHighMidGainPos=66 EqHighMidGainValue=1",
        "51 02 02 52 02 01 53 02 23 54 02 02");
    row("highMidFreq", -200, "EqHighMidFreqPos=0 EqHighMidFreqText=32",
        "51 02 02 52 02 00 53 02 00 54 02 02");
    row("highMidQ", -200, "EqHighMidQFreqPos=0 EqHighMidQFreqText=0.25",
        "51 02 02 52 02 00 53 02 23 54 02 00");
    row("highGain", 200, "EqHighGainPos=127 EqHighGainValue=12",
        "51 02 01 52 02 0c 53 02 17 54 02 00");
    row("highFreq", -200, "EqHighFreqPos=0 EqHighFreqText=1.7k",
        "51 02 01 52 02 00 53 02 00 54 02 00");
    row("threshold", -25, "CompThresholdPos=100 CompThresholdText=-7",
        "91 02 19 92 02 00 93 02 63 94 02 63 95 02 00 96 02 00");
    row("ratio", 127, "CompRatioPos=127 CompRatioText=inf:1",
        "91 02 20 92 02 0e 93 02 63 94 02 63 95 02 00 96 02 00");
    row("gain", 20, "CompGainPos=20 CompGainText=3",
        "91 02 20 92 02 00 93 02 63 94 02 63 95 02 03 96 02 00");
    row("attack", -98, "CompAttackPos=1 CompAttackText=4",
        "91 02 20 92 02 00 93 02 01 94 02 63 95 02 00 96 02 00");
    row("release", -9, "CompReleasePos=90 CompReleaseText=910",
        "91 02 20 92 02 00 93 02 63 94 02 5a 95 02 00 96 02 00");
}

/// A knob drag stores two keys of the edited strip and sends the whole section. A pair sends it to
/// both channels, with the link flag of the compressor.
void TestRules::knobSendsItsSection()
{
    QFETCH(QString, stem);
    QFETCH(int, up);
    QFETCH(QByteArrayList, stored);
    QFETCH(QByteArray, message);
    const auto &all = parameters();
    const auto *const row = std::find_if(all.begin(), all.end(), [&](const Parameter &parameter) {
        return QLatin1String(parameter.stem) == stem;
    });
    const auto id = static_cast<ParameterId>(row - all.begin());
    const bool isComp = message.startsWith("91");
    for (const StripId &strip : {track(11), pair(9)}) {
        Console console("[Track9_10]\nLink=true\n[" + strip.key() + "]\nSelect=true\n");
        console.cable.takeSent();
        const Entries before = console.store.values().entries();
        dragKnob(console, id, up);
        QByteArrayList expected;
        for (const QByteArray &entry : stored)
            expected += strip.key() + '/' + entry;
        QCOMPARE(changesSince(before, console), expected);
        QList<QByteArray> sent;
        for (const int channel : channelsOf(strip)) {
            QByteArray whole = "61 02 04 62 02 " +
                               QByteArray::number(channel, 16).rightJustified(2, '0') + ' ' +
                               message + (isComp ? " 97 02 00 00 00" : " 55 02 00 00 00");
            if (isComp && strip.isPair()) whole.replace("96 02 00", "96 02 01");
            sent += whole;
        }
        console.settle();
        QList<QByteArray> found = console.cable.takeSent();
        found.removeAll("31 01 00 00"); // the query for the name
        QCOMPARE(found, sent);
    }
}

/// The EQ switch is part of the commands of all bands, the low cut of that of the low band.
void TestRules::switchSendsAllThatDependsOnIt()
{
    Console console("[Track2]\nSelect=true\nEqHighGainPos=127\nCompRatioText=4.0:1\n");
    console.mixer.setEq(track(2), true);
    console.settle();
    QCOMPARE(
        console.takeCommands(),
        (QStringList{
            "EQ of input 2 on, low band to 0 dB"_s, "EQ of input 2 on, high band to 12 dB"_s,
            "EQ of input 2 on, high-mid band to 0 dB"_s,
            "EQ of input 2 on, low-mid band to 0 dB"_s}));
    console.mixer.setLowCut(true);
    console.settle();
    QCOMPARE(console.takeCommands(), QStringList{"EQ of input 2 on, low band to 0 dB"_s});
    QVERIFY(console.input(2).eq.lowCut);
    console.mixer.setComp(track(2), true);
    console.settle();
    QCOMPARE(int(console.input(2).comp.ratio), 9);
    QVERIFY(console.input(2).comp.on);
}

/// Undo, a recall or the wheel may change the value during a drag.
void TestRules::dragContinuesFromTheStoredValue()
{
    Console console("[Track1]\nSelect=true\n");
    const auto is = [&](const char *entry, const char *value) {
        return console.stored(entry) == value;
    };
    console.mixer.step(*console.mixer.editedKnob(ParameterId::Ratio), 1);
    QVERIFY(is("Track1/CompRatioText", "1.1:1"));
    dragFader(console, track(1), 5);
    console.mixer.shift(faderOf(track(1)), -4); // four positions down
    console.mixer.move(faderOf(track(1)), QPointF(290, 406));
    QVERIFY(is("Track1/Fader_pos", "167"));
    console.mixer.recall(storage::Values({{"Track1/Fader_pos", "200"}}), "Recall"_s);
    console.mixer.move(faderOf(track(1)), QPointF(290, 409));
    QVERIFY(is("Track1/Fader_pos", "203"));
    dragPan(console, 2, -3);
    console.mixer.reset(panOf(2));
    console.mixer.move(panOf(2), QPointF(296, 400));
    QVERIFY(is("Track2/Pan_pos", "78"));
    // The recall has deselected the strip, so the knob edits no strip.
    console.mixer.moveKnob(ParameterId::LowGain, QPointF(300, 300));
    QVERIFY(is("Track1/EqLowGainPos", ""));
}

/// The moves of one drag share a merge key, and the next drag has another.
void TestRules::eachDragIsOneStep()
{
    Console console;
    QByteArrayList keys;
    QObject::connect(
        &console.store, &storage::Store::committed,
        [&keys](const storage::ChangeSet &changes) { keys += changes.mergeKey; });
    for (const int down : {5, 9}) {
        dragFader(console, track(1), down);
        console.mixer.move(faderOf(track(1)), QPointF(290, 420));
    }
    QCOMPARE(keys.size(), 4);
    QVERIFY(!keys[0].isEmpty() && !keys[2].isEmpty());
    QVERIFY(keys[0] == keys[1] && keys[2] == keys[3] && keys[0] != keys[2]);
}

/// From there it goes on to the highest value. Controls that cannot become loud do not stop.
void TestRules::endStopsAtTheDefault()
{
    Console console("[Track1]\nFader_pos=200\nPan_pos=3\n");
    const Adjustable fader = faderOf(track(1));
    for (const int wanted : {faderDefault, faderTop, faderTop}) {
        console.mixer.toHighest(fader);
        QCOMPARE(storedPosition(console.store.values(), fader), wanted);
    }
    console.mixer.toHighest(panOf(1));
    QCOMPARE(storedPosition(console.store.values(), panOf(1)), 40);
}

/// A drag never changes another strip that is selected during the drag.
void TestRules::knobBelongsToItsStrip()
{
    Console console("[Track3]\nSelect=true\nEqLowGainPos=127\n");
    dragKnob(console, ParameterId::LowGain, -5);
    QCOMPARE(console.stored("Track3/EqLowGainPos"), QByteArray("122"));
    console.mixer.select(track(4), true);
    console.mixer.moveKnob(ParameterId::LowGain, QPointF(300, 300));
    QVERIFY(console.stored("Track4/EqLowGainPos").isNull());
    console.mixer.pressKnob(ParameterId::LowGain, QPointF(300, 400));
    console.mixer.moveKnob(ParameterId::HighGain, QPointF(300, 300));
    QVERIFY(console.stored("Track4/EqHighGainPos").isNull());
    console.mixer.select(track(4), false);
    dragKnob(console, ParameterId::LowGain, 5);
    console.mixer.resetKnob(ParameterId::LowGain);
    console.mixer.setLowCut(true);
    QVERIFY(console.stored("Track4/EqLowGainPos").isNull());
    QCOMPARE(console.stored("Track3/EqLowGainPos"), QByteArray("122"));
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

void TestRules::onlyOneStripIsSelected()
{
    Console console("[Track2]\nSelect=true\n[Track5]\nSelect=true\n[Track7_8]\nSelect=true\n");
    QVERIFY(console.mixer.edited() == track(2));
    console.mixer.select(track(7), true);
    QVERIFY(console.mixer.edited() == track(7));
    const Entries entries = console.store.values().entries();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        if (entry.key().endsWith("/Select"))
            QCOMPARE(*entry == "true", entry.key() == "Track7/Select");
    console.mixer.setLinked(pair(7), true);
    QVERIFY(console.mixer.edited() == pair(7));
    console.mixer.setLinked(pair(7), false);
    QVERIFY(console.mixer.edited() == track(7));
    console.mixer.select(track(7), false);
    QVERIFY(!console.mixer.edited());
}

/// While the mixer is bypassed, only the outputs can be changed.
void TestRules::bypassedMixerTakesNoGesture()
{
    Console console("[Track1]\nSelect=true\n[Misc]\nMixerTrueBypass=true\n");
    const Entries before = console.store.values().entries();
    Mixer &mixer = console.mixer;
    for (const StripId &strip : {track(1), pair(3), master()}) {
        dragFader(console, strip, 9);
        mixer.reset(faderOf(strip));
        mixer.shift(faderOf(strip), -3);
        mixer.setMute(strip, true);
        mixer.setSolo(strip, true);
        mixer.setEq(strip, true);
        mixer.setComp(strip, true);
        mixer.setName(strip, "x"_s);
        mixer.select(strip, true);
    }
    dragPan(console, 1, 9);
    mixer.shift(panOf(1), 3);
    mixer.reset(panOf(1));
    mixer.setPhase(1, true);
    mixer.setLinked(pair(3), true);
    dragKnob(console, ParameterId::Ratio, 9);
    mixer.step(knobOf(track(1), ParameterId::Ratio), 9);
    mixer.setLowCut(true);
    QCOMPARE(console.store.values().entries(), before);
    mixer.setLineOut(1, 5);
    mixer.setStereoBus(false);
    mixer.setTrueBypass(false);
    QVERIFY(console.mixer.edited() == track(1));
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

/// A stored value that no control can show reads as the default. It stays in the file until the
/// first gesture, which starts from the default.
void TestRules::foreignValues()
{
    const QByteArray ini = "[Track1]\nFader_pos=300\nPan_pos=50\nEqLowGainPos=300\n"
                           "EqHighFreqText=9.9k\nCompAttackPos=150\nSelect=true\n"
                           "[Track2]\nFader_pos=loud\nPan_pos=20\n";
    Console console(ini);
    QCOMPARE(console.differences(), QStringList());
    QCOMPARE(console.input(1).fader, -127);
    QCOMPARE(console.input(1).pan, 0);
    QCOMPARE(int(console.input(1).eq.bands[1].freq), 23);
    QCOMPARE(console.input(2).fader, -127); // not a number: the silent end
    QCOMPARE(console.stored("Track1/EqHighFreqText"), QByteArray("9.9k"));
    dragFader(console, track(1), -1);
    dragPan(console, 1, 1);
    dragKnob(console, ParameterId::LowGain, 1);
    dragKnob(console, ParameterId::HighFreq, -1);
    dragKnob(console, ParameterId::Attack, -1);
    const std::pair<const char *, const char *> expected[] = {
        {"Fader_pos", "244"},    {"Pan_pos", "21"},       {"EqLowGainPos", "64"},
        {"EqHighFreqPos", "91"}, {"CompAttackPos", "98"},
    };
    for (const auto &[entry, value] : expected)
        QCOMPARE(console.stored(QByteArray("Track1/") + entry), QByteArray(value));
}

void TestRules::routes()
{
    Console console("[LineOutSettings]\nLineOut1=9\nLineOut2=10\nLineOut3=-1\nLineOut8=x\n");
    QCOMPARE(console.differences(), QStringList());
    const simulator::Source first = console.tamber.state().lineOuts[0];
    QVERIFY(first.type == 3 && first.no == 8);
    for (std::size_t output = 2; output <= 8; ++output) { // outputs without a valid source
        const simulator::Source source = console.tamber.state().lineOuts[output - 1];
        QCOMPARE(int(source.type), output <= 2 ? vxctl::channelMaster : vxctl::channelComputer);
        QCOMPARE(std::size_t{source.no}, output);
    }
    for (int output = 1; output <= 8; ++output) {
        console.mixer.setLineOut(output, 10 - output);
        console.settle();
        QCOMPARE(
            console.takeCommands(),
            output == 1
                ? QStringList()
                : QStringList{"Line out %1 plays computer %2"_s.arg(output).arg(9 - output)});
    }
    console.mixer.setLineOut(3, 1);
    console.settle();
    QCOMPARE(console.takeCommands(), QStringList{"Line out 3 plays master right"_s});
    for (const int nothing : {-1, 10})
        console.mixer.setLineOut(4, nothing);
    QCOMPARE(console.stored("LineOutSettings/LineOut4"), QByteArray("6"));
}

void TestRules::recallKeepsThePanelsOwnValues()
{
    Console console("[Panel]\nMainWindowPanel=2\n[Interface]\nAudioPeformanceIndex=1\n"
                    "[Update]\nJsonUrl=mine\n[Misc]\nInformation_Dialog=true\n"
                    "[Track1]\nMute=true\nMine=kept?\n[Foreign]\nKey=1\n");
    const Entries scene = {
        {"Panel/MainWindowPanel", "0"},
        {"Interface/AudioPeformanceIndex", "4"},
        {"Interface/DigitalOutputFormatIndex", "1"},
        {"Update/SoftDialog", "9.99"},
        {"Misc/Information_Dialog", "false"},
        {"Misc/MixerTrueBypass", "true"},
        {"Update/Theirs", "1"},
        {"Interfaces/Key", "1"},
        {"Track2/Solo", "true"}};
    console.mixer.recall(storage::Values(scene), "Recall"_s);
    const Entries expected = {
        {"Interface/AudioPeformanceIndex", "1"},
        {"Interfaces/Key", "1"},
        {"Misc/Information_Dialog", "true"},
        {"Misc/MixerTrueBypass", "true"},
        {"Panel/MainWindowPanel", "2"},
        {"Track2/Solo", "true"},
        {"Update/JsonUrl", "mine"}};
    QCOMPARE(console.store.values().entries(), expected);
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

/// A recall keeps safe strips whole: channels, pair and link together. One strip stays selected.
void TestRules::safeStrips()
{
    const QByteArray before = "[Track3]\nFader_pos=200\nSelect=true\n[Track4]\nMute=true\n"
                              "[Track3_4_L]\nPhase=true\n[Track5]\nFader_pos=200\n"
                              "[Master]\nFader_pos=180\n";
    const Console scene("[Track3_4]\nLink=true\nFader_pos=150\n[Track4]\nFader_pos=160\n"
                        "[Track5]\nFader_pos=150\n[Track6]\nSelect=true\n");
    SafeStrips safe;
    safe.set(track(4), true);
    safe.set(master(), true);
    Console console(before);
    const Entries old = console.store.values().entries();
    console.mixer.recall(scene.store.values(), "Recall"_s, safe);
    const Entries now = console.store.values().entries();
    for (const char *kept :
         {"Track3/Fader_pos", "Track3/Select", "Track4/Mute", "Track3_4_L/Phase",
          "Master/Fader_pos"})
        QCOMPARE(now.value(kept), old.value(kept));
    QVERIFY(!isLinked(console.store.values(), pair(3)));
    QCOMPARE(now.value("Track5/Fader_pos"), QByteArray("150"));
    QCOMPARE(editedStrip(console.store.values()), std::make_optional(track(3)));
    QCOMPARE(now.value("Track6/Select"), QByteArray("false"));
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

void TestRules::summary()
{
    const Console now("[Track1]\nFader_pos=200\n[Track9]\nMute=true\n[LineOutSettings]\n"
                      "LineOut5=0\nLineOut6=1\n");
    const Console scene("[Track1]\nFader_pos=157\n[Track2]\nFader_pos=150\nName=Bass\n"
                        "[Track3]\nEq=true\nPan_pos=30\n[Track5_6]\nLink=true\n"
                        "[Misc]\nComputerOutToStereoBus=false\n");
    const storage::Values &values = now.store.values();
    QCOMPARE(recallSummary(values, values), "nothing"_s);
    QCOMPARE(
        recallSummary(values, scene.store.values()),
        "1 link, 2 faders, 1 mute, 1 pan, EQ of 1 strip, 1 name, routing of 5 and 6, "
        "computer out to stereo bus"_s);
    SafeStrips safe;
    safe.set(track(1), true);
    QCOMPARE(
        recallSummary(values, scene.store.values(), safe),
        "1 link, 1 mute, 1 pan, EQ of 1 strip, routing of 5 and 6, computer out to stereo bus"_s);
}

void TestRules::initialize()
{
    Console console(
        "[Panel]\nMainWindowPanel=2\n[Track1]\nMute=true\nMine=1\n[Update]\nJsonUrl=x\n");
    console.mixer.setSolo(track(9), true);
    console.mixer.initialize();
    console.settle();
    const Entries expected = {{"Misc/Information_Dialog", "false"}};
    QCOMPARE(console.store.values().entries(), expected);
    QCOMPARE(console.differences(), QStringList());
    // The mutes from before the solo are discarded, too.
    console.mixer.setSolo(track(9), true);
    console.mixer.setSolo(track(9), false);
    QVERIFY(!isOn(console.store.values(), track(1), storage::strip::mute));
}

QTEST_GUILESS_MAIN(TestRules)
#include "test_rules.moc"
