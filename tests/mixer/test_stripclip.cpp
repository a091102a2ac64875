#include "mixer/stripclip.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

/// Copying, pasting and resetting strips.
class TestStripClip : public QObject
{
    Q_OBJECT

private slots:
    void betweenStrips();
    void betweenPairs();
    void parts();
    void editedText();
    void refusedText_data();
    void refusedText();
    void resetStrip();
};

namespace {

/// A strip with every value off its default, and a linked pair.
const QByteArray stored =
    "[Track1]\nFader_pos=170\nFader_value=-6\nPan_pos=10\nPan_value=L10\nPhase=true\nEq=true\n"
    "Comp=true\nEqLowCutFilter=true\nMute=true\nName=Kick\nEqHighGainPos=80\nEqHighGainValue=3\n"
    "CompThresholdPos=64\nCompThresholdText=-16\nCompAttackPos=7\nCompAttackText=16\n"
    "[Track1_2_L]\nPan_pos=10\nPan_value=L10\nPhase=true\n"
    "[Track3_4]\nLink=true\nName=Drums\n";

StripClip throughText(const Values &values, const StripId &strip)
{
    return StripClip::fromJson(StripClip::of(values, strip).json()).value();
}

} // namespace

void TestStripClip::betweenStrips()
{
    Console console(stored);
    const Values &values = console.store.values();
    const QByteArray copied = StripClip::of(values, track(1)).json();
    for (const StripId &strip : {track(8), pair(3), master()}) {
        const bool muted = isOn(values, strip, storage::strip::mute);
        const QString name = stripName(values, strip);
        console.mixer.paste(throughText(values, track(1)), strip, ClipPart::All);
        QCOMPARE(faderPosition(values, strip), 170);
        QCOMPARE(isOn(values, strip, storage::strip::mute), muted);
        QCOMPARE(stripName(values, strip), name);
    }
    QCOMPARE(StripClip::of(values, track(8)).json().replace("89", "30").size(), copied.size());
    QCOMPARE(panPosition(values, 8), 69); // L10 of an even strip
    for (const int input : {3, 4})        // both sides take the only pan
        QVERIFY(isOn(values, track(input), storage::strip::phase));
    QVERIFY(isOn(values, pair(3), storage::strip::eqLowCut));
    QCOMPARE(knobValue(values, pair(3), parameter(ParameterId::HighGain)).position, 80);
    // A master's clip has only the fader, and pastes only that.
    console.mixer.reset(faderOf(track(1)));
    console.mixer.paste(throughText(values, master()), track(1), ClipPart::All);
    QCOMPARE(StripClip::of(values, track(1)).json(), copied);
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

void TestStripClip::betweenPairs()
{
    Console console("[Track3_4]\nLink=true\n[Track5_6]\nLink=true\n"
                    "[Track3]\nPan_pos=5\n[Track4]\nPan_pos=95\nPhase=true\n");
    const Values &values = console.store.values();
    console.mixer.paste(throughText(values, pair(3)), pair(5), ClipPart::All);
    QCOMPARE(panPosition(values, 5), 5);
    QCOMPARE(panPosition(values, 6), 95);
    QVERIFY(!isOn(values, track(5), storage::strip::phase));
    QVERIFY(isOn(values, track(6), storage::strip::phase));
}

void TestStripClip::parts()
{
    for (const ClipPart part : {ClipPart::Eq, ClipPart::Compressor}) {
        Console console(stored);
        const Values &values = console.store.values();
        console.mixer.paste(throughText(values, track(1)), track(2), part);
        const bool eq = part == ClipPart::Eq;
        QCOMPARE(isOn(values, track(2), storage::strip::eq), eq);
        QCOMPARE(isOn(values, track(2), storage::strip::eqLowCut), eq);
        QCOMPARE(isOn(values, track(2), storage::strip::comp), !eq);
        const Parameter &gain = parameter(ParameterId::HighGain);
        const Parameter &attack = parameter(ParameterId::Attack);
        QCOMPARE(knobValue(values, track(2), gain).position, eq ? 80 : 63);
        QCOMPARE(knobValue(values, track(2), attack).position, eq ? 99 : 7);
        QCOMPARE(faderPosition(values, track(2)), 157);
        QVERIFY(!StripClip::of(values, master()).fits(track(1), part));
        QVERIFY(!StripClip::of(values, track(1)).fits(master(), part));
    }
}

/// A text that a person has changed counts, not the position beside it.
void TestStripClip::editedText()
{
    Console console(stored);
    const Values &values = console.store.values();
    QByteArray json = StripClip::of(values, track(1)).json();
    json.replace("\"-6\"", "\"-20 dB\"").replace("\"-16\"", "\"-10\"");
    console.mixer.paste(StripClip::fromJson(json).value(), track(2), ClipPart::All);
    QCOMPARE(console.stored("Track2/Fader_value"), QByteArray("-20"));
    QCOMPARE(console.stored("Track2/CompThresholdText"), QByteArray("-10"));
}

void TestStripClip::refusedText_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("another kind") << QByteArray("\"strip\"") << QByteArray("\"scene\"");
    QTest::newRow("another version")
        << QByteArray("\"version\": 1") << QByteArray("\"version\": 2");
    QTest::newRow("cut off") << QByteArray("\n}\n") << QByteArray("\n");
    QTest::newRow("value outside") << QByteArray("\"-6\"") << QByteArray("\"50\"");
    QTest::newRow("missing value") << QByteArray("\"attack\"") << QByteArray("\"attac\"");
    QTest::newRow("unknown pan") << QByteArray("\"L10\"") << QByteArray("\"Q10\"");
    QTest::newRow("switch without a state")
        << QByteArray("\"lowCut\": true") << QByteArray("\"lowCut\": \"true\"");
    QTest::newRow("missing switch") << QByteArray("\"on\"") << QByteArray("\"no\"");
    QTest::newRow("missing phase") << QByteArray("\"phase\"") << QByteArray("\"phas\"");
    QTest::newRow("no side") << QByteArray("\"sides\"") << QByteArray("\"side\"");
    QTest::newRow("huge") << QByteArray("{") << QByteArray(70000, ' ') + "{";
}

void TestStripClip::refusedText()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const Console console(stored);
    QByteArray json = StripClip::of(console.store.values(), track(1)).json();
    QVERIFY(StripClip::fromJson(json));
    QVERIFY(json.contains(before));
    QVERIFY(!StripClip::fromJson(json.replace(before, after)));
    QVERIFY(!StripClip::fromJson("Hello"));
    QVERIFY(!StripClip::fromJson(QByteArray()));
}

void TestStripClip::resetStrip()
{
    Console console(stored);
    const Values &values = console.store.values();
    console.mixer.reset(track(1), ClipPart::All);
    QCOMPARE(StripClip::of(values, track(1)).json(), StripClip::of(Values(), track(1)).json());
    QVERIFY(isOn(values, track(1), storage::strip::mute));
    QCOMPARE(stripName(values, track(1)), "Kick"_s);
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

QTEST_GUILESS_MAIN(TestStripClip)
#include "test_stripclip.moc"
