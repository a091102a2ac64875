#include "mixer/adjustable.h"
#include "mixer/presets.h"
#include "tests/mixer/console.h"
#include "tests/storage/failingdisk.h"
#include "tests/storage/folder.h"

#include <QtTest>

using namespace mixer;

/// The presets of the panel and those of the user.
class TestPresets : public QObject
{
    Q_OBJECT

private slots:
    void factoryValuesAreInTheLists();
    void applying();
    void files();
    void unusableFiles_data();
    void unusableFiles();
    void failingDisk();
};

namespace {

double number(const KnobPositions &knobs, ParameterId id)
{
    return numberAt(knobOf(track(1), id), knobs[static_cast<std::size_t>(id)]);
}

QStringList names(const UserPresets &presets)
{
    QStringList names;
    for (const UserPreset &preset : presets.presets())
        names += preset.name;
    return names;
}

KnobPositions someKnobs()
{
    return positionsOf(factoryPresets[1]);
}

} // namespace

void TestPresets::factoryValuesAreInTheLists()
{
    using Id = ParameterId;
    QSet<QString> seen;
    for (const FactoryPreset &preset : factoryPresets) {
        const KnobPositions knobs = positionsOf(preset);
        const std::pair<Id, double> wanted[] = {
            {Id::LowGain, preset.low.gain},         {Id::LowFreq, preset.low.freq},
            {Id::LowMidGain, preset.lowMid.gain},   {Id::LowMidFreq, preset.lowMid.freq},
            {Id::LowMidQ, preset.lowMid.q / 100.0}, {Id::HighMidGain, preset.highMid.gain},
            {Id::HighMidFreq, preset.highMid.freq}, {Id::HighMidQ, preset.highMid.q / 100.0},
            {Id::HighGain, preset.high.gain},       {Id::HighFreq, preset.high.freq},
            {Id::Threshold, preset.threshold},      {Id::Ratio, preset.ratio / 10.0},
            {Id::MakeUpGain, preset.makeUp},        {Id::Attack, preset.attack},
            {Id::Release, preset.release}};
        for (const auto &[id, value] : wanted)
            QVERIFY2(
                qAbs(number(knobs, id) - value) < 1e-9,
                qPrintable(QStringLiteral("%1: %2").arg(
                    QLatin1String(preset.name), QLatin1String(parameter(id).title))));
        seen.insert(QLatin1String(preset.name));
    }
    QCOMPARE(seen.size(), static_cast<int>(factoryPresets.size()));
    // The last preset is what a reset gives.
    const SectionState fresh = SectionState::of(Values(), track(1));
    QCOMPARE(positionsOf(factoryPresets.back()), fresh.knobs);
}

/// One change with a title; the switches and knobs that show the value already stay.
void TestPresets::applying()
{
    Console console("[Track2]\nSelect=true\nEq=true\nEqLowCutFilter=true\n"
                    "CompThresholdPos=49\nCompThresholdText=-20\n");
    QStringList titles;
    QObject::connect(
        &console.store, &storage::Store::committed,
        [&](const storage::ChangeSet &changes) { titles += changes.title; });
    const std::vector<ParameterId> turned = console.mixer.applyPreset("Speech"_s, someKnobs());
    QCOMPARE(titles, QStringList("Preset Speech on Channel 2"_s));
    QCOMPARE(turned.size(), std::size_t(11)); // the other four show the value already
    QCOMPARE(console.stored("Track2/CompThresholdPos"), QByteArray("49"));
    QCOMPARE(console.stored("Track2/CompRatioText"), QByteArray("4.0:1"));
    QCOMPARE(console.stored("Track2/EqLowCutFilter"), QByteArray("true"));
    console.settle();
    QCOMPARE(console.differences(), QStringList());
    QVERIFY(console.mixer.applyPreset("Speech"_s, someKnobs()).empty());
    QCOMPARE(titles.size(), 1);
}

