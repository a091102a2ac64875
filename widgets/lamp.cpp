#include "widgets/lamp.h"

#include <QPainter>

namespace {

constexpr int lampSize = 14; ///< with the halo, as wide as the box of a check box
constexpr int textGap = 8;
constexpr qreal radius = 4;
constexpr qreal outline = 1.5;

} // namespace

Lamp::Lamp(QWidget *parent) : QWidget(parent)
{
    setFixedSize(lampSize, lampSize);
}

void Lamp::setState(State state)
{
    if (state == m_state) return;
    m_state = state;
    update();
}

void Lamp::draw(QPainter &painter, const QRectF &square, State state, const QColor &colour)
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = square.center();
    if (state == State::On) {
        QRadialGradient halo(centre, square.width() / 2);
        QColor glow = colour;
        glow.setAlphaF(0.55);
        halo.setColorAt(radius / square.width(), glow);
        halo.setColorAt(1, Qt::transparent);
        painter.setPen(Qt::NoPen);
        painter.setBrush(halo);
        painter.drawEllipse(square);
        painter.setBrush(colour);
        painter.drawEllipse(centre, radius, radius);
        return;
    }
    const qreal ring = radius - outline / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, outline));
    painter.drawEllipse(centre, ring, ring);
    if (state == State::Barred)
        painter.drawLine(centre + QPointF(-ring, ring), centre + QPointF(ring, -ring));
    if (state != State::Warning) return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(centre, 1.5, 1.5);
}

void Lamp::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool warns = m_state == State::Warning;
    draw(painter, rect(), m_state, m_state == State::On ? m_lit : warns ? m_warning : m_unlit);
}

LampButton::LampButton(const QString &text, QWidget *parent) : QPushButton(text, parent) {}

QSize LampButton::sizeHint() const
{
    return {lampSize + textGap + fontMetrics().horizontalAdvance(text()), lampSize};
}

void LampButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF square(0, (height() - lampSize) / 2.0, lampSize, lampSize);
    Lamp::draw(
        painter, square, isChecked() ? Lamp::State::On : Lamp::State::Off,
        isChecked() ? m_lit : m_unlit);
    painter.setPen(isChecked() ? m_litText : m_unlitText);
    painter.drawText(
        rect().adjusted(lampSize + textGap, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text());
}
