#pragma once

#include <QFont>
#include <QWidget>

/// A drawing with scales that fills its widget. It is arranged again whenever the size or the font
/// changes. GUI thread only.
class GraphWidget : public QWidget
{
    Q_OBJECT

public:
    explicit GraphWidget(QWidget *parent);

protected:
    /// Computes the places of the parts for the present size and font.
    virtual void arrange() = 0;
    /// Returns the font of the scales: a little smaller than the widget's, at least 10 pixels.
    QFont axisFont() const;
    /// The radius of a handle, and the space for one that lies half outside the area. All graphs
    /// leave it above, so that graphs beside each other begin at the same row.
    double handleRadius() const { return font().pixelSize() * 0.75 + 1; }
    double handleMargin() const;
    /// Draws the page and on it an empty well with a border.
    void drawWell(QPainter &painter, const QRectF &area) const;

    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
};
