#include "widgets/eqgraph.h"

#include "widgets/eqshapes.h"

#include <algorithm>
#include <cmath>

namespace {

enum Band { low, high, highMid, lowMid };

constexpr int shelfSteps = 32;
constexpr int middleSteps = 64;
constexpr double fullWeight = 120;
constexpr double pixelsPerPoint = 2.5; // of a line; closer points only cost time

const eqshapes::Shape &shapeOf(int band, int q)
{
    if (band == low) return eqshapes::lowShelf(false);
    return band == high ? eqshapes::highShelf() : eqshapes::peaking(q);
}

/// Returns the weights of a band at all points of its line.
double weightAt(const eqshapes::Shape &shape, int bandColumn, double column)
{
    return eqshapes::weight(shape, eqshapes::centreEntry - bandColumn + column);
}

} // namespace

double EqGraph::x(double column) const
{
    return m_area.left() + column / lastColumn * m_area.width();
}

double EqGraph::y(double gain) const
{
    return m_area.center().y() - gain / gainLimit * m_area.height() / 2;
}

QPointF EqGraph::handle(int band, const EqCurve::Band &value) const
{
    return {x(column(band, value.freq)), y(value.gain)};
}

int EqGraph::stepAt(int band, double x) const
{
    const double wanted = (x - m_area.left()) / m_area.width() * lastColumn;
    int best = 0;
    for (int step = 1; step < steps(band); ++step)
        if (std::abs(column(band, step) - wanted) < std::abs(column(band, best) - wanted))
            best = step;
    return best;
}

int EqGraph::gainAt(double y) const
{
    const double gain = (m_area.center().y() - y) / (m_area.height() / 2) * gainLimit;
    return static_cast<int>(
        std::lround(std::clamp(gain, double{-highestGain}, double{highestGain})));
}

int EqGraph::steps(int band)
{
    return hasQ(band) ? middleSteps : shelfSteps;
}

bool EqGraph::hasQ(int band)
{
    return band == highMid || band == lowMid;
}

int EqGraph::column(int band, int step)
{
    // The high band has the last frequencies of the middle bands.
    return eqshapes::column(band == high ? middleSteps - shelfSteps + step : step);
}

double EqGraph::gain(int band, const EqCurve::Band &value, double column)
{
    return value.gain / fullWeight *
           weightAt(shapeOf(band, value.q), EqGraph::column(band, value.freq), column);
}

std::pair<double, double> EqGraph::halfGain(int band, const EqCurve::Band &value)
{
    const eqshapes::Shape &shape = shapeOf(band, value.q);
    const auto isHalf = [](int weight) { return 2 * weight >= fullWeight; };
    const auto first = std::find_if(shape.begin(), shape.end(), isHalf) - shape.begin();
    const auto end = shape.rend() - std::find_if(shape.rbegin(), shape.rend(), isHalf);
    const double middle = column(band, value.freq) - eqshapes::centreEntry;
    return {middle + static_cast<double>(first) - 0.5, middle + static_cast<double>(end) - 0.5};
}

template <typename Gain>
QPolygonF EqGraph::lineOf(Gain gainAtColumn) const
{
    const double columnWidth = m_area.width() / lastColumn;
    const int pointsPerColumn = std::max(1, static_cast<int>(columnWidth / pixelsPerPoint));
    const int points = lastColumn * pointsPerColumn;
    QPolygonF line;
    line.reserve(points + 3); // closing the area needs two more
    for (int i = 0; i <= points; ++i) {
        const double column = double(i) / pointsPerColumn;
        line += QPointF(x(column), y(gainAtColumn(column)));
    }
    return line;
}

QPolygonF EqGraph::line(int band, const EqCurve::Band &value) const
{
    const eqshapes::Shape &shape = shapeOf(band, value.q);
    const int place = column(band, value.freq);
    return lineOf(
        [&](double column) { return value.gain / fullWeight * weightAt(shape, place, column); });
}

QPolygonF EqGraph::sum(const EqCurve &curve) const
{
    return lineOf([&curve](double column) {
        double sum = 0;
        for (int band = 0; band < tamber::eqBandCount; ++band) {
            const EqCurve::Band &value = curve.bands[static_cast<std::size_t>(band)];
            if (value.gain != 0) sum += gain(band, value, column);
        }
        return std::clamp(sum, double{-gainLimit}, double{gainLimit});
    });
}
