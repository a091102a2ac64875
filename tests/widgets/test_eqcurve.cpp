#include "widgets/eqcurve.h"
#include "widgets/eqshapes.h"

#include <QtTest>

#include <algorithm>
#include <functional>
#include <utility>

using eqshapes::Shape;

class TestEqCurve : public QObject
{
    Q_OBJECT

private slots:
    void bells();
    void highShelf();
    void lowShelves();
    void positionsOfBands();
    void clamping();
    void rounding();
};

namespace {

constexpr int full = 31; // pixels of a band at 12 dB

bool between(int value, int low, int high)
{
    return low <= value && value <= high;
}

bool allAre(const Shape &shape, int first, int last, const std::function<bool(int)> &test)
{
    return std::all_of(shape.begin() + first, shape.begin() + last + 1, test);
}

EqCurve only(std::size_t band, int gain, int freq, int q = 0)
{
    EqCurve curve;
    curve.bands[band] = {gain, freq, q};
    return curve;
}

} // namespace

void TestEqCurve::bells()
{
    /// For each Q step the first and last entry of at least half the height.
    const int spans[][2] = {{184, 218}, {193, 211}, {197, 206}, {199, 204},
                            {200, 203}, {202, 203}, {201, 202}};
    for (int q = 0; q < eqshapes::qSteps; ++q) {
        const auto [first, last] = spans[q];
        const Shape &bell = eqshapes::peaking(q);
        const auto top = std::max_element(bell.begin(), bell.end());
        QVERIFY(between(*top, 120, 122));
        QVERIFY(between(static_cast<int>(top - bell.begin()), 201, 203));
        QVERIFY(std::is_sorted(bell.begin(), top));
        QVERIFY(std::is_sorted(top, bell.end(), std::greater<>()));
        for (int i = 0; i < eqshapes::entryCount; ++i) {
            const int weight = bell[static_cast<std::size_t>(i)];
            const int mirrored = first + last - i;
            QCOMPARE(weight >= 60, between(i, first, last));
            if (!between(i, 135, 269))
                QCOMPARE(weight, 0);
            else if (between(mirrored, 135, 269))
                QCOMPARE(weight, bell[static_cast<std::size_t>(mirrored)]);
        }
    }
}

void TestEqCurve::highShelf()
{
    const Shape &shelf = eqshapes::highShelf();
    QVERIFY(allAre(shelf, 0, 135, [](int weight) { return weight == 0; }));
    QCOMPARE(shelf[190], 63);
    QCOMPARE(shelf[200], 88);
    QCOMPARE(shelf[234], 120);
    QVERIFY(allAre(shelf, 234, 404, [](int weight) { return between(weight, 119, 122); }));
    QVERIFY(std::is_sorted(shelf.begin(), shelf.begin() + 235));
}

void TestEqCurve::lowShelves()
{
    const Shape &cut = eqshapes::lowShelf(true);
    QVERIFY(allAre(cut, 0, 180, [](int weight) { return weight == 150; }));
    QCOMPARE(cut[200], 48);
    QVERIFY(allAre(cut, 220, 404, [](int weight) { return weight == 0; }));

    const Shape &plain = eqshapes::lowShelf(false);
    QVERIFY(allAre(plain, 0, 180, [](int weight) { return between(weight, 120, 121); }));
    QCOMPARE(plain[200], 99);
    QVERIFY(plain[269] > 0);
    QVERIFY(allAre(plain, 270, 404, [](int weight) { return weight == 0; }));

    for (const Shape *shelf : {&cut, &plain})
        QVERIFY(std::is_sorted(shelf->begin(), shelf->end(), std::greater<>()));
    for (const int weight : {105, 11})
        QVERIFY(std::count(cut.begin(), cut.end(), weight) > 0);
    for (const int weight : {76, 50, 25, 11, 6})
        QVERIFY(std::count(plain.begin(), plain.end(), weight) > 0);
}

/// Each band is drawn with its own shape at its own frequency.
void TestEqCurve::positionsOfBands()
{
    const EqCurve low = only(0, 12, 7);
    QCOMPARE(low.response(1), full);
    QCOMPARE(low.response(135), 0);
    const EqCurve high = only(1, 12, 0);
    QCOMPARE(high.response(1), 0);
    QCOMPARE(high.response(135), full);
    for (const std::size_t mid : {2, 3}) {
        const EqCurve bell = only(mid, -12, 63, 5);
        QCOMPARE(bell.response(133), -full);
        QCOMPARE(bell.response(73), 0);
        QVERIFY(only(mid, 12, 25, 0).response(90) > only(mid, 12, 25, 3).response(90));
    }
    EqCurve both = only(2, 12, 25, 6);
    both.bands[3] = {-12, 25, 6};
    QCOMPARE(both.response(76), 0);
}

void TestEqCurve::clamping()
{
    EqCurve cut = only(0, 12, 31);
    cut.lowCut = true;
    QCOMPARE(cut.response(1), 39);
    cut.bands[0].gain = -12;
    QCOMPARE(cut.response(1), -39);
    for (const int sign : {1, -1}) {
        EqCurve curve;
        curve.bands = {
            {{sign * 12, 31, 0}, {sign * 12, 0, 0}, {sign * 12, 25, 0}, {sign * 12, 25, 0}}};
        QCOMPARE(curve.response(76), sign * 39);
    }
}

/// Positive heights are rounded to the nearest pixel, negative ones are truncated. 1 dB is 2.6
/// pixels high, 3 dB is 7.8 pixels.
void TestEqCurve::rounding()
{
    const int pixels[][2] = {{1, 3}, {-1, -2}, {3, 8}, {-3, -7}, {2, 5}, {-2, -5}};
    for (const auto &[gain, height] : pixels)
        QCOMPARE(only(0, gain, 31).response(1), height);

    // 9 dB of the low shelf and 6 dB of the high shelf with weight 63: 31.5 pixels.
    for (const auto &[sign, height] : {std::pair(1, 32), std::pair(-1, -31)}) {
        EqCurve curve = only(0, sign * 9, 31);
        curve.bands[1] = {sign * 6, 0, 0};
        QCOMPARE(curve.response(61), height);
    }
}

QTEST_APPLESS_MAIN(TestEqCurve)

#include "test_eqcurve.moc"
