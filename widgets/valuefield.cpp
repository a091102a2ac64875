#include "widgets/valuefield.h"

#include "widgets/colours.h"

#include <QPainter>

namespace {

constexpr double radius = 3;

} // namespace

ValueField::ValueField(QWidget *parent)
    : TurnControl(QAccessible::Dial, parent), m_colour(colours::text)
{
    setCursor(Qt::IBeamCursor);
    connect(this, &TurnControl::clicked, this, [this] {
        emit gestureMade({gestures::Gesture::Kind::Edit});
    });
}

void ValueField::setValueText(const QString &text)
{
    if (text == m_text) return;
    m_text = text;
    update();
}

void ValueField::setColour(const QColor &colour)
{
    m_colour = colour;
    update();
}

QFont ValueField::narrowFont() const
{
    QFont narrow = font();
    narrow.setFamilies({QStringLiteral("Segoe UI"), QStringLiteral("DejaVu Sans Condensed")});
    return narrow;
}

QSize ValueField::sizeHint() const
{
    const QFontMetrics metrics(narrowFont());
    return {metrics.horizontalAdvance(m_widest) + 6, metrics.height() + 3};
}

void ValueField::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF field = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QColor edge = hasFocus() ? colours::accent : colours::edge;
    if (!isEnabled()) edge = colours::line;
    painter.setPen(QPen(edge, 1));
    painter.setBrush(colours::well);
    painter.drawRoundedRect(field, radius, radius);
    painter.setPen(isEnabled() ? m_colour : colours::quiet);
    painter.setFont(narrowFont());
    painter.drawText(field, Qt::AlignCenter | Qt::TextDontClip, m_text);
}
