#include "mixer/compare.h"
#include "mixer/levelhistory.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

#include <cmath>

using namespace mixer;

/// What the channel editor keeps beside the store: the compared states and the history of levels.
class TestCompare : public QObject
{
    Q_OBJECT

private slots:
    void bothStatesAreHeld();
    void replayedSwitches();
    void replayedSelection();
    void anotherStripBeginsAgain();
    void historyFollowsTheDevice();
    void handleMovesAreOneStep();
};

namespace {

const QByteArray stored = "[Track2]\nSelect=true\nEq=true\n[Track3]\nEq=true\n";

void turn(Console &console, ParameterId id, int step)
{
    console.mixer.setPosition(*console.mixer.editedKnob(id), positionOf(parameter(id), step));
}

int step(const Console &console, ParameterId id)
{
    return knobValue(console.store.values(), *console.mixer.edited(), parameter(id)).step;
}

constexpr ParameterId gain = ParameterId::LowGain;

} // namespace

void TestCompare::bothStatesAreHeld()
{
    Console console(stored);
    Compare compare(console.mixer, console.store);
    QVERIFY(!compare.isB() && !compare.differ());
    turn(console, gain, 20);
    console.mixer.setLowCut(true);
    QVERIFY(compare.differ());
    compare.toggle();
    QVERIFY(compare.isB());
    QCOMPARE(step(console, gain), 12);
    QVERIFY(!isOn(console.store.values(), track(2), storage::strip::eqLowCut));
    turn(console, ParameterId::Ratio, 9);
    console.mixer.setComp(track(2), true);
    compare.toggle();
    QVERIFY(!compare.isB());
    QCOMPARE(step(console, gain), 20);
    QCOMPARE(step(console, ParameterId::Ratio), 0);
    QVERIFY(!isOn(console.store.values(), track(2), storage::strip::comp));
    compare.copy();
    QVERIFY(!compare.differ());
    compare.toggle();
    QVERIFY(compare.isB());
    QCOMPARE(step(console, gain), 20);
    console.settle();
    QCOMPARE(console.differences(), QStringList());
}

/// Undo of a switch is a replay without a title. It brings back the other side with its state.
void TestCompare::replayedSwitches()
{
    Console console(stored);
    Compare compare(console.mixer, console.store);
    storage::ChangeSet last;
    QObject::connect(
        &console.store, &storage::Store::committed,
        [&last](const storage::ChangeSet &changes) { last = changes; });
    const auto replay = [&](const storage::ChangeSet &changes, bool forwards) {
        storage::Transaction t(console.store);
        mixer::replay(t, changes, forwards);
        t.commit();
    };
    turn(console, gain, 20);
    const storage::ChangeSet turned = last;
    compare.toggle();
    const storage::ChangeSet switched = last;
    QVERIFY(switched.mergeKey.startsWith("run:"));
    turn(console, ParameterId::LowFreq, 3); // on B
    const storage::ChangeSet onB = last;
    replay(onB, false);
    QVERIFY(compare.isB());
    replay(switched, false);
    QVERIFY(!compare.isB());
    QCOMPARE(step(console, gain), 20);
    replay(turned, false); // A is now what B is, and still A
    QVERIFY(!compare.isB() && !compare.differ());
    replay(turned, true);
    replay(switched, true);
    QVERIFY(compare.isB());
    QCOMPARE(step(console, gain), 12);
    compare.toggle();
    QCOMPARE(step(console, gain), 20);
}

/// A replayed link selects its pair again, and no other strip stays selected.
void TestCompare::replayedSelection()
{
    Console console;
    storage::ChangeSet linked;
    const auto connection = QObject::connect(
        &console.store, &storage::Store::committed,
        [&linked](const storage::ChangeSet &changes) { linked = changes; });
    console.mixer.setLinked(pair(3), true);
    QObject::disconnect(connection);
    console.mixer.setLinked(pair(3), false);
    console.mixer.select(track(7), true);
    storage::Transaction t(console.store);
    mixer::replay(t, linked, true);
    t.commit();
    for (const StripId &strip : allStrips())
        QCOMPARE(isOn(console.store.values(), strip, storage::strip::select), strip == pair(3));
}

void TestCompare::anotherStripBeginsAgain()
{
    Console console(stored);
    Compare compare(console.mixer, console.store);
    turn(console, gain, 20);
    compare.toggle();
    console.mixer.setTrueBypass(true);
    compare.toggle(); // does nothing
    console.mixer.setTrueBypass(false);
    QVERIFY(compare.isB() && compare.differ());
    console.mixer.select(track(3), true);
    QVERIFY(!compare.isB() && !compare.differ());
    console.mixer.select(track(2), true);
    QVERIFY(!compare.isB() && !compare.differ());
    QCOMPARE(step(console, gain), 12);
}

