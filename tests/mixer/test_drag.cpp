#include "mixer/drag.h"

#include <QtTest>

using namespace mixer;

class TestDrag : public QObject
{
    Q_OBJECT

private slots:
    void rounding();
    void fader();
    void pan();
    void knob();
};

void TestDrag::rounding()
{
    const std::pair<double, int> pixels[] = {{12, 12},      {12.49, 12},  {12.5, 13},
                                             {0, 0},        {-0.49, 0},   {-0.5, -1},
                                             {-12.49, -12}, {-12.5, -13}, {-1365.5, -1366}};
    for (const auto &[coordinate, pixel] : pixels) {
        QCOMPARE(int(roundedCoordinate(coordinate)), pixel & 0xFFFF);
        const Pointer pointer(QPointF(coordinate, -coordinate));
        QCOMPARE(int(pointer.x), pixel & 0xFFFF);
        QCOMPARE(int(pointer.y), -pixel & 0xFFFF);
    }
}

void TestDrag::fader()
{
    struct
    {
        int position, way, expected;
    } const moves[] = {
        {157, 30, 187},   {157, -10, 147},  {200, 0, 200},     // within
        {157, -13, 144},  {157, -14, 144},  {200, -199, 144},  // to the top
        {157, 88, 245},   {157, 89, 245},   {157, 20000, 245}, // to the bottom
        {150, -150, 144}, {150, -151, 245}, {144, -1000, 245}, // below zero it wraps
    };
    for (const auto &move : moves) {
        // Only the way counts, not where on the screens it is, nor anything sideways.
        for (const int y : {400, 3, 0, -1, -5000}) {
            const Pointer last(QPointF(17, y));
            const Pointer now(QPointF(-900, y + move.way));
            QCOMPARE(draggedFader(move.position, last, now), move.expected);
        }
    }
}

/// Right and down turn towards R. Each first half of a pair's page ends at 40, each second one
/// at 59.
void TestDrag::pan()
{
    struct
    {
        StripKind kind;
        int position;
        QPoint way;
        int expected;
    } const moves[] = {
        {StripKind::Odd, 20, {9, 0}, 29},    {StripKind::Odd, 20, {3, 4}, 27},
        {StripKind::Odd, 20, {21, 0}, 40},   {StripKind::Odd, 20, {0, -20}, 0},
        {StripKind::Odd, 5, {-6, 0}, 5}, // beyond zero it is not taken
        {StripKind::Even, 79, {-2, -3}, 74}, {StripKind::Even, 79, {-60, 0}, 59},
        {StripKind::Even, 79, {-80, 0}, 79}, {StripKind::Even, 79, {300, 0}, 99},
    };
    for (const auto &[kind, position, way, expected] : moves) {
        const QPoint last(-3, 40000);
        QCOMPARE(draggedPan(kind, position, Pointer(last), Pointer(last + way)), expected);
    }
}

/// Up is more, one position a pixel.
void TestDrag::knob()
{
    struct
    {
        ParameterId id;
        int position, from, to, expected;
    } const moves[] = {
        {ParameterId::HighGain, 63, 200, 190, 73},
        {ParameterId::HighGain, 63, 200, 210, 53},
        {ParameterId::HighGain, 120, 200, 0, 127},
        {ParameterId::LowFreq, 5, 200, 300, 0},
        {ParameterId::Attack, 95, 200, 190, 99},
        {ParameterId::HighGain, 20, 10, -10, 40}, // out over the top of the screen
    };
    for (const auto &[id, position, from, to, expected] : moves)
        QCOMPARE(
            draggedKnob(
                parameter(id), position, Pointer(QPointF(7, from)), Pointer(QPointF(900, to))),
            expected);
}

QTEST_APPLESS_MAIN(TestDrag)

#include "test_drag.moc"
