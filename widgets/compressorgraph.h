#pragma once

#include "widgets/compressorcurve.h"

#include <QPointF>
#include <QRectF>

/// The arithmetic of the large compressor graph: where levels, threshold and ratio lie in a graph
/// of any size. Both axes reach from -60 to +6 dB. The space above full scale, which no input
/// reaches, keeps the handle of the ratio apart from that of a threshold of 0 dB. A plain value;
/// any thread.
class CompressorGraph
{
public:
    static constexpr int lowestLevel = -60; ///< dB
    static constexpr int highestLevel = 6;
    static constexpr int thresholdSteps = 33;
    static constexpr int ratioSteps = 15;

    explicit CompressorGraph(const QRectF &area = QRectF()) : m_area(area) {}
    const QRectF &area() const { return m_area; }

    /// Levels are in dB and may lie outside the area.
    double x(double input) const;
    double y(double output) const;
    QPointF at(double input, double output) const { return {x(input), y(output)}; }

    QPointF thresholdHandle(const CompressorCurve &curve) const;
    /// Returns the place at the right end of the curve.
    QPointF ratioHandle(const CompressorCurve &curve) const;

    int thresholdAt(double x) const; ///< the nearest step
    /// Returns the ratio step whose handle is nearest, with the curve's threshold.
    int ratioAt(const CompressorCurve &curve, double y) const;

private:
    QRectF m_area;
};
