#include "widgets/drawcompressor.h"

#include "widgets/colours.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr qreal dotRadius = 2.5;

struct Look
{
    QColor colour;
    QString indicator;
};

Look lookOf(CompressorCurve::State state)
{
    switch (state) {
    case CompressorCurve::State::On:
        return {colours::inCircuit, QStringLiteral("GR_Active")};
    case CompressorCurve::State::Off:
        return {colours::switchedOff, QStringLiteral("GR_Available")};
    case CompressorCurve::State::NoChannel:
        break;
    }
    return {colours::noChannel, QStringLiteral("GR_Passive")};
}

/// Returns the middle of the pixel for an input and an output level in dB.
QPointF place(double input, double output)
{
    const auto pixels = [](double level) {
        return (level - DrawCompressor::lowestLevel) * DrawCompressor::pixelsPerDecibel + 0.5;
    };
    constexpr int margin = DrawCompressor::margin;
    return {margin + pixels(input), margin + DrawCompressor::side - pixels(output)};
}

} // namespace

DrawCompressor::DrawCompressor(QWidget *parent) : QLabel(parent)
{
    setFixedSize(side + 2 * margin, side + 2 * margin);
}

void DrawCompressor::setCurve(const CompressorCurve &curve)
{
    if (curve == m_curve) return;
    m_curve = curve;
    update();
}

void DrawCompressor::paintEvent(QPaintEvent *)
{
    const Look look = lookOf(m_curve.state);
    emit changeColorComp(look.indicator);

    const double threshold = m_curve.kneeLevel();
    const QPointF knee = place(threshold, threshold);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours::noChannel, 1, Qt::DotLine));
    painter.drawLine(knee, place(threshold, lowestLevel));

    painter.setPen(QPen(look.colour, 1, Qt::SolidLine, Qt::RoundCap, Qt::BevelJoin));
    painter.drawPolyline(
        QPolygonF({place(lowestLevel, lowestLevel), knee, place(0, m_curve.output(0))}));
    painter.setBrush(look.colour);
    painter.drawEllipse(knee, dotRadius, dotRadius);
}
