#include "widgets/clipmark.h"

#include "widgets/colours.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr QRectF lamp(2.5, 2.5, 7, 7);

} // namespace

ClipMark::ClipMark(QWidget *parent) : QWidget(parent)
{
    setFixedSize(side, side);
}

void ClipMark::setLit(bool lit)
{
    if (lit == m_lit) return;
    m_lit = lit;
    update();
}

void ClipMark::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    emit clicked();
}

void ClipMark::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(m_lit ? colours::red : colours::edge, 1));
    painter.setBrush(m_lit ? colours::red : colours::well);
    painter.drawEllipse(lamp);
}
