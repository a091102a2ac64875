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
    void frames();
    void drags();
    void storedValues_data();
    void storedValues();
};

namespace {

const Parameter &lowFreq = parameter(ParameterId::LowFreq);
const Parameter &highGain = parameter(ParameterId::HighGain);
const Parameter &attack = parameter(ParameterId::Attack);

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
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("texts"); // the first, the default and the last
    const auto row = [](ParameterId id, int count, const QString &texts) {
        QTest::newRow(parameter(id).stem)
            << static_cast<int>(id) << count << texts.split(QLatin1Char(' '));
    };
    row(ParameterId::LowFreq, 32, "32 100 1.6k"_s);
    row(ParameterId::LowMidFreq, 64, "32 400 18.0k"_s);
    row(ParameterId::HighMidFreq, 64, "32 2.0k 18.0k"_s);
    row(ParameterId::HighFreq, 32, "1.7k 10.0k 18.0k"_s);
    row(ParameterId::LowMidQ, 7, "0.25 1.00 16.00"_s);
    row(ParameterId::HighMidQ, 7, "0.25 1.00 16.00"_s);
    row(ParameterId::Threshold, 33, "-32 0 0"_s);
    row(ParameterId::Ratio, 15, "1.0:1 1.0:1 inf:1"_s);
    row(ParameterId::MakeUpGain, 21, "0 0 20"_s);
}

/// Every position gives a step, both ways, and the step is what is sent.
void TestParameters::lists()
{
    QFETCH(int, id);
    QFETCH(int, count);
    QFETCH(QStringList, texts);
    const Parameter &list = parameter(static_cast<ParameterId>(id));
    int before = -1;
    for (int position = 0; position <= 127; ++position) {
        const Value value = valueAt(list, position);
        QCOMPARE(value.step, position * count / 128);
        QCOMPARE(stepOfText(list, value.text), value.step);
        QCOMPARE(commandByte(list, value.step), static_cast<std::uint8_t>(value.step));
        // A text alone puts the knob on the smallest position of its step.
        if (value.step != before) QCOMPARE(storedValue(list, -1, value.text).position, position);
        before = value.step;
    }
    QCOMPARE(valueAt(list, 0).text, texts[0]);
    QCOMPARE(valueAt(list, list.defaultPosition).text, texts[1]);
    QCOMPARE(valueAt(list, 300).text, texts[2]);
    QCOMPARE(stepOfText(list, "none"_s), -1);
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

/// Dragging up is more, one position a pixel.
void TestParameters::drags()
{
    QCOMPARE(draggedKnob(highGain, 63, 200, 190), 73);
    QCOMPARE(draggedKnob(attack, 95, 200, 190), 99);
    QCOMPARE(draggedKnob(highGain, 20, 10, 0xFFF6), 40); // out over the top of the screen
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
    row("as it was left", ParameterId::LowFreq, 30, "100", 30, "100");
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
