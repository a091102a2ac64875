#include "widgets/meterpart.h"

#include "widgets/sharppixmap.h"

#include <QPainter>

MeterPart::MeterPart(const QColor &colour, QWidget *parent) : MeterPart(colour, QColor(), parent) {}

MeterPart::MeterPart(const QColor &colour, const QColor &edge, QWidget *parent)
    : QWidget(parent), m_colour(colour), m_edge(edge)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

MeterPart::MeterPart(const QString &image, QWidget *parent) : QWidget(parent), m_image(image)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void MeterPart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!m_image.isEmpty()) {
        const QPixmap image = sharpPixmap(m_image, devicePixelRatioF());
        const qreal imageHeight = image.height() / image.devicePixelRatio();
        painter.drawPixmap(QPointF(0, height() - imageHeight), image);
    } else if (m_edge.isValid()) {
        constexpr int half = 200; // percent, as QColor::darker() counts
        painter.fillRect(rect(), isEnabled() ? m_edge : m_edge.darker(half));
        painter.fillRect(rect().adjusted(1, 1, -1, -1), m_colour);
    } else {
        painter.fillRect(rect(), m_colour);
    }
}
