#pragma once

#include "common/geometry.h"
#include "widgets/eqcurve.h"

#include <QLabel>
#include <QPainterPath>

/// The response of a channel's equalizer as a filled curve, 136 x 77 pixels, a column a frequency
/// and the 0 dB line at row 38. It is transparent beside the curve, so that a grid shows behind
/// it. GUI thread only.
class DrawEq : public QLabel
{
    Q_OBJECT

public:
    static constexpr int columns = geometry::eqColumns;
    static constexpr int zeroRow = geometry::eqZeroRow;

    explicit DrawEq(QWidget *parent = nullptr);

    const EqCurve &curve() const { return m_curve; }
    /// Shows another curve; repaints only when it differs.
    void setCurve(const EqCurve &curve);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    EqCurve m_curve;
    QPainterPath m_path; ///< of the curve
};
