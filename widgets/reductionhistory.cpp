#include "widgets/reductionhistory.h"

#include "widgets/colours.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr QColor inputColour(24, 78, 60);
constexpr QColor inputLine(47, 201, 139);

} // namespace

ReductionHistory::ReductionHistory(QWidget *parent) : GraphWidget(parent)
{
    setObjectName(QStringLiteral("gainReductionHistory"));
}

QSize ReductionHistory::sizeHint() const
{
    return {300, font().pixelSize() * 7};
}

void ReductionHistory::append(const Sample &sample)
{
    m_samples.push_back(sample);
    if (m_samples.size() > length) m_samples.pop_front();
    scroll();
    update(m_plot);
    if (qRound(sample.reduction) != m_shownReduction) update(readoutArea());
}

void ReductionHistory::setSamples(const std::deque<Sample> &samples)
{
    m_samples = samples;
    redraw();
}

void ReductionHistory::setThreshold(int level, bool isOn)
{
    if (level == m_threshold && isOn == m_isOn) return;
    update(thresholdArea());
    m_threshold = level;
    m_isOn = isOn;
    update(thresholdArea());
}

void ReductionHistory::arrange()
{
    const QFontMetrics metrics(axisFont());
    const int side = metrics.horizontalAdvance(QStringLiteral("-60")) + 8;
    m_plot = QRect(side, 1, width() - 2 * side, height() - metrics.height() - 4);
    redraw();
}

/// Returns the columns of the image that the first samples of a run take.
int ReductionHistory::columnsUntil(int samples) const
{
    return samples * m_image.width() / length;
}

double ReductionHistory::levelRow(double level) const
{
    return std::clamp(level / lowestLevel, 0.0, 1.0) * m_image.height();
}

double ReductionHistory::reductionRow(double reduction) const
{
    return std::clamp(reduction / mostReduction, 0.0, 1.0) * m_image.height();
}

/// Draws all samples again.
void ReductionHistory::redraw()
{
    const qreal ratio = devicePixelRatioF();
    m_image = QImage((QSizeF(m_plot.size()) * ratio).toSize(), QImage::Format_RGB32);
    m_image.fill(colours::well);
    m_count = 0;
    std::deque<Sample> samples;
    samples.swap(m_samples);
    for (const Sample &sample : samples) {
        m_samples.push_back(sample);
        scroll();
    }
    update();
}

/// Moves the image to the left and draws the latest sample at its right edge.
void ReductionHistory::scroll()
{
    const int columns = columnsUntil(m_count + 1) - columnsUntil(m_count);
    m_count = (m_count + 1) % length;
    if (m_image.isNull() || columns == 0) return;
    const std::size_t moved = std::size_t(m_image.width() - columns) * sizeof(QRgb);
    for (int row = 0; row < m_image.height(); ++row) {
        uchar *line = m_image.scanLine(row);
        std::memmove(line, line + std::size_t(columns) * sizeof(QRgb), moved);
    }
    drawLatest(columns);
}

/// Draws the two areas from the sample before the latest one to the latest one.
void ReductionHistory::drawLatest(int columns)
{
    const Sample &to = m_samples.back();
    const Sample &from = m_samples.size() > 1 ? *std::prev(m_samples.end(), 2) : to;
    const double right = m_image.width();
    const double left = right - columns;
    const double bottom = m_image.height();
    QPainter painter(&m_image);
    painter.fillRect(QRectF(left, 0, columns, bottom), colours::well);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(QRectF(left, 0, columns, bottom));
    painter.setPen(Qt::NoPen);
    const QPointF levels[] = {{left, levelRow(from.input)}, {right, levelRow(to.input)}};
    painter.setBrush(inputColour);
    painter.drawPolygon(QPolygonF({{left, bottom}, levels[0], levels[1], {right, bottom}}));
    const QPointF reductions[] = {
        {left, reductionRow(from.reduction)}, {right, reductionRow(to.reduction)}};
    QColor reduced = colours::amber;
    reduced.setAlpha(150);
    painter.setBrush(reduced);
    painter.drawPolygon(QPolygonF({{left, 0}, reductions[0], reductions[1], {right, 0}}));
    const qreal line = devicePixelRatioF();
    painter.setPen(QPen(inputLine, line));
    painter.drawLine(levels[0], levels[1]);
    if (from.reduction <= 0 && to.reduction <= 0) return;
    painter.setPen(QPen(colours::amber, line));
    painter.drawLine(reductions[0], reductions[1]);
}

