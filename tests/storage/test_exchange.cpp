#include "storage/exchange.h"
#include "tests/shorthand.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace storage;

/// Files of scenes: written and read again, refused, and read from damaged bytes.
class TestExchange : public QObject
{
    Q_OBJECT

private slots:
    void roundTrip();
    void carriesMixerAndOutputs();
    void refused_data();
    void refused();
    void largestFile();
    void leftOut();
    void damagedBytes();
};

namespace {

const QByteArray head = "[Tamber]\nFormat=1\n";

QRandomGenerator &random()
{
    static QRandomGenerator generator(20261122);
    return generator;
}

int below(int limit)
{
    return random().bounded(limit);
}

/// Values of all groups and keys with texts of all kinds.
Values randomValues()
{
    const QStringList texts = {
        "157"_s,
        "true"_s,
        "-3 dB"_s,
        QString(),
        "Tom & \"Jerry\", 50%"_s,
        "a=b;[c]\\"_s,
        QString::fromUtf8("\xe6\xad\x8c \xf0\x9f\x8e\xa4"),
        "  "_s,
        "line\nline"_s,
        "@Invalid()"_s};
    Values values;
    for (int i = below(400); i > 0; --i) {
        const auto key = Key(below(keyCount));
        const QString text = texts[key == Key::FaderPos ? 0 : below(texts.size())];
        values.setRaw(Group(below(groupCount)), key, encode(text));
    }
    values.setForeign("Track1/Foreign", "1");
    return values;
}

/// A file of one or of all slots.
std::vector<ExchangeScene> randomScenes()
{
    std::vector<ExchangeScene> scenes;
    if (below(2) == 0) return {{0, "Verse \"2\", soft"_s, randomValues()}};
    for (int slot = 1; slot <= 10; ++slot)
        if (below(3) != 0) scenes.push_back({slot, "Scene %1"_s.arg(slot), randomValues()});
    if (scenes.empty()) scenes.push_back({10, QString(), randomValues()});
    return scenes;
}

} // namespace

void TestExchange::roundTrip()
{
    for (int round = 0; round < 1000; ++round) {
        const std::vector<ExchangeScene> scenes = randomScenes();
        const Exchange read = fromExchange(toExchange(scenes, "4.00 0064"_s));
        QCOMPARE(read.problem, QString());
        QCOMPARE(read.leftOut, QStringList());
        QCOMPARE(read.scenes.size(), scenes.size());
        for (std::size_t i = 0; i < scenes.size(); ++i) {
            QCOMPARE(read.scenes[i].slot, scenes[i].slot);
            QCOMPARE(read.scenes[i].name, scenes[i].name);
            QVERIFY(read.scenes[i].values == exchangeable(scenes[i].values));
        }
    }
}

/// The first and the last values of each kind are in the file.
void TestExchange::carriesMixerAndOutputs()
{
    Entries entries;
    for (const char *entry :
         {"Track1/Fader_pos", "Track16/EqLowCutFilter", "Track15_16/Link", "Track15_16_R/Pan_pos",
          "Master/Mute", "Misc/MixerTrueBypass", "Misc/ComputerOutToStereoBus",
          "LineOutSettings/LineOut1", "LineOutSettings/LineOut8"})
        entries[entry] = "1";
    QCOMPARE(exchangeable(Values(entries)).entries(), entries);
}

