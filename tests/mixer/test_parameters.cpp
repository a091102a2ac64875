#include "mixer/parameters.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

class TestParameters : public QObject
{
    Q_OBJECT

private slots:
    void gainScale();
    void lists_data();
    void lists();
    void times();
    void frames();
    void storedValues_data();
    void storedValues();
};

namespace {

const Parameter &lowFreq = parameter(ParameterId::LowFreq);
const Parameter &highGain = parameter(ParameterId::HighGain);
const Parameter &attack = parameter(ParameterId::Attack);

QStringList textsOf(const Parameter &parameter)
{
    QStringList texts;
    for (int step = 0; step < parameter.steps; ++step)
        texts += parameter.text(step);
    return texts;
}

const QStringList lowFrequencies =
    "32 40 50 60 70 80 90 100 125 150 175 200 225 250 300 350 400 450 500 600 700 800 850 900 950 "
    "1.0k 1.1k 1.2k 1.3k 1.4k 1.5k 1.6k"_s.split(QLatin1Char(' '));
const QStringList highFrequencies =
    "1.7k 1.8k 1.9k 2.0k 2.2k 2.4k 2.6k 2.8k 3.0k 3.2k 3.4k 3.6k 3.8k 4.0k 4.5k 5.0k 5.5k 6.0k "
    "6.5k 7.0k 7.5k 8.0k 9.0k 10.0k 11.0k 12.0k 13.0k 14.0k 15.0k 16.0k 17.0k 18.0k"_s.split(
        QLatin1Char(' '));

QStringList numbers(int from, int to)
{
    QStringList list;
    for (int i = from; i <= to; ++i)
        list += QString::number(i);
    return list;
}

} // namespace

void TestParameters::gainScale()
{
    for (int position = 0; position <= 300; ++position) {
        int expected = 0;
        if (position <= 5)
            expected = -12;
        else if (position <= 120)
            expected = -12 + (position + 4) / 5 - 1; // 6 to 10 is -11
        else if (position <= 127)
            expected = 12;
        QCOMPARE(gainOfPosition(position), expected);
        QCOMPARE(valueAt(highGain, position).text, QString::number(expected));
        QCOMPARE(
            commandByte(highGain, valueAt(highGain, position).step),
            static_cast<std::uint8_t>(expected));
    }
    QCOMPARE(gainOfPosition(60), -1);
    QCOMPARE(gainOfPosition(61), 0);
    QCOMPARE(valueAt(highGain, highGain.defaultPosition).text, "0"_s);
}

void TestParameters::lists_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("defaultText");
    const auto row = [](ParameterId id, const QStringList &texts, const QString &text) {
        QTest::newRow(parameter(id).stem) << static_cast<int>(id) << texts << text;
    };
    const QStringList q = "0.25 0.50 1.00 2.00 4.00 8.00 16.00"_s.split(QLatin1Char(' '));
    row(ParameterId::LowFreq, lowFrequencies, "100"_s);
    row(ParameterId::LowMidFreq, lowFrequencies + highFrequencies, "400"_s);
    row(ParameterId::HighMidFreq, lowFrequencies + highFrequencies, "2.0k"_s);
    row(ParameterId::HighFreq, highFrequencies, "10.0k"_s);
    row(ParameterId::LowMidQ, q, "1.00"_s);
    row(ParameterId::HighMidQ, q, "1.00"_s);
    row(ParameterId::Threshold, numbers(-32, 0), "0"_s);
    row(ParameterId::Ratio,
        "1.0:1 1.1:1 1.3:1 1.5:1 1.7:1 2.0:1 2.5:1 3.0:1 3.5:1 4.0:1 5.0:1 6.0:1 8.0:1 16.0:1 "
        "inf:1"_s.split(QLatin1Char(' ')),
        "1.0:1"_s);
    row(ParameterId::MakeUpGain, numbers(0, 20), "0"_s);
}

