#include "widgets/vectordial.h"

#include "widgets/colours.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double firstAngle = -150; // degrees clockwise from 12 o'clock
constexpr double wholeAngle = 300;
constexpr double sidePerText = 2.8; // of the font's height
constexpr double radians = 3.14159265358979 / 180;

} // namespace

VectorDial::VectorDial(QWidget *parent) : TurnControl(QAccessible::Dial, parent) {}

void VectorDial::setArc(double from, double to)
{
    if (from == m_from && to == m_to) return;
    m_from = from;
    m_to = to;
    update();
}

void VectorDial::setLit(bool lit)
{
    if (lit == m_lit) return;
    m_lit = lit;
    update();
}

QSize VectorDial::sizeHint() const
{
    const int side = qRound(font().pixelSize() * sidePerText);
    return {side, side};
}

void VectorDial::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return TurnControl::mouseDoubleClickEvent(event);
    emit gestureMade({gestures::Gesture::Kind::Default});
}

void VectorDial::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF middle = QRectF(rect()).center();
    const double side = std::min(width(), height()) - 3;
    const double stroke = std::max(2.0, side / 14);
    const double ring = (side - stroke) / 2;
    const QRectF circle(middle.x() - ring, middle.y() - ring, 2 * ring, 2 * ring);
    // Qt counts angles counterclockwise from 3 o'clock, in sixteenths of a degree.
    const auto angle = [](double place) { return 90 - firstAngle - place * wholeAngle; };
    const auto arc = [&](double from, double to, const QColor &colour) {
        painter.setPen(QPen(colour, stroke, Qt::SolidLine, Qt::FlatCap));
        painter.drawArc(circle, qRound(16 * angle(from)), qRound(16 * (angle(to) - angle(from))));
    };
    arc(0, 1, isEnabled() ? colours::edge : colours::line);
    if (isEnabled() && m_from != m_to)
        arc(m_from, m_to, m_lit ? colours::accent : colours::switchedOff);

    const double cap = ring - stroke - 1;
    QLinearGradient shade(0, middle.y() - cap, 0, middle.y() + cap);
    shade.setColorAt(0, colours::capTop);
    shade.setColorAt(1, colours::capBottom);
    painter.setPen(QPen(colours::capEdge, 1));
    painter.setBrush(shade);
    painter.drawEllipse(middle, cap, cap);
    const double turned = (firstAngle + m_to * wholeAngle) * radians;
    const QPointF way(std::sin(turned), -std::cos(turned));
    painter.setPen(QPen(
        isEnabled() ? colours::text : colours::quiet, stroke * 0.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(middle + way * cap * 0.35, middle + way * cap * 0.85);
    if (!hasFocus()) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colours::accent, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}
