#include "widgets/drawlevelmeter.h"

#include <QWidget>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int pixelsPerDecibel = 2;
constexpr int lowestDecibel = -60;
constexpr std::size_t thresholdCount = 61; // one a dB, up to full scale

/// The level of each whole decibel from -60 to 0.
std::array<int, thresholdCount> thresholds()
{
    std::array<int, thresholdCount> levels;
    for (std::size_t i = 0; i < thresholdCount; ++i) {
        const double decibels = static_cast<double>(i) + lowestDecibel;
        levels[i] = static_cast<int>(DrawLevelMeter::fullScale * std::pow(10, decibels / 20));
    }
    return levels;
}

} // namespace

int DrawLevelMeter::gap(std::uint16_t level)
{
    static const std::array<int, thresholdCount> levels = thresholds();
    const auto above = std::upper_bound(levels.begin(), levels.end(), level);
    const auto place = static_cast<int>(above - levels.begin());
    return std::clamp((static_cast<int>(thresholdCount) - 1 - place) * pixelsPerDecibel, 0, height);
}

DrawLevelMeter::DrawLevelMeter(QWidget *bar, QWidget *peak, int top)
    : m_bar(bar), m_peak(peak), m_top(top), m_bottom(top + height)
{
    m_bar->hide();
    m_peak->hide();
}

void DrawLevelMeter::update(std::uint16_t level)
{
    const int wanted = gap(level);
    if (m_shownGap < wanted) {
        place(m_shownGap);
        m_shownGap += pixelsPerDecibel;
    } else {
        place(wanted);
        m_shownGap = wanted;
    }
    if (wanted > 0) return;
    m_peakHold = peakSeconds;
    m_peak->show();
}

void DrawLevelMeter::clear()
{
    m_shownGap = height;
    place(height);
    m_peakHold = 0;
    m_peak->hide();
}

void DrawLevelMeter::place(int gap)
{
    if (gap == m_placedGap) return;
    m_placedGap = gap;
    const QRect area(m_bar->x(), m_top + gap, m_bar->width(), m_bottom - m_top - gap + 1);
    m_bar->setGeometry(area);
    m_bar->setVisible(gap < height);
}

void DrawLevelMeter::countPeakDown()
{
    if (m_peakHold > 0 && --m_peakHold == 0) m_peak->hide();
}
