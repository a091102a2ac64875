#pragma once

#include "widgets/compressorgraph.h"
#include "widgets/graphwidget.h"

#include <QPixmap>

#include <optional>

class CurveHandle;

/// The large transfer curve of a channel's compressor, with handles for threshold and ratio, the
/// output with make-up gain as a dashed line, and the live input level as a dot on the curve. It
/// shows what it is told. GUI thread only.
class CompressorEditor : public GraphWidget
{
    Q_OBJECT

public:
    explicit CompressorEditor(QWidget *parent);

    const CompressorCurve &curve() const { return m_curve; }
    /// @param makeUp gain in dB
    void setCurve(const CompressorCurve &curve, int makeUp);
    /// Shows the level that enters the compressor, in dB, or none. Repaints only around the dot.
    void setInput(const std::optional<double> &level);
    /// Returns where the dot is, or nothing while none is shown.
    std::optional<QPointF> dot() const;

    const CompressorGraph &graph() const { return m_graph; }
    CurveHandle *thresholdHandle() const { return m_threshold; }
    CurveHandle *ratioHandle() const { return m_ratio; }

signals:
    void handlePressed();
    void thresholdMoved(int step);
    void ratioMoved(int step);

protected:
    void arrange() override;
    void paintEvent(QPaintEvent *event) override;

private:
    void press(const QPointF &at, const QPointF &handle);
    QPointF dragged(const QPointF &at, Qt::KeyboardModifiers modifiers);
    void dragThreshold(const QPointF &at, Qt::KeyboardModifiers modifiers);
    void dragRatio(const QPointF &at, Qt::KeyboardModifiers modifiers);
    void placeHandles();
    QPixmap background() const;
    void drawGrid(QPainter &painter) const;
    void drawCurve(QPixmap &picture) const;
    QRect dotArea() const;
    double dotRadius() const;

    CompressorCurve m_curve;
    int m_makeUp = 0;
    std::optional<double> m_input;
    CompressorGraph m_graph;
    CurveHandle *const m_threshold;
    CurveHandle *const m_ratio;
    QPixmap m_background;      ///< well, grid and scales
    QPixmap m_picture;         ///< with the curve; everything but the dot
    QPointF m_pointer;         ///< at the last event of the drag
    QPointF m_point;           ///< where the dragged handle would stand between the steps
    CompressorCurve m_dragged; ///< the values after the last move
};
