#include "mixer/drag.h"

#include <QtTest>

using namespace mixer;

class TestDrag : public QObject
{
    Q_OBJECT

private slots:
    void rounding();
    void fader();
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
            const auto position = static_cast<std::uint16_t>(move.position);
            QCOMPARE(int(draggedFader(position, last, now)), move.expected);
        }
    }
}

QTEST_APPLESS_MAIN(TestDrag)

#include "test_drag.moc"
