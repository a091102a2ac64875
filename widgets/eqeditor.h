#pragma once

#include "widgets/eqgraph.h"
#include "widgets/graphwidget.h"

#include <QPixmap>

#include <array>

class CurveHandle;

/// The large EQ graph of a channel: each band as a translucent area of its colour, the sum as a
/// line, and a handle for each band. It computes no values of the mixer: a drag says which steps
/// lie under the pointer, and the graph shows what it is told. GUI thread only.
class EqEditor : public GraphWidget
{
    Q_OBJECT

public:
    explicit EqEditor(QWidget *parent);

    const EqCurve &curve() const { return m_curve; }
    /// Shows a curve. EqCurve::marks are not used.
    void setCurve(const EqCurve &curve);
    const EqGraph &graph() const { return m_graph; }
    /// Returns the handle of a band, see EqGraph for the numbers.
    CurveHandle *handle(int band) const { return m_handles[static_cast<std::size_t>(band)]; }

signals:
    void handlePressed(int band);
    /// A handle is dragged to other values.
    void handleMoved(int band, const EqCurve::Band &value);

protected:
    void arrange() override;
    void paintEvent(QPaintEvent *event) override;

private:
    void press(int band, const QPointF &at);
    void drag(int band, const QPointF &at, Qt::KeyboardModifiers modifiers);
    int draggedQ(int band, double up);
    void placeHandles();
    void computeLines();
    QPixmap background() const;
    void drawBands(QPainter &painter) const;

    EqCurve m_curve;
    EqGraph m_graph;
    std::array<CurveHandle *, tamber::eqBandCount> m_handles{};
    std::array<QPolygonF, tamber::eqBandCount> m_lines; ///< empty for a band without gain
    QPolygonF m_sum;
    QPixmap m_background;
    QPointF m_pointer;       ///< at the last event of the drag
    QPointF m_point;         ///< where the dragged handle would stand between the steps
    EqCurve::Band m_dragged; ///< the values after the last move
    double m_turn = 0;       ///< pixels that do not make a step of Q yet
};
