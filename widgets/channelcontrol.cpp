#include "widgets/channelcontrol.h"

#include "widgets/colours.h"

#include <QPainter>

static constexpr qreal dimmedOpacity = 0.5;

ChannelControl::ChannelControl(stripsurface::Look look, QWidget *parent)
    : QWidget(parent), m_look(look)
{
    setAttribute(Qt::WA_OpaquePaintEvent); // a control that moves repaints nothing below the strip
    setFixedSize(stripsurface::sizeOf(look));
}

void ChannelControl::setSelected(bool selected)
{
    if (selected == m_selected) return;
    m_selected = selected;
    m_image = QPixmap();
    update();
}

void ChannelControl::setDimmed(bool dimmed)
{
    if (dimmed == m_dimmed) return;
    m_dimmed = dimmed;
    update();
}

void ChannelControl::paintEvent(QPaintEvent *)
{
    const qreal ratio = devicePixelRatioF();
    if (m_image.isNull() || m_image.devicePixelRatio() != ratio)
        m_image = stripsurface::image(m_look, m_selected, ratio);
    QPainter painter(this);
    painter.fillRect(rect(), colours::page); // in the corners
    if (m_dimmed) painter.setOpacity(dimmedOpacity);
    painter.drawPixmap(0, 0, m_image);
}