void TestExchange::refused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, const QByteArray &text, const char *problem) {
        QTest::newRow(name) << text << QString::fromLatin1(problem);
    };
    row("empty", "", "not a Tamber scene file");
    row("another program's", "[Track1]\nMute=true\n", "not a Tamber scene file");
    row("binary", QByteArray(3000, '\xfe'), "not a Tamber scene file");
    row("newer", "[Tamber]\nFormat=2\n[Scene]\nName=x\n", "has format 2");
    row("cut short", head + "[Scene]\nName=x\n[Scene.Track1]\nMute=tr", "damaged");
    row("control characters", head + "[Scene]\nName=\x01\n", "damaged");
    row("no scene", head, "holds no scene");
    row("nothing known", head + "[Scene.Trak1]\nMute=true\n", "holds no scene");
    row("nothing known but the name", head + "[Scene]\nName=x\n[Scene.Trak1]\nMute=true\n",
        "holds no scene");
    row("mixture", head + "[Scene]\nName=x\n[Scene3]\nName=y\n", "neither a single scene");
    row("too large", head + "[Scene]\nName=" + QByteArray(largestExchange, 'x') + '\n',
        "larger than 1 MiB");
}

void TestExchange::refused()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    const Exchange read = fromExchange(text);
    QVERIFY2(read.problem.contains(problem), qPrintable(read.problem));
    QVERIFY(read.scenes.empty());
}

void TestExchange::largestFile()
{
    QByteArray text = head + "[Scene]\nName=x\n";
    while (text.size() < largestExchange)
        text += text.size() % 1000 == 0 ? '\n' : ';'; // comments
    text.back() = '\n';
    QCOMPARE(fromExchange(text).problem, QString());
}

/// What the panel does not know or must not take is named. A fader never opens by an unreadable
/// position.
void TestExchange::leftOut()
{
    const Exchange read = fromExchange(
        head + "[Scene]\nName=Verse\n[Scene.Track1]\nFader_pos=@Variant(\\0)\nMute=true\n"
               "Sparkle=1\n[Scene.Track2]\nFader_pos=loud\n[Scene.Panel]\nMainWindowPanel=2\n["
               "Scene.Misc]\nInformation_Dialog=true\n"
               "[Scene.Update]\nJsonUrl=https://example.com\n[Scene11.Track1]\nMute=true\n"
               "[Scene.Track1_2_L]\nPhase=true\n[Other]\nKey=1\n");
    QCOMPARE(read.problem, QString());
    QCOMPARE(int(read.scenes.size()), 1);
    const Values &values = read.scenes.front().values;
    QCOMPARE(values.raw(trackGroup(1), Key::FaderPos), QByteArray("245"));
    QCOMPARE(values.raw(trackGroup(2), Key::FaderPos), QByteArray("245"));
    QVERIFY(values.read(trackGroup(1), strip::mute) && values.read(sideGroup(1), strip::phase));
    QStringList left = read.leftOut;
    left.sort();
    const QStringList expected = {
        "Other/Key"_s,
        "Scene.Misc/Information_Dialog"_s,
        "Scene.Panel/MainWindowPanel"_s,
        "Scene.Track1/Fader_pos"_s,
        "Scene.Track1/Sparkle"_s,
        "Scene.Track2/Fader_pos"_s,
        "Scene.Update/JsonUrl"_s,
        "Scene11.Track1/Mute"_s};
    QCOMPARE(left, expected);
}

/// Damaged bytes give a problem or values that a file may carry, never anything else.
void TestExchange::damagedBytes()
{
    const QByteArray good = toExchange(randomScenes(), "4.00 0064"_s);
    int taken = 0;
    for (int round = 0; round < 3000; ++round) {
        QByteArray bytes = good;
        for (int damage = 1 + below(4); damage > 0; --damage) {
            const int at = below(bytes.size());
            if (below(3) == 0)
                bytes.remove(at, 1 + below(40));
            else
                bytes[at] = static_cast<char>(below(256));
            if (bytes.isEmpty()) bytes = good;
        }
        const Exchange read = fromExchange(bytes);
        QVERIFY(read.problem.isEmpty() != read.scenes.empty());
        for (const ExchangeScene &scene : read.scenes)
            QVERIFY(scene.values == exchangeable(scene.values));
        taken += read.problem.isEmpty();
    }
    QVERIFY(taken > 0);
}

QTEST_GUILESS_MAIN(TestExchange)

#include "test_exchange.moc"
