#include "app/history.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

#include <random>

using namespace mixer;

/// Undo and redo without a window: the store and the device follow.
class TestHistory : public QObject
{
    Q_OBJECT

private slots:
    void steps();
    void runs();
    void elsewhere();
    void linkAndSelection();
    void soloAndScene();
    void unplugged();
    void twoHundredSteps();
};

namespace {

/// A console with an undo history.
struct Desk : Console
{
    using Console::Console;

    QUndoStack &stack() { return history.stack(); }
    QStringList titles()
    {
        QStringList all;
        for (int i = 0; i < stack().count(); ++i)
            all += stack().text(i);
        return all;
    }
    void undo()
    {
        stack().undo();
        settle();
    }
    void drag(const Adjustable &a, int moves)
    {
        mixer.press(a, QPointF(100, 100));
        for (int move = 1; move <= moves; ++move)
            mixer.move(a, QPointF(100, 100 + move));
    }

    History history{store, clock};
};

} // namespace

/// A drag is one step, a name that is typed one, and what changes nothing none.
void TestHistory::steps()
{
    Desk desk;
    desk.drag(faderOf(track(3)), 20);
    desk.drag(faderOf(track(3)), 5);
    desk.mixer.startNaming();
    for (const QString &name : {"S"_s, "Sn"_s, "Sna"_s})
        desk.mixer.setName(track(3), name);
    desk.mixer.select(track(9), true); // no step
    desk.mixer.reset(panOf(4));        // the same again, though written for the first time
    desk.mixer.setLineOut(3, 0);
    desk.mixer.setStereoBus(false);
    desk.mixer.setTrueBypass(true);
    desk.mixer.setTrueBypass(false);
    QCOMPARE(
        desk.titles().join(QLatin1Char('|')),
        "Channel 3 fader|Channel 3 fader|Channel 3 name|Channel 4 pan|Line out 3|"
        "Computer out to Stereo BUS|Mixer True Bypass|Mixer True Bypass"_s);
    // A name that is typed and taken back leaves no step.
    desk.mixer.startNaming();
    desk.mixer.setName(track(3), "Snar"_s);
    desk.mixer.setName(track(3), "Sna"_s);
    QCOMPARE(desk.stack().count(), 8);
    while (desk.stack().canUndo())
        desk.undo();
    QCOMPARE(desk.stored("Track3/Fader_pos"), QByteArray());
    QCOMPARE(desk.stored("Misc/ComputerOutToStereoBus"), QByteArray());
    QCOMPARE(desk.differences(), QStringList());
}

void TestHistory::runs()
{
    Desk desk;
    const auto turn = [&](const Adjustable &a, int milliseconds) {
        desk.clock.milliseconds += milliseconds;
        desk.mixer.step(a, -1);
    };
    turn(faderOf(track(1)), 0);
    turn(faderOf(track(1)), 999);
    turn(faderOf(track(1)), 999); // a run lasts as long as it goes on
    QCOMPARE(desk.stack().count(), 1);
    turn(faderOf(track(1)), 1000);
    turn(faderOf(track(2)), 1);
    turn(faderOf(track(1)), 1);
    QCOMPARE(desk.stack().count(), 4);
    desk.undo();
    turn(faderOf(track(1)), 1); // does not join a step from before the undo
    QCOMPARE(desk.stack().count(), 4);
}

/// Gestures from elsewhere within a second are one step, also those on several controls, and join
/// no step of the window. Links are steps of their own.
void TestHistory::elsewhere()
{
    Desk desk;
    {
        const Mixer::Elsewhere remote(desk.mixer, "Remote"_s);
        for (int position = 160; position < 170; ++position) {
            desk.clock.milliseconds += 100;
            desk.mixer.setPosition(faderOf(track(3)), position);
        }
        desk.clock.milliseconds += 1000;
        for (int position = 160; position < 170; ++position) {
            desk.mixer.setPosition(faderOf(track(3)), position + 10);
            desk.mixer.step(knobOf(track(4), ParameterId::LowGain), 1);
        }
        desk.mixer.setMute(track(3), true);
        desk.mixer.setName(track(4), "Bass"_s);
        desk.mixer.setLineOut(3, 0);
        desk.mixer.select(track(9), true);
        desk.mixer.setLinked(pair(5), true);
        desk.mixer.setLinked(pair(5), false);
        QCOMPARE(desk.mixer.titled("Save scene 1"_s), "Remote: Save scene 1"_s);
    }
    desk.mixer.setPosition(faderOf(track(3)), 200);
    desk.mixer.setLineOut(3, 1);
    QCOMPARE(
        desk.titles().join(QLatin1Char('|')),
        "Remote: Channel 3 fader|Remote: several controls|Remote: Link channels 5 and 6|"
        "Remote: Unlink channels 5 and 6|Channel 3 fader|Line out 3"_s);
    for (int i = 0; i < 5; ++i)
        desk.undo();
    QCOMPARE(desk.stored("Track3/Fader_pos"), QByteArray("169"));
    desk.undo();
    QCOMPARE(desk.stored("Track3/Fader_pos"), QByteArray());
    QCOMPARE(desk.differences(), QStringList());
}

