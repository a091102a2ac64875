#include "mixer/adjustable.h"
#include "mixer/faderscale.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

Q_DECLARE_METATYPE(mixer::Adjustable)

/// Steps, ends and typed values of everything that can be adjusted.
class TestAdjustable : public QObject
{
    Q_OBJECT

private slots:
    void everyStepReadsDifferently();
    void pages();
    void textsComeBack();
    void typedValues_data();
    void typedValues();
    void words();
};

namespace {

const Adjustable fader = faderOf(track(3));
const Adjustable pan = panOf(4);
const Adjustable lowGain = knobOf(track(1), ParameterId::LowGain);
const Adjustable lowFreq = knobOf(track(1), ParameterId::LowFreq);
const Adjustable highFreq = knobOf(track(1), ParameterId::HighFreq);
const Adjustable ratio = knobOf(track(1), ParameterId::Ratio);
const Adjustable midQ = knobOf(track(1), ParameterId::LowMidQ);
const Adjustable attack = knobOf(track(1), ParameterId::Attack);

std::vector<Adjustable> all()
{
    std::vector<Adjustable> list = {faderOf(master()), fader, panOf(3), pan};
    for (int id = 0; id < parameterCount; ++id)
        list.push_back(knobOf(pair(5), static_cast<ParameterId>(id)));
    return list;
}

} // namespace

/// From every position, steps read differently each, run one way, and reach both ends.
void TestAdjustable::everyStepReadsDifferently()
{
    for (const Adjustable &a : all()) {
        const auto [low, high] = std::minmax({lowestPosition(a), highestPosition(a)});
        for (int start = low; start <= high; ++start) {
            for (const int way : {1, -1}) {
                const int end = way > 0 ? highestPosition(a) : lowestPosition(a);
                int position = start;
                for (int left = 200; left > 0 && textAt(a, position) != textAt(a, end); --left) {
                    const int next = stepped(a, position, way);
                    QVERIFY(textAt(a, next) != textAt(a, position));
                    QVERIFY((numberAt(a, next) - numberAt(a, position)) * way > 0);
                    position = next;
                }
                QCOMPARE(textAt(a, position), textAt(a, end));
                QCOMPARE(stepped(a, end, way), end);
                QCOMPARE(shifted(a, start, way * 1000), end);
            }
            QCOMPARE(stepped(a, start, 3), stepped(a, stepped(a, stepped(a, start, 1), 1), 1));
        }
    }
    // A step goes to the nearest position with another text.
    QCOMPARE(stepped(midQ, 40, 1), 55);
    QCOMPARE(stepped(midQ, 40, -1), 36);
}

/// A page has fewer steps on short lists.
void TestAdjustable::pages()
{
    for (const Adjustable &a : {fader, pan, lowGain, lowFreq, attack})
        QCOMPARE(pageSteps(a), 8);
    for (const ParameterId id : {ParameterId::MakeUpGain, ParameterId::Ratio, ParameterId::LowMidQ})
        QCOMPARE(pageSteps(knobOf(track(1), id)), 4);
}

/// What the readout shows can be typed and gives the same reading. So does its number.
void TestAdjustable::textsComeBack()
{
    for (const Adjustable &a : all()) {
        const auto [low, high] = std::minmax({lowestPosition(a), highestPosition(a)});
        for (int position = low; position <= high; ++position) {
            const QString text = textAt(a, position);
            const std::optional<int> typed = typedPosition(a, text);
            QVERIFY2(typed, qPrintable(text));
            QCOMPARE(textAt(a, *typed), text);
            QCOMPARE(textAt(a, nearestPosition(a, numberAt(a, position))), text);
        }
        QCOMPARE(typedPosition(a, textAt(a, defaultPosition(a))).value_or(-1), defaultPosition(a));
    }
}