/// The device meters after its compressor; the history shows what enters it. The values are those
/// of the meters' poll, and no request is added.
void TestCompare::historyFollowsTheDevice()
{
    Console console(
        "[Track11]\nSelect=true\nComp=true\nCompThresholdPos=32\nCompThresholdText=-24\n"
        "CompRatioPos=120\nCompRatioText=inf:1\nCompGainPos=49\nCompGainText=8\n");
    LevelHistory history;
    const auto tick = [&] {
        console.deviceClock.pass(simulator::Microseconds(100000));
        console.pass(100);
        history.take(
            console.presence.meters(), console.presence.gainReduction(), console.mixer.edited(),
            console.store.values());
    };
    console.presence.sendEverything();
    console.pass(2000);
    const auto deviceLevels = [&console] {
        constexpr std::size_t voice = 10;
        const simulator::Levels levels = console.tamber.levels();
        const double reduction = -20 * std::log10(levels.gainReduction[voice] / 32767.0);
        constexpr double makeUp = 8;
        const double meter = 20 * std::log10(qMax(1.0, double(levels.inputs[voice])) / 32768);
        return LevelSample{meter + reduction - makeUp, reduction};
    };
    const auto isBetween = [](double value, double a, double b) {
        constexpr double tolerance = 0.2; // dB; requests take time too
        return value > qMin(a, b) - tolerance && value < qMax(a, b) + tolerance;
    };
    // The values of a tick are the answers to the requests of the tick before.
    int reduced = 0;
    LevelSample earlier = deviceLevels();
    tick();
    for (int i = 0; i < 130; ++i) {
        const LevelSample later = deviceLevels();
        tick();
        const LevelSample sample = history.samples().back();
        const bool isAudible = earlier.input > -50 && later.input > -50;
        const QString text = "%1: %2 %3"_s.arg(i).arg(sample.input).arg(sample.reduction);
        QVERIFY2(isBetween(sample.reduction, earlier.reduction, later.reduction), qPrintable(text));
        QVERIFY2(
            !isAudible || isBetween(sample.input, earlier.input, later.input), qPrintable(text));
        // With an infinite ratio the reduction is what the input exceeds the threshold by.
        const bool isOver = sample.reduction > 1;
        QVERIFY2(!isOver || qAbs(sample.input + 24 - sample.reduction) < 0.5, qPrintable(text));
        reduced += isOver;
        earlier = later;
    }
    QVERIFY(reduced > 5);
    QCOMPARE(history.samples().size(), std::size_t(LevelHistory::length));
    console.setPlugged(false);
    tick();
    QCOMPARE(history.samples().back().input, LevelSample::silentLevel);
    console.mixer.select(track(2), true);
    tick();
    QCOMPARE(history.samples().size(), std::size_t(1));
    console.mixer.select(track(2), false);
    tick();
    QVERIFY(history.samples().empty());
}

void TestCompare::handleMovesAreOneStep()
{
    Console console("[Track2]\nSelect=true\nEqLowGainPos=62\n");
    QSet<QByteArray> keys;
    QObject::connect(
        &console.store, &storage::Store::committed,
        [&](const storage::ChangeSet &changes) { keys += changes.mergeKey; });
    console.mixer.pressHandle();
    console.mixer.moveHandle("Low band", {{gain, 12}, {ParameterId::LowFreq, 9}});
    QCOMPARE(console.stored("Track2/EqLowGainPos"), QByteArray("62")); // 0 dB already
    QCOMPARE(console.stored("Track2/EqLowFreqText"), QByteArray("150"));
    console.mixer.moveHandle("Low band", {{gain, 15}, {ParameterId::LowFreq, 9}});
    QCOMPARE(console.stored("Track2/EqLowGainValue"), QByteArray("3"));
    QCOMPARE(keys.size(), 1);
    console.mixer.pressHandle();
    console.mixer.moveHandle("Low band", {{gain, 16}});
    QCOMPARE(keys.size(), 2);
    console.mixer.select(track(3), true);
    console.mixer.moveHandle("Low band", {{gain, 20}}); // the drag has ended
    QVERIFY(console.stored("Track3/EqLowGainPos").isNull());
}

QTEST_GUILESS_MAIN(TestCompare)
#include "test_compare.moc"