/// Each position maps to a step and the text of that step back to it. The step is sent.
void TestParameters::lists()
{
    QFETCH(int, id);
    QFETCH(QStringList, texts);
    QFETCH(QString, defaultText);
    const Parameter &list = parameter(static_cast<ParameterId>(id));
    QCOMPARE(textsOf(list), texts);
    int before = -1;
    for (int position = 0; position <= 127; ++position) {
        const Value value = valueAt(list, position);
        QCOMPARE(value.step, position * texts.size() / 128);
        QCOMPARE(value.text, texts[value.step]);
        QCOMPARE(stepOfText(list, value.text), value.step);
        QCOMPARE(commandByte(list, value.step), static_cast<std::uint8_t>(value.step));
        // A text alone puts the knob on the smallest position of its step.
        if (value.step != before) QCOMPARE(storedValue(list, -1, value.text).position, position);
        before = value.step;
    }
    QCOMPARE(valueAt(list, 300).text, texts.last());
    QCOMPARE(valueAt(list, list.defaultPosition).text, defaultText);
    QCOMPARE(stepOfText(list, "none"_s), -1);
}

void TestParameters::times()
{
    const Parameter &release = parameter(ParameterId::Release);
    for (int step = 0; step < 100; ++step) {
        QCOMPARE(valueAt(attack, step).text, QString::number(2 * step + 2));
        QCOMPARE(valueAt(release, step).text, QString::number(10 * step + 10));
        QCOMPARE(commandByte(attack, valueAt(attack, step).step), static_cast<std::uint8_t>(step));
    }
    QCOMPARE(attackTime(-1), 2);
    QCOMPARE(attackTime(157), 200);
    QCOMPARE(releaseTime(120), 1000);
    QCOMPARE(releaseTime(-5), 10);
}

void TestParameters::frames()
{
    // First position of each frame of a gain knob.
    const QList<int> starts = {0,  11, 16, 21, 26, 31, 36,  41,  51,  56, 61,
                               66, 71, 76, 81, 91, 96, 101, 106, 111, 116};
    int frame = 0;
    for (int position = 0; position <= 127; ++position) {
        if (frame < 20 && position == starts[frame + 1]) ++frame;
        QCOMPARE(knobFrame(highGain, position), frame);
        QCOMPARE(knobFrame(lowFreq, position), qMin(20, position / 6));
    }
    for (int step = 0; step < 100; ++step)
        QCOMPARE(knobFrame(attack, step), step * 21 / 100);
}

void TestParameters::storedValues_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expectedPosition");
    QTest::addColumn<QString>("expectedText");
    const auto row = [](const char *name, ParameterId id, int position, const char *text,
                        int expectedPosition, const char *expectedText) {
        QTest::newRow(name) << static_cast<int>(id) << position << QString::fromLatin1(text)
                            << expectedPosition << QString::fromLatin1(expectedText);
    };
    row("valid", ParameterId::LowFreq, 30, "100", 30, "100");
    row("nothing stored", ParameterId::LowFreq, 157, "", 28, "100");
    row("text in no list", ParameterId::LowFreq, 3, "1.7k", 28, "100");
    row("text decides", ParameterId::LowFreq, 3, "1.6k", 124, "1.6k");
    row("position out of range", ParameterId::Ratio, 157, "inf:1", 120, "inf:1");
    row("threshold missing", ParameterId::Threshold, 157, "", 125, "0");
    row("gain missing", ParameterId::HighGain, 157, "", 63, "0");
    row("gain, text ignored", ParameterId::HighGain, 127, "3", 127, "12");
    row("gain below the knob", ParameterId::HighGain, -4, "", 63, "0");
    row("attack missing", ParameterId::Attack, 157, "", 99, "200");
    row("release missing", ParameterId::Release, 157, "", 99, "1000");
}

void TestParameters::storedValues()
{
    QFETCH(int, id);
    QFETCH(int, position);
    QFETCH(QString, text);
    const Value value = storedValue(parameter(static_cast<ParameterId>(id)), position, text);
    QTEST(value.position, "expectedPosition");
    QTEST(value.text, "expectedText");
}

QTEST_APPLESS_MAIN(TestParameters)
#include "test_parameters.moc"