void TestPresets::files()
{
    const Folder folder;
    UserPresets presets(folder.organisation.constData());
    QVERIFY(presets.save("  My   voice "_s, someKnobs()));
    QVERIFY(presets.save("Drums"_s, positionsOf(factoryPresets[2])));
    QVERIFY(!presets.save("  "_s, someKnobs()));
    QCOMPARE(names(presets), QStringList({"Drums"_s, "My voice"_s}));
    QVERIFY(QFile::exists(folder.file("Tamber_preset1.json"_s)));
    const UserPreset voice = presets.presets()[1];
    for (int i = 0; i < parameterCount; ++i) {
        const auto id = static_cast<ParameterId>(i);
        QCOMPARE(number(voice.knobs, id), number(someKnobs(), id));
    }

    QVERIFY(presets.save("My voice"_s, positionsOf(factoryPresets[3]))); // replaces it
    QCOMPARE(names(presets).size(), 2);
    QCOMPARE(number(presets.presets()[1].knobs, ParameterId::Threshold), -14.0);
    QVERIFY(!presets.rename(voice.slot, "Drums"_s));
    QVERIFY(presets.rename(voice.slot, "Alto"_s));
    QCOMPARE(names(presets), QStringList({"Alto"_s, "Drums"_s}));
    QVERIFY(presets.remove(voice.slot));
    QCOMPARE(names(UserPresets(folder.organisation.constData())), QStringList("Drums"_s));
}

void TestPresets::unusableFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray good = toJson({1, "Good"_s, someKnobs()});
    const auto replaced = [&good](const char *what, const char *by) {
        QByteArray text = good;
        if (!text.contains(what)) qFatal("the preset has no %s", what);
        return text.replace(what, by);
    };
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("half") << good.left(good.size() / 2);
    QTest::newRow("a strip's clip") << replaced("\"preset\"", "\"strip\"");
    QTest::newRow("later version") << replaced("\"version\": 1", "\"version\": 2");
    QTest::newRow("no name") << replaced("Good", " ");
    QTest::newRow("no such value") << replaced("\"4.0:1\"", "\"loud\"");
    QTest::newRow("outside the range") << replaced("\"-20\"", "\"-40\"");
    QTest::newRow("a knob is missing") << replaced("\"attack\"", "\"attic\"");
    QTest::newRow("too large") << good + QByteArray(70000, ' ');
    QTest::newRow("binary") << QByteArray("\0\xff\0\x01", 4);
}

/// A file that is no preset is neither shown nor replaced.
void TestPresets::unusableFiles()
{
    QFETCH(QByteArray, content);
    const Folder folder;
    folder.write("Tamber_preset1.json"_s, content);
    UserPresets presets(folder.organisation.constData());
    QCOMPARE(names(presets), QStringList());
    QVERIFY(presets.save("New"_s, someKnobs()));
    QCOMPARE(names(presets), QStringList("New"_s));
    QCOMPARE(folder.bytes("Tamber_preset1.json"_s), content);
}

/// Whatever step of writing fails, the old preset is kept and no preset is half there.
void TestPresets::failingDisk()
{
    const Folder folder;
    FailingDisk disk;
    UserPresets presets(folder.organisation.constData(), disk);
    QVERIFY(presets.save("Old"_s, someKnobs()));
    const QByteArray before = folder.bytes("Tamber_preset1.json"_s);
    disk.failAt(0);
    QVERIFY(presets.save("Old"_s, someKnobs()));
    const int steps = disk.count();
    QVERIFY(steps > 3);
    for (int step = 1; step <= steps; ++step) {
        disk.failAt(step);
        QVERIFY(!presets.save("Old"_s, positionsOf(factoryPresets[2])));
        disk.failAt(step);
        QVERIFY(!presets.rename(1, "Other"_s));
        disk.failAt(step);
        QVERIFY(!presets.save("Second"_s, someKnobs()));
        QCOMPARE(folder.bytes("Tamber_preset1.json"_s), before);
        QCOMPARE(names(presets), QStringList("Old"_s));
    }
    disk.readable = false;
    QCOMPARE(names(presets), QStringList());
}

QTEST_GUILESS_MAIN(TestPresets)
#include "test_presets.moc"
