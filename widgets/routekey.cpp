#include "widgets/routekey.h"

#include "widgets/routeline.h"

#include <QPainter>

RouteKey::RouteKey(bool fromMaster, QWidget *parent) : QWidget(parent), m_fromMaster(fromMaster)
{
    setFixedSize(64, 16);
}

void RouteKey::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const routeline::Style style{m_fromMaster ? m_master : m_computer, m_fromMaster, false};
    const QPointF from(routeline::socketRadius, height() / 2.0);
    routeline::drawSocket(painter, from, style);
    routeline::drawArrow(painter, from, QPointF(width(), from.y()), style);
}