/// Returns the row of the threshold's line.
double ReductionHistory::thresholdRow() const
{
    return m_plot.top() + double(m_threshold) / lowestLevel * m_plot.height();
}

QRect ReductionHistory::thresholdArea() const
{
    return QRect(m_plot.left(), static_cast<int>(thresholdRow()) - 2, m_plot.width(), 5);
}

/// Returns the area of the reduction in numbers.
QRect ReductionHistory::readoutArea() const
{
    return QRect(m_plot.center().x(), m_plot.bottom() + 2, m_plot.width(), height());
}

void ReductionHistory::paintEvent(QPaintEvent *event)
{
    if ((QSizeF(m_plot.size()) * devicePixelRatioF()).toSize() != m_image.size()) redraw();
    QPainter painter(this);
    // Ten times a second only the plot changes.
    if (!m_plot.contains(event->rect())) drawLegends(painter);
    painter.drawImage(m_plot, m_image);
    painter.setPen(
        QPen(m_isOn ? colours::inCircuit : colours::switchedOff, 1, Qt::DashLine, Qt::FlatCap));
    painter.drawLine(
        QPointF(m_plot.left(), thresholdRow()), QPointF(m_plot.right() + 1, thresholdRow()));
}

void ReductionHistory::drawLegends(QPainter &painter)
{
    painter.fillRect(rect(), colours::page);
    painter.fillRect(m_plot.adjusted(-1, -1, 1, 1), colours::line);
    painter.setFont(axisFont());
    const int textHeight = painter.fontMetrics().height();
    const auto legend = [&](const QRectF &area, int alignment, const QString &text,
                            const QColor &colour) {
        painter.setPen(colour);
        painter.drawText(area, alignment | Qt::TextDontClip, text);
    };
    const double rowsPerDecibel = double(m_plot.height()) / -lowestLevel;
    const int step = m_plot.height() < 5 * textHeight ? 30 : 20;
    for (int level = 0; level >= lowestLevel; level -= step) {
        const double y = m_plot.top() - level * rowsPerDecibel;
        const double top =
            std::clamp(y - textHeight / 2.0, 0.0, double(m_plot.bottom() + 3 - textHeight));
        legend(
            QRectF(0, top, m_plot.left() - 5, textHeight), Qt::AlignRight | Qt::AlignVCenter,
            QString::number(level), colours::quiet);
    }
    for (const int reduction : {0, 12, 24}) {
        const double y = m_plot.top() + double(reduction) / mostReduction * m_plot.height();
        const double top =
            std::clamp(y - textHeight / 2.0, 0.0, double(m_plot.bottom() + 3 - textHeight));
        legend(
            QRectF(m_plot.right() + 6, top, m_plot.left(), textHeight),
            Qt::AlignLeft | Qt::AlignVCenter, QString::number(-reduction), colours::amber);
    }
    const QRectF below(m_plot.left(), m_plot.bottom() + 3, m_plot.width(), textHeight);
    legend(below, Qt::AlignLeft, QStringLiteral("input"), colours::green);
    legend(below, Qt::AlignHCenter, QStringLiteral("last 10 s"), colours::quiet);
    m_shownReduction = m_samples.empty() ? 0 : qRound(m_samples.back().reduction);
    legend(
        below, Qt::AlignRight, QStringLiteral("gain reduction  %1 dB").arg(-m_shownReduction),
        colours::amber);
}
