#include "mixer/drag.h"

#include <QtTest>

using namespace mixer;

/// Drags to the ends of the scales. test_random compares drags with a model of its own.
class TestDrag : public QObject
{
    Q_OBJECT

private slots:
    void rounding();
    void ends();
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

void TestDrag::ends()
{
    const int faders[][3] = {
        {157, -13, 144},  {157, -14, 144},  {200, -199, 144},  // to the top
        {157, 88, 245},   {157, 89, 245},   {157, 20000, 245}, // to the bottom
        {150, -150, 144}, {150, -151, 245}, {144, -1000, 245}, // wraps below zero
    };
    for (const auto &[position, way, expected] : faders) {
        for (const int y : {400, 3, 0, -1, -5000}) { // the same for every start of the drag
            const Pointer last(QPointF(17, y));
            QCOMPARE(draggedFader(position, last, Pointer(QPointF(-900, y + way))), expected);
        }
    }
    const std::pair<QPoint, int> pans[] = {
        {{-2, -3}, 74}, {{-60, 0}, 59}, {{-80, 0}, 79}, {{300, 0}, 99}};
    for (const auto &[way, expected] : pans) {
        const QPoint last(-3, 40000);
        QCOMPARE(draggedPan(StripKind::Even, 79, Pointer(last), Pointer(last + way)), expected);
    }
    const int gains[][3] = {{200, 190, 30}, {200, 0, 127}, {200, 300, 0}, {10, -10, 40}};
    for (const auto &[from, to, expected] : gains) {
        const Pointer last(QPointF(7, from));
        const Parameter &gain = parameter(ParameterId::HighGain);
        QCOMPARE(draggedKnob(gain, 20, last, Pointer(QPointF(900, to))), expected);
    }
}

QTEST_APPLESS_MAIN(TestDrag)
#include "test_drag.moc"
