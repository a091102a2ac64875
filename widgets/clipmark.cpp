#include "widgets/clipmark.h"

#include "widgets/colours.h"
#include "widgets/drawing.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr QRectF square(3, 3, 6, 6);

} // namespace

ClipMark::ClipMark(QWidget *parent) : QLabel(parent)
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
    if (event->button() != Qt::LeftButton) return QLabel::mousePressEvent(event);
    emit clicked();
}

void ClipMark::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawing::fill(painter, square, m_lit ? colours::red : colours::line);
    if (!m_lit) drawing::fill(painter, square.adjusted(1, 1, -1, -1), colours::well);
}