/// Undoing a link restores its selection, and another strip that was selected meanwhile is not
/// selected any more.
void TestHistory::linkAndSelection()
{
    Desk desk;
    desk.mixer.select(track(5), true);
    desk.mixer.setLinked(pair(5), true);
    QCOMPARE(desk.titles(), QStringList{"Link channels 5 and 6"_s});
    desk.mixer.select(track(12), true);
    desk.undo();
    int selected = 0;
    for (const StripId &strip : allStrips())
        selected += isOn(desk.store.values(), strip, storage::strip::select);
    QCOMPARE(selected, 1);
    QCOMPARE(desk.mixer.edited(), std::make_optional(track(5)));
    QCOMPARE(desk.differences(), QStringList());
}

/// Undo brings back the mutes that a solo has saved, also after a scene has dropped them.
void TestHistory::soloAndScene()
{
    Desk desk("[Track2]\nMute=true\n");
    desk.mixer.setSolo(track(1), true);
    const storage::Values soloed = desk.store.values();
    desk.mixer.recall(storage::Values(), "Recall scene 4"_s);
    desk.undo();
    QVERIFY(desk.store.values() == soloed);
    desk.mixer.setSolo(track(1), false);
    QVERIFY(isOn(desk.store.values(), track(2), storage::strip::mute));
    QVERIFY(!isOn(desk.store.values(), track(3), storage::strip::mute));
    desk.settle();
    QCOMPARE(desk.differences(), QStringList());
}

void TestHistory::unplugged()
{
    Desk desk;
    desk.mixer.setMute(track(1), true);
    desk.setPlugged(false);
    desk.mixer.setMute(track(2), true);
    desk.stack().undo();
    desk.stack().undo();
    desk.stack().redo();
    desk.setPlugged(true);
    desk.settle();
    QVERIFY(desk.input(1).mute && !desk.input(2).mute);
    QCOMPARE(desk.differences(), QStringList());
}

/// Random changes are undone one by one and redone, and every state on the way is exact.
void TestHistory::twoHundredSteps()
{
    Desk desk;
    std::mt19937 random(7);
    const auto below = [&](int end) { return static_cast<int>(random() % unsigned(end)); };
    std::vector<storage::Values> states{desk.store.values()};
    while (desk.stack().count() < 250) {
        desk.clock.milliseconds += 2000;
        const StripId strip = stripAt(below(24));
        const int count = desk.stack().count();
        switch (below(7)) {
        case 0:
            desk.mixer.step(faderOf(strip), below(2) ? 3 : -3);
            break;
        case 1:
            desk.mixer.setMute(strip, below(2));
            break;
        case 2:
            desk.mixer.setSolo(strip, below(2));
            break;
        case 3:
            desk.mixer.setLinked(pair(2 * below(8) + 1), below(2));
            break;
        case 4:
            desk.mixer.recall(
                states[static_cast<std::size_t>(below(int(states.size())))], "Recall"_s);
            break;
        case 5:
            desk.mixer.reset(strip, ClipPart::All);
            break;
        default:
            desk.mixer.soloAlone(strip);
        }
        if (desk.stack().count() > count) states.push_back(desk.store.values());
    }
    for (std::size_t step = states.size() - 1; step > 0; --step) {
        desk.stack().undo();
        QVERIFY2(desk.store.values() == states[step - 1], qPrintable(desk.stack().redoText()));
    }
    desk.settle();
    QCOMPARE(desk.differences(), QStringList());
    while (desk.stack().canRedo())
        desk.stack().redo();
    QVERIFY(desk.store.values() == states.back());
    desk.settle();
    QCOMPARE(desk.differences(), QStringList());
}

QTEST_GUILESS_MAIN(TestHistory)
#include "test_history.moc"
