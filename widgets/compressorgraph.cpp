#include "widgets/compressorgraph.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double range = CompressorGraph::highestLevel - CompressorGraph::lowestLevel;

} // namespace

double CompressorGraph::x(double input) const
{
    return m_area.left() + (input - lowestLevel) / range * m_area.width();
}

double CompressorGraph::y(double output) const
{
    return m_area.bottom() - (output - lowestLevel) / range * m_area.height();
}

QPointF CompressorGraph::thresholdHandle(const CompressorCurve &curve) const
{
    return at(curve.kneeLevel(), curve.kneeLevel());
}

QPointF CompressorGraph::ratioHandle(const CompressorCurve &curve) const
{
    return at(highestLevel, curve.output(highestLevel));
}

int CompressorGraph::thresholdAt(double x) const
{
    const double level = lowestLevel + (x - m_area.left()) / m_area.width() * range;
    const double step = level - CompressorCurve{{}, 0, 0}.kneeLevel();
    return static_cast<int>(std::lround(std::clamp(step, 0.0, double{thresholdSteps - 1})));
}

int CompressorGraph::ratioAt(const CompressorCurve &curve, double y) const
{
    int best = 0;
    double least = 0;
    CompressorCurve tried = curve;
    for (int step = 0; step < ratioSteps; ++step) {
        tried.ratio = step;
        const double off = std::abs(ratioHandle(tried).y() - y);
        if (step != 0 && off >= least) continue;
        best = step;
        least = off;
    }
    return best;
}
