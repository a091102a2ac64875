#include "mixer/panscale.h"
#include "mixer/routing.h"
#include "tests/mixer/console.h"
#include "tests/mixer/model.h"
#include "tests/shorthand.h"

#include <QTextStream>
#include <QtTest>

#include <random>
#include <vector>

using namespace mixer;

/// Performs random gestures. After each gesture the store equals the model, and the device holds
/// what is stored.
class TestRandom : public QObject
{
    Q_OBJECT

private slots:
    void gestures();
};

namespace {

constexpr int gestureCount = 20000;
constexpr char seedVariable[] = "TAMBER_TEST_SEED"; // to repeat a run

/// Performs the same gestures on the mixer and on its model.
class Musician
{
public:
    explicit Musician(unsigned seed) : m_random(seed)
    {
        saveScene();
        QObject::connect(
            &m_console.store, &storage::Store::committed,
            [this](const storage::ChangeSet &changes) { m_changes.push_back(changes); });
    }

    void gesture();

    /// The differences between mixer, model and device. Compares the device only after two of three
    /// gestures, because this waits until nothing is pending. So commands of several gestures mix.
    QStringList faults()
    {
        const Model found(m_console.store.values());
        QStringList lines;
        if (!(found == m_model)) lines += found.differences(m_model);
        if (!m_undoFault.isEmpty()) lines += "not true: "_s + m_undoFault;
        if (below(3) == 0) return lines;
        m_console.settle();
        if (m_console.tamber.isPlugged()) lines += m_console.differences();
        m_console.takeCommands();
        return lines;
    }
    const QStringList &history() const { return m_history; }

private:
    struct Scene
    {
        storage::Values values;
        Model model;
    };

    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }
    int between(int first, int last) { return first + below(last - first + 1); }
    bool toss() { return below(2) == 1; }
    /// Usually small, sometimes beyond every scale.
    int distance() { return below(8) == 0 ? between(-400, 400) : between(-30, 30); }
    Model::Strip &strip(int place) { return m_model.strips[static_cast<std::size_t>(place)]; }
    void note(const QString &what)
    {
        m_history += what;
        if (m_history.size() > 12) m_history.removeFirst();
    }

    void dragFader();
    void dragPan();
    void dragKnob();
    void step();
    void toggle();
    void solo();
    void link();
    void output();
    void bypass();
    void scene();
    void cable();
    void undoAndRedo(const storage::Values &before);
    void saveScene() { m_scenes.push_back({m_console.store.values(), m_model}); }

    std::mt19937 m_random;
    Console m_console;
    Model m_model;
    std::vector<Scene> m_scenes;
    QStringList m_history;
    std::vector<storage::ChangeSet> m_changes; ///< of the latest gesture
    QString m_undoFault;
};

void Musician::gesture()
{
    static const struct
    {
        void (Musician::*act)();
        int weight;
    } acts[] = {
        {&Musician::dragFader, 15}, {&Musician::dragPan, 10}, {&Musician::dragKnob, 15},
        {&Musician::step, 10},      {&Musician::toggle, 30},  {&Musician::solo, 10},
        {&Musician::link, 5},       {&Musician::output, 3},   {&Musician::bypass, 1},
        {&Musician::scene, 2},      {&Musician::cable, 1},
    }; // of 102
    const storage::Values before = m_console.store.values();
    m_changes.clear();
    int chance = below(102);
    const auto *chosen = std::begin(acts);
    while ((chance -= chosen->weight) >= 0)
        ++chosen;
    (this->*chosen->act)();
    if (below(10) == 0) undoAndRedo(before);
}

