#pragma once

#include "common/geometry.h"
#include "widgets/eqcurve.h"

#include <QLabel>
#include <QPainterPath>

/// The frequency response of a channel's equalizer as a filled curve, 136 x 77 pixels, with the 0
/// dB line at row 38. The display is transparent beside the curve, so that the background's grid
/// shows. A dot marks each band, and a sign at the left edge the low cut. GUI thread only.
class DrawEq : public QLabel
{
    Q_OBJECT

public:
    static constexpr int columns = geometry::eqColumns;
    static constexpr int zeroRow = geometry::eqZeroRow; ///< row of the 0 dB line

    explicit DrawEq(QWidget *parent = nullptr);

    const EqCurve &curve() const { return m_curve; }
    /// Shows a curve. Repaints only if it differs from the one shown.
    void setCurve(const EqCurve &curve);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawLowCut(QPainter &painter) const;
    void drawMarks(QPainter &painter) const;

    EqCurve m_curve;
    QPainterPath m_path; ///< the outline of m_curve
};