void TestAdjustable::typedValues_data()
{
    QTest::addColumn<Adjustable>("a");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text"); // "" if it is refused
    const auto row = [](const char *name, const Adjustable &a, const QString &wanted) {
        QTest::newRow(name) << a << QString::fromUtf8(name).section(QLatin1Char('|'), 1) << wanted;
    };
    row("fader|-6", fader, "-6"_s);
    row("fader| - 6,4 dB", fader, "-6"_s);
    row("fader|+3DB", fader, "3"_s);
    row("fader|-42.4", fader, "-43"_s); // -42 is not on the scale; of two equally near the lower
    row("fader|-inf", fader, "infinity "_s);
    row("fader|INF", fader, "infinity "_s);
    row("fader|oo", fader, "infinity "_s);
    row("fader|-inf dB", fader, "infinity "_s);
    row("fader|-∞ dB", fader, "infinity "_s);
    row("fader|−12", fader, "-12"_s);
    row("fader|7", fader, ""_s);
    row("fader|-97", fader, ""_s);
    row("fader|-127", fader, ""_s);
    row("fader|+inf", fader, ""_s);
    row("fader|1e400", fader, ""_s);
    row("fader|nan", fader, ""_s);
    row("fader|", fader, ""_s);
    row("fader|6 Hz", fader, ""_s);
    row("pan|L10", pan, "L10"_s);
    row("pan|r 3", pan, "R3"_s);
    row("pan|c", pan, "C"_s);
    row("pan|-7", pan, "L7"_s);
    row("pan|20R", pan, "R20"_s);
    row("pan|5 left", pan, "L5"_s);
    row("pan|L5R", pan, ""_s);
    row("pan|R21", pan, ""_s);
    row("pan|x", pan, ""_s);
    row("gain|+12 dB", lowGain, "12"_s);
    row("gain|-12.5", lowGain, ""_s);
    row("freq|4k", highFreq, "4.0k"_s);
    row("freq|4000 Hz", highFreq, "4.0k"_s);
    row("freq|17,6 kHz", highFreq, "18.0k"_s);
    row("freq|400", highFreq, ""_s);
    row("freq|400", lowFreq, "400"_s);
    row("ratio|2.5", ratio, "2.5:1"_s);
    row("ratio|2.4 : 1", ratio, "2.5:1"_s);
    row("ratio|60", ratio, "16.0:1"_s);
    row("ratio|inf", ratio, "inf:1"_s);
    row("ratio|-inf", ratio, ""_s);
    row("ratio|0.5", ratio, ""_s);
    row("q|2.5", midQ, "2.00"_s);
    row("time|0.1 s", attack, "100"_s);
    row("time|33ms", attack, "32"_s);
    row("time|1", attack, ""_s);
}

void TestAdjustable::typedValues()
{
    QFETCH(Adjustable, a);
    QFETCH(QString, typed);
    QFETCH(QString, text);
    const std::optional<int> position = typedPosition(a, typed);
    QCOMPARE(position ? textAt(a, *position) : QString(""_s), text);
}

void TestAdjustable::words()
{
    QCOMPARE(wordsAt(fader, faderBottom), "silence"_s);
    QCOMPARE(wordsAt(fader, 157), "0 dB"_s);
    QCOMPARE(wordsAt(pan, 59), "left 20"_s);
    QCOMPARE(wordsAt(pan, 79), "centre"_s);
    QCOMPARE(wordsAt(highFreq, 0), "1.7 kHz"_s);
    QCOMPARE(wordsAt(lowFreq, 0), "32 Hz"_s);
    QCOMPARE(wordsAt(ratio, 0), "1.0 to 1"_s);
    QCOMPARE(wordsAt(ratio, 127), "limiter"_s);
    QCOMPARE(wordsAt(attack, 0), "2 ms"_s);
    QCOMPARE(title(knobOf(pair(3), ParameterId::HighMidQ)), "Channels 3 and 4 High-mid Q"_s);
}

QTEST_APPLESS_MAIN(TestAdjustable)
#include "test_adjustable.moc"