/// Takes the gesture back, which must restore every value, and makes it again.
void Musician::undoAndRedo(const storage::Values &before)
{
    note("undone and redone"_s);
    const std::vector<storage::ChangeSet> changes = m_changes;
    const storage::Values after = m_console.store.values();
    const auto replayOne = [this](const storage::ChangeSet &set, bool forwards) {
        Transaction transaction(m_console.store);
        replay(transaction, set, forwards);
        transaction.commit();
    };
    for (auto set = changes.rbegin(); set != changes.rend(); ++set)
        replayOne(*set, false);
    if (!(m_console.store.values() == before)) m_undoFault = "undo restores the values"_s;
    for (const storage::ChangeSet &set : changes)
        replayOne(set, true);
    if (!(m_console.store.values() == after)) m_undoFault = "redo repeats the changes"_s;
}

void Musician::dragFader()
{
    const int place = below(25);
    QPointF pointer(between(0, 1000), between(0, 700));
    m_console.mixer.press(faderOf(stripAt(place)), pointer);
    for (int moves = between(1, 4); moves > 0; --moves) {
        const int down = distance();
        note("fader of strip %1 dragged by %2"_s.arg(place).arg(down));
        m_console.mixer.move(faderOf(stripAt(place)), pointer += QPointF(distance(), down));
        if (!m_model.bypassed) m_model.dragFader(place, down);
    }
}

void Musician::dragPan()
{
    const int input = below(16);
    QPointF pointer(between(0, 1000), between(0, 700));
    m_console.mixer.press(panOf(input + 1), pointer);
    for (int moves = between(1, 4); moves > 0; --moves) {
        const QPoint step(distance(), distance());
        note("pan of input %1 dragged by %2, %3"_s.arg(input).arg(step.x()).arg(step.y()));
        m_console.mixer.move(panOf(input + 1), pointer += step);
        if (!m_model.bypassed) m_model.dragPan(input, step.x() + step.y());
    }
}

void Musician::dragKnob()
{
    const int number = below(parameterCount);
    const auto id = static_cast<ParameterId>(number);
    QPointF pointer(between(0, 1000), between(0, 700));
    m_console.mixer.pressKnob(id, pointer);
    for (int moves = between(1, 4); moves > 0; --moves) {
        const int up = distance();
        note("knob %1 dragged by %2"_s.arg(number).arg(up));
        m_console.mixer.moveKnob(id, pointer -= QPointF(distance(), up));
        if (m_model.edited() < 0) continue;
        int &knob = strip(m_model.edited()).knobs[static_cast<std::size_t>(number)];
        knob = std::clamp(knob + up, 0, topPosition(parameter(id)));
    }
}

void Musician::step()
{
    const int place = below(25);
    const int input = below(16);
    const int steps = distance();
    note("steps of %1: fader of strip %2, pan of input %3"_s.arg(steps).arg(place).arg(input));
    m_console.mixer.shift(faderOf(stripAt(place)), -steps);
    m_console.mixer.shift(panOf(input + 1), -steps);
    if (m_model.bypassed) return;
    m_model.stepFader(place, steps);
    m_model.stepPan(input, -steps);
    if (below(4) != 0) return;
    note("defaults of the same"_s);
    m_console.mixer.reset(faderOf(stripAt(place)));
    m_console.mixer.reset(panOf(input + 1));
    strip(place).fader = 157;
    m_model.pans[static_cast<std::size_t>(input)] = input % 2 ? 79 : 20;
}

