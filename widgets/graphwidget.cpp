#include "widgets/graphwidget.h"

#include <QEvent>

#include <algorithm>

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
