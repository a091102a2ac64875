#include "widgets/dialcontrol.h"

#include "widgets/colours.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int firstHour = 7;

// The arc lies on the ring of the images.
constexpr int side = 36;
constexpr QPointF middle(18, 18.5);
constexpr qreal arcRadius = 15.5;
constexpr qreal arcWidth = 2.5;
constexpr double firstAngle = -150; // degrees clockwise from 12 o'clock
constexpr double wholeAngle = 300;

/// Returns the image of a frame, which is named after the clock position of its pointer.
// contract: the names: "knob-s_700.png", "knob-s_730.png", "knob-s_800.png", ...
QString imageOf(int frame)
{
    const int clock = 100 * (firstHour + frame / 2) + (frame % 2 == 0 ? 0 : 30);
    return QStringLiteral(":/Resource/track/knob_s/knob-s_%1.png").arg(clock);
}

} // namespace

DialControl::DialControl(QWidget *parent)
    : StepControl(gestures::Layout::Horizontal, QAccessible::Dial, parent)
{
    setImage(imageOf(m_frame));
    setFixedSize(side, side);
}

void DialControl::setFrame(int frame)
{
    const int nearest = std::clamp(frame, 0, frameCount - 1);
    if (nearest == m_frame) return;
    m_frame = nearest;
    setImage(imageOf(m_frame));
}

void DialControl::setArc(double from, double to)
{
    if (from == m_arcFrom && to == m_arcTo) return;
    m_arcFrom = from;
    m_arcTo = to;
    update();
}

void DialControl::setLit(bool lit)
{
    if (lit == m_lit) return;
    m_lit = lit;
    update();
}

void DialControl::paintEvent(QPaintEvent *event)
{
    StepControl::paintEvent(event);
    if (m_arcFrom == m_arcTo || !isEnabled()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(m_lit ? colours::accent : colours::switchedOff, arcWidth, Qt::SolidLine, Qt::FlatCap));
    const QRectF circle(
        middle.x() - arcRadius, middle.y() - arcRadius, 2 * arcRadius, 2 * arcRadius);
    // Qt counts angles counterclockwise from 3 o'clock, in sixteenths of a degree.
    const auto angle = [](double place) { return 90 - firstAngle - place * wholeAngle; };
    painter.drawArc(
        circle, qRound(16 * angle(m_arcFrom)), qRound(16 * (angle(m_arcTo) - angle(m_arcFrom))));
}

void DialControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mousePressEvent(event);
    emit dialknob_Pressed(event);
}

void DialControl::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) return StepControl::mouseDoubleClickEvent(event);
    emit dialknob_DoubleClicked(event);
}

void DialControl::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton)) return StepControl::mouseMoveEvent(event);
    emit dialknob_Moved(event);
}