void Musician::toggle()
{
    const int place = below(24);                   // the master has only its mute
    const int what = below(3) == 0 ? 2 : below(7); // more mutes, for solo to save
    const bool on = toss();
    const StripId id = stripAt(place);
    note("switch %1 of strip %2: %3"_s.arg(what).arg(place).arg(on));
    Mixer &mixer = m_console.mixer;
    const bool ignored = m_model.bypassed;
    const auto set = [&](bool Model::Strip::*flag) {
        if (!ignored) strip(place).*flag = on;
    };
    switch (what) {
    case 0:
        mixer.setEq(id, on);
        if (!ignored) m_model.select(place, true);
        return set(&Model::Strip::eq);
    case 1:
        mixer.setComp(id, on);
        if (!ignored) m_model.select(place, true);
        return set(&Model::Strip::comp);
    case 2:
        mixer.setMute(id, on);
        return set(&Model::Strip::mute);
    case 3:
        mixer.setPhase(place % 16 + 1, on);
        if (!ignored) m_model.phases[static_cast<std::size_t>(place % 16)] = on;
        return;
    case 4:
        mixer.select(id, on);
        if (!ignored) m_model.select(place, on);
        return;
    case 5:
        mixer.setLowCut(on);
        if (m_model.edited() >= 0) strip(m_model.edited()).lowCut = on;
        return;
    default:
        mixer.setMute(master(), on);
        if (!ignored) strip(Model::master).mute = on;
    }
}

/// Often ends a solo, so that few solos are on at a time and often none.
void Musician::solo()
{
    int place = below(24);
    bool on = toss();
    const bool end = below(4) != 0;
    for (int soloed = 0; end && soloed < 24; ++soloed) {
        if (!strip(soloed).solo) continue;
        place = soloed;
        on = false;
    }
    note("solo of strip %1: %2"_s.arg(place).arg(on));
    m_console.mixer.setSolo(stripAt(place), on);
    if (!m_model.bypassed) m_model.setSolo(place, on);
}

void Musician::link()
{
    const int place = below(8);
    const bool on = toss();
    note("link of pair %1: %2"_s.arg(place).arg(on));
    m_console.mixer.setLinked(pair(2 * place + 1), on);
    if (!m_model.bypassed) m_model.setLinked(place, on);
}

void Musician::output()
{
    const int place = below(8);
    const int source = below(sourceCount);
    const bool bus = toss();
    note("output %1 plays %2, bus %3"_s.arg(place).arg(source).arg(bus));
    m_console.mixer.setLineOut(place + 1, source);
    m_console.mixer.setStereoBus(bus);
    m_model.outputs[static_cast<std::size_t>(place)] = source;
    m_model.stereoBus = bus;
}

/// Usually on for one gesture only, because it disables everything except the outputs.
void Musician::bypass()
{
    note("bypass"_s);
    m_console.mixer.setTrueBypass(true);
    m_model.bypassed = true;
    if (toss()) toggle();
    if (below(10) == 0) return;
    m_console.mixer.setTrueBypass(false);
    m_model.bypassed = false;
}

void Musician::scene()
{
    if (m_scenes.size() < 6 || below(4) == 0) {
        note("scene saved"_s);
        if (m_scenes.size() > 6) m_scenes.erase(m_scenes.begin());
        return saveScene();
    }
    note("scene recalled"_s);
    const auto place = static_cast<std::size_t>(below(static_cast<int>(m_scenes.size())));
    m_console.mixer.recall(m_scenes[place].values, "Recall"_s);
    m_model.recall(m_scenes[place].model);
}

void Musician::cable()
{
    const bool plugged = m_console.tamber.isPlugged();
    note(plugged ? "unplugged"_s : "plugged in"_s);
    m_console.setPlugged(!plugged);
    if (plugged && toss()) cable();
}

} // namespace

void TestRandom::gestures()
{
    bool isNumber = false;
    unsigned seed = qEnvironmentVariable(seedVariable).toUInt(&isNumber);
    if (!isNumber) seed = std::random_device()();
    QTextStream(stdout) << "seed " << seed << '\n' << Qt::flush;
    Musician musician(seed);
    for (int i = 1; i <= gestureCount; ++i) {
        musician.gesture();
        const QStringList faults = musician.faults();
        if (faults.isEmpty()) continue;
        const QStringList report =
            QStringList{"gesture %1 of seed %2"_s.arg(i).arg(seed)} + musician.history() + faults;
        QFAIL(qPrintable(report.join(QLatin1Char('\n'))));
    }
}

QTEST_GUILESS_MAIN(TestRandom)
#include "test_random.moc"
