#include "widgets/graphwidget.h"

#include "widgets/colours.h"
#include "widgets/drawing.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

GraphWidget::GraphWidget(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QFont GraphWidget::axisFont() const
{
    QFont axis = font();
    axis.setPixelSize(std::max(10, axis.pixelSize() - 1));
    return axis;
}

double GraphWidget::handleMargin() const
{
    constexpr double focusRing = 4;
    return std::ceil(handleRadius()) + focusRing;
}

void GraphWidget::drawWell(QPainter &painter, const QRectF &area) const
{
    painter.fillRect(rect(), colours::page);
    drawing::fill(painter, area.adjusted(-1, -1, 1, 1), colours::line);
    drawing::fill(painter, area, colours::well);
}

void GraphWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void GraphWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) arrange();
    if (event->type() == QEvent::EnabledChange) update();
}
