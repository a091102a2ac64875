#include "tests/shorthand.h"
#include "widgets/compressorgraph.h"
#include "widgets/eqgraph.h"
#include "widgets/eqshapes.h"

#include <QtTest>

/// The arithmetic of the channel editor's graphs.
class TestGraphs : public QObject
{
    Q_OBJECT

private slots:
    void eqHandles();
    void equalFrequenciesStandTogether();
    void eqLinesPassThroughTheTables();
    void sumOfAllBands();
    void compressorHandles();
};

namespace {

enum Band { low, high, highMid, lowMid };

const QRectF areas[] = {{34, 1, 274, 204}, {41, 1, 949, 442}, {0, 0, 136, 77}};

const eqshapes::Shape &tableOf(int band, int q)
{
    if (band == low) return eqshapes::lowShelf(false);
    return band == high ? eqshapes::highShelf() : eqshapes::peaking(q);
}

} // namespace

/// From the value to the place and back, for every step of every band.
void TestGraphs::eqHandles()
{
    for (const QRectF &area : areas) {
        const EqGraph graph(area);
        for (int band = low; band <= lowMid; ++band) {
            QCOMPARE(graph.steps(band), band == low || band == high ? 32 : 64);
            for (int step = 0; step < graph.steps(band); ++step) {
                const QPointF place = graph.handle(band, {0, step, 0});
                QVERIFY(area.contains(place));
                QCOMPARE(graph.stepAt(band, place.x()), step);
            }
        }
        for (int gain = -12; gain <= 12; ++gain) {
            const QPointF place = graph.handle(low, {gain, 0, 0});
            QVERIFY(area.contains(place));
            QCOMPARE(graph.gainAt(place.y()), gain);
        }
        QCOMPARE(graph.gainAt(area.top() - 1000), 12);
        QCOMPARE(graph.gainAt(area.bottom() + 1000), -12);
        QCOMPARE(graph.stepAt(high, area.left() - 1000), 0);
        QCOMPARE(graph.stepAt(lowMid, area.right() + 1000), 63);
    }
}

/// 1.7 kHz is step 32 of a middle band and step 0 of the high band.
void TestGraphs::equalFrequenciesStandTogether()
{
    for (int step = 0; step < 32; ++step) {
        QCOMPARE(EqGraph::column(low, step), eqshapes::column(step));
        QCOMPARE(EqGraph::column(high, step), EqGraph::column(highMid, step + 32));
        QVERIFY(EqGraph::column(high, step) != eqshapes::highColumn(step));
    }
}

void TestGraphs::eqLinesPassThroughTheTables()
{
    const EqGraph graph(areas[1]);
    for (int band = low; band <= lowMid; ++band)
        for (int q = 0; q < (EqGraph::hasQ(band) ? eqshapes::qSteps : 1); ++q)
            for (int step = 0; step < graph.steps(band); step += 3) {
                const EqCurve::Band value{-7, step, q};
                const QPolygonF line = graph.line(band, value);
                const int pointsPerColumn = (line.size() - 1) / EqGraph::lastColumn;
                for (int column = 0; column <= EqGraph::lastColumn; ++column) {
                    const int entry = eqshapes::centreEntry - EqGraph::column(band, step) + column;
                    const double gain =
                        -7 / 120.0 * tableOf(band, q)[static_cast<std::size_t>(entry)];
                    const QPointF point = line[column * pointsPerColumn];
                    QVERIFY(qAbs(point.x() - graph.x(column)) < 1e-6);
                    QVERIFY(qAbs(point.y() - graph.y(gain)) < 1e-6);
                }
                // Between the columns the line stays between its neighbours, but for a rounding.
                for (int i = 0; i + pointsPerColumn < line.size(); ++i) {
                    const int from = i / pointsPerColumn * pointsPerColumn;
                    const double least = qMin(line[from].y(), line[from + pointsPerColumn].y());
                    const double most = qMax(line[from].y(), line[from + pointsPerColumn].y());
                    const double rounding = graph.y(0) - graph.y(7 / 120.0);
                    QVERIFY(line[i].y() > least - rounding && line[i].y() < most + rounding);
                }
            }
    const auto [from, to] = EqGraph::halfGain(highMid, {5, 35, 2});
    QCOMPARE(to - from, 10.0); // entries 197 to 206
}

void TestGraphs::sumOfAllBands()
{
    const EqGraph graph(areas[1]);
    EqCurve curve;
    curve.lowCut = true;
    curve.bands = {{{-5, 9, 0}, {3, 22, 0}, {6, 45, 2}, {-3, 18, 3}}};
    QPolygonF sum = graph.sum(curve);
    const int pointsPerColumn = (sum.size() - 1) / EqGraph::lastColumn;
    for (int column = 0; column <= EqGraph::lastColumn; ++column) {
        double gain = 0;
        for (int band = low; band <= lowMid; ++band)
            gain += EqGraph::gain(band, curve.bands[static_cast<std::size_t>(band)], column);
        QVERIFY(qAbs(sum[column * pointsPerColumn].y() - graph.y(gain)) < 1e-6);
    }
    const QPolygonF withLowCut = sum;
    curve.lowCut = false;
    QCOMPARE(graph.sum(curve), withLowCut); // the low cut is a sign, not a curve
    for (EqCurve::Band &band : curve.bands)
        band = {12, 20, 0};
    sum = graph.sum(curve);
    QVERIFY(qAbs(sum.boundingRect().top() - areas[1].top()) < 1e-6);
}

void TestGraphs::compressorHandles()
{
    for (const QRectF &area : {QRectF(34, 1, 252, 204), QRectF(34, 1, 560, 560)}) {
        const CompressorGraph graph(area);
        for (int threshold = 0; threshold < CompressorGraph::thresholdSteps; ++threshold)
            for (int ratio = 0; ratio < CompressorGraph::ratioSteps; ++ratio) {
                const CompressorCurve curve{CompressorCurve::State::On, threshold, ratio};
                const QPointF knee = graph.thresholdHandle(curve);
                const QPointF end = graph.ratioHandle(curve);
                QCOMPARE(graph.thresholdAt(knee.x()), threshold);
                QCOMPARE(graph.ratioAt(curve, end.y()), ratio);
                QVERIFY(area.adjusted(0, 0, 1, 1).contains(end));
                // Both handles can be grasped, also with a threshold of 0 dB.
                QVERIFY(QLineF(knee, end).length() > 20);
            }
        QCOMPARE(graph.thresholdAt(area.left() - 1000), 0);
        QCOMPARE(graph.thresholdAt(area.right() + 1000), 32);
    }
}

QTEST_GUILESS_MAIN(TestGraphs)
#include "test_graphs.moc"
