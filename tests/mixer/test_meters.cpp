#include "mixer/levelmeter.h"
#include "tests/mixer/console.h"
#include "tests/shorthand.h"

#include <QtTest>

using namespace mixer;

/// The level meters and the gain-reduction bar: their arithmetic and the values from the device.
class TestMeters : public QObject
{
    Q_OBJECT

private slots:
    void gaps();
    void levelRisesAtOnceAndFallsSlowly();
    void peakMark();
    void maximumAndClip();
    void reduction();
    void metersShowTheDevice();
    void levelsOutOfRange();
    void barBelongsToItsStrip();
};

void TestMeters::gaps()
{
    for (const int silent : {0, 31, 32, 36, 72})
        QCOMPARE(LevelMeter::gap(static_cast<std::uint16_t>(silent)), 106);
    const int gaps[][2] = {{73, 104}, {81, 104}, {82, 102}, {29203, 2}, {29204, 0}, {65535, 0}};
    for (const auto &[level, gap] : gaps)
        QCOMPARE(LevelMeter::gap(static_cast<std::uint16_t>(level)), gap);
    for (int level = 1; level < 65536; ++level) {
        const int step = LevelMeter::gap(static_cast<std::uint16_t>(level - 1)) -
                         LevelMeter::gap(static_cast<std::uint16_t>(level));
        QVERIFY(step == 0 || step == 2);
    }
}

void TestMeters::levelRisesAtOnceAndFallsSlowly()
{
    LevelMeter meter;
    QCOMPARE(meter.reading().gap, 106);
    meter.update(32768);
    QCOMPARE(meter.reading().gap, 0);
    for (int update = 0; update <= 53; ++update) {
        meter.update(0);
        QCOMPARE(meter.reading().gap, 2 * update);
    }
    meter.update(29203); // -1 dB
    QCOMPARE(meter.reading().gap, 2);
}

void TestMeters::maximumAndClip()
{
    LevelMeter meter;
    meter.update(32768);
    meter.update(0); // the bar is still at the top
    for (int update = 0; update < LevelMeter::holdUpdates; ++update) {
        QCOMPARE(meter.reading().hold, 0);
        meter.update(0);
    }
    QCOMPARE(meter.reading().hold, meter.reading().gap); // now the line is at the bar's top again
    QVERIFY(meter.reading().hold > 0);

    meter.clear();
    QCOMPARE(meter.reading().hold, 106);
    QVERIFY(meter.reading().clip); // it belongs to the user
    meter.clearClip();
    meter.update(29203);
    QVERIFY(!meter.reading().clip);
}

void TestMeters::peakMark()
{
    LevelMeter meter;
    meter.update(29203); // more than 1 dB below full scale
    QVERIFY(!meter.reading().peak);
    meter.update(29204);
    meter.countPeakDown();
    QVERIFY(meter.reading().peak);
    meter.update(32768); // set again
    meter.countPeakDown();
    meter.update(0);
    QVERIFY(meter.reading().peak);
    meter.countPeakDown();
    QVERIFY(!meter.reading().peak);

    meter.update(32768);
    meter.clear(); // after a disconnection
    QVERIFY(!meter.reading().peak);
    QCOMPARE(meter.reading().gap, 106);
}

void TestMeters::reduction()
{
    const int targets[][2] = {
        {0, 63},    {1000, 63}, {2066, 63}, {2067, 60},  {16421, 15}, {16422, 12}, {29203, 2},
        {29204, 1}, {30000, 1}, {32767, 1}, {32768, 63}, {40000, 63}, {65535, 63},
    };
    for (const auto &[gain, length] : targets)
        QCOMPARE(reductionTarget(static_cast<std::uint16_t>(gain)), length);
    QList<int> lengths;
    for (int length = 63; length > 0; length = fallenReduction(length))
        lengths += length;
    QCOMPARE(lengths, (QList<int>{63, 55, 47, 39, 31, 23, 15, 7, 3, 1}));
    const int falls[][2] = {{8, 4}, {4, 2}, {2, 1}};
    for (const auto &[length, fallen] : falls)
        QCOMPARE(fallenReduction(length), fallen);
}

/// The meters of a pair show the levels of its channels, whether it is linked or not.
void TestMeters::metersShowTheDevice()
{
    Console console("[Track5_6]\nLink=true\n");
    const auto isLit = [&](int meter) {
        return console.presence.meters().readings()[static_cast<std::size_t>(meter)].gap < 106;
    };
    console.pass(300);
    for (int left = 0; left < 8; ++left)
        for (const int side : {0, 1})
            QCOMPARE(isLit(4 * left + side), isLit(4 * left + 2 + side));
    QVERIFY(isLit(8) && isLit(9)); // inputs 5 and 6
    QVERIFY(!isLit(4 * 7 + 1));    // nothing is connected to input 16
    QVERIFY(isLit(32) && isLit(33));
    console.mixer.setMute(master(), true);
    console.pass(7000); // the bars fall slowly
    QVERIFY(!isLit(32) && !isLit(33) && isLit(8));
    console.setPlugged(false);
    for (int meter = 0; meter < Meters::count; ++meter)
        QVERIFY(!isLit(meter));
}

/// A reading beyond full scale is invalid and shows silence.
void TestMeters::levelsOutOfRange()
{
    Console console;
    Meters meters(console.device);
    std::array<vxctl::MeterRecord, vxctl::meterCount> list{{
        {4, 3, 0, 40000},
        {4, 4, 0, 32768},
        {2, 2, 0, 32768},
        {4, 17, 0, 32768}, // no such input
        {1, 1, 0, 32768},  // no such channel type
    }};
    const QByteArray answer(reinterpret_cast<const char *>(list.data()), sizeof list);
    const auto gapOf = [&](int meter) {
        console.device.recv_get_meter(true, answer, 18);
        return meters.poll() ? meters.readings()[static_cast<std::size_t>(meter)].gap : -1;
    };
    QCOMPARE(gapOf(4), 106);
    QCOMPARE(gapOf(5), 0);
    QCOMPARE(gapOf(7), 0); // the right side of the pair 3-4
    QCOMPARE(gapOf(33), 0);
    QCOMPARE(gapOf(32), 106);
    QCOMPARE(gapOf(0), 106);
}

/// The bar shows only the reduction of the edited strip: not that of the strip edited before, and
/// not an earlier one of the same strip. It disappears when the compressor is off.
void TestMeters::barBelongsToItsStrip()
{
    Console console("[Track5]\nSelect=true\nComp=true\nCompRatioText=inf:1\n"
                    "CompThresholdText=-32\n");
    const auto length = [&] { return console.presence.gainReduction().length(); };
    console.pass(500);
    QVERIFY(length() > 30);
    console.mixer.select(track(16), true);
    console.pass(100);
    QCOMPARE(length(), 0);
    console.mixer.select(track(5), true);
    console.presence.tick(); // before the first answer for this strip
    QCOMPARE(length(), 0);
    console.pass(300);
    QVERIFY(length() > 30);
    console.mixer.setComp(track(5), false);
    console.pass(2000);
    QCOMPARE(length(), 0);

    // Without an edited strip no reduction is requested.
    console.mixer.select(track(5), false);
    console.settle();
    console.cable.takeSent();
    console.pass(300);
    for (const QByteArray &message : console.cable.takeSent())
        QVERIFY2(!message.contains("b1"), message.constData());
}

QTEST_GUILESS_MAIN(TestMeters)
#include "test_meters.moc"
