#pragma once

#include "widgets/eqcurve.h"

#include <QPointF>
#include <QPolygonF>
#include <QRectF>

#include <array>

/// The arithmetic of the large EQ graph: where steps and gains lie in a graph of any size. The
/// frequency axis follows the columns of the middle bands, and every band stands at the frequency
/// of its knob. The high band's column on the small curve is another one, so the sums of the two
/// displays differ where the high band has gain. A plain value; any thread.
///
/// Bands have the numbers of EqCurve::bands: low, high, high-mid, low-mid.
class EqGraph
{
public:
    static constexpr int lastColumn = 135;
    static constexpr int highestGain = 12; ///< dB, of a handle
    static constexpr int gainLimit = 15;   ///< dB, at the upper and lower edge

    /// A frequency with a line in the graph.
    struct Mark
    {
        const char *text;
        int step; ///< of the middle bands
    };
    static constexpr std::array<Mark, 8> marks{
        {{"50", 2},
         {"100", 7},
         {"200", 11},
         {"500", 18},
         {"1k", 25},
         {"2k", 35},
         {"5k", 47},
         {"10k", 55}}};

    /// @param area of the curves, without the axes' texts
    explicit EqGraph(const QRectF &area = QRectF()) : m_area(area) {}
    const QRectF &area() const { return m_area; }

    /// @name Places
    ///@{
    double x(double column) const;
    double y(double gain) const; ///< not clamped to the area
    QPointF handle(int band, const EqCurve::Band &value) const;
    ///@}

    /// @name Values at a place
    ///@{
    /// Returns the step of the band whose column is nearest.
    int stepAt(int band, double x) const;
    /// Returns the nearest whole gain, -12 to 12 dB.
    int gainAt(double y) const;
    ///@}

    static int steps(int band); ///< frequencies that the band has
    static bool hasQ(int band);
    /// Returns the column at which the axis has the frequency of a band's step.
    static int column(int band, int step);
    /// Returns the gain in dB of one band at a column. Between the entries of its table the shape
    /// is interpolated. The low band never includes the low cut.
    static double gain(int band, const EqCurve::Band &value, double column);
    /// Returns the columns between which the band has at least half its gain, for a middle band.
    static std::pair<double, double> halfGain(int band, const EqCurve::Band &value);

    /// Returns the line of one band, from the left edge to the right edge.
    QPolygonF line(int band, const EqCurve::Band &value) const;
    /// Returns the line of the sum of all bands, clamped to the area.
    QPolygonF sum(const EqCurve &curve) const;

private:
    template <typename Gain>
    QPolygonF lineOf(Gain gainAtColumn) const;

    QRectF m_area;
};
