#pragma once

#include <cstdint>

class QWidget;

/// A level meter, 106 pixels tall with two pixels a decibel: its bar and its peak mark. A rising
/// level is shown at once, a falling one sinks by two pixels an update. GUI thread only.
class DrawLevelMeter
{
public:
    static constexpr int height = 106; ///< pixels, from silence to full scale
    static constexpr int fullScale = 32768;
    static constexpr int peakSeconds = 2; ///< how long a mark stays, at most

    /// The unlit part of the bar for a level, linear with 32768 for full scale: 0 to 106 pixels.
    /// Nothing is lit below -53 dB. Pure.
    static int gap(std::uint16_t level);

    /// The widgets belong to somebody else and outlive the meter; both are hidden until a level
    /// comes. The bar keeps its columns and its bottom row.
    DrawLevelMeter(QWidget *bar, QWidget *peak, int top);

    /// One step towards a level. Within 1 dB of full scale the peak mark is set.
    void update(std::uint16_t level);

    /// There is nothing to show: bar and mark go at once.
    void clear();

    /// To be called once a second: a mark that was not set again goes after one to two seconds.
    void countPeakDown();

private:
    void place(int gap);

    QWidget *m_bar;
    QWidget *m_peak;
    int m_top;    ///< row of a full bar
    int m_bottom; ///< last row of the bar
    int m_shownGap = height;
    int m_placedGap = height; ///< of the bar as it lies there
    int m_peakHold = 0;
};
