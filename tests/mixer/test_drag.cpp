#include "mixer/drag.h"

#include <QtTest>

using namespace mixer;

Q_DECLARE_METATYPE(mixer::StripKind)

class TestDrag : public QObject
{
    Q_OBJECT

private slots:
    void rounding();
    void fader();
    void pan_data();
    void pan();
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

void TestDrag::pan_data()
{
    QTest::addColumn<StripKind>("kind");
    QTest::addColumn<int>("position");
    QTest::addColumn<QPoint>("way");
    QTest::addColumn<int>("expected");
    const StripKind odd = StripKind::Odd;
    const StripKind even = StripKind::Even;
    QTest::newRow("right") << odd << 20 << QPoint(5, 0) << 25;
    QTest::newRow("left") << odd << 20 << QPoint(-5, 0) << 15;
    QTest::newRow("down is right") << odd << 20 << QPoint(0, 5) << 25;
    QTest::newRow("up is left") << odd << 20 << QPoint(0, -5) << 15;
    QTest::newRow("both axes") << odd << 10 << QPoint(9, -6) << 13;
    QTest::newRow("odd to the left end") << odd << 5 << QPoint(-5, 0) << 0;
    QTest::newRow("odd beyond zero, not taken") << odd << 5 << QPoint(-6, 0) << 5;
    QTest::newRow("odd beyond zero on two axes") << odd << 5 << QPoint(-3, -3) << 5;
    QTest::newRow("odd beyond the right end") << odd << 39 << QPoint(30, 900) << 40;
    QTest::newRow("even beyond the left end") << even << 79 << QPoint(-79, 0) << 59;
    QTest::newRow("even beyond zero, not taken") << even << 79 << QPoint(0, -80) << 79;
    QTest::newRow("even to the right end") << even << 79 << QPoint(20, 0) << 99;
    QTest::newRow("even beyond the right end") << even << 79 << QPoint(21, 0) << 99;
    QTest::newRow("pair has no end") << StripKind::Pair << 50 << QPoint(400, 0) << 450;
}

void TestDrag::pan()
{
    QFETCH(StripKind, kind);
    QFETCH(int, position);
    QFETCH(QPoint, way);
    const auto at = static_cast<std::uint16_t>(position);
    for (const QPoint &start : {QPoint(600, 300), QPoint(2, 2), QPoint(-700, -1)})
        QTEST(int(draggedPan(kind, at, Pointer(start), Pointer(start + way))), "expected");
}

QTEST_APPLESS_MAIN(TestDrag)

#include "test_drag.moc"
