#pragma once

#include "widgets/graphwidget.h"

#include <QImage>

#include <deque>

/// The last ten seconds of a compressor: the input level as an area from below, the gain reduction
/// as an area from above, and the threshold as a line. It scrolls by one sample at a time and draws
/// only the new one. GUI thread only.
class ReductionHistory : public GraphWidget
{
    Q_OBJECT

public:
    static constexpr int length = 100;       ///< samples across the display
    static constexpr int lowestLevel = -60;  ///< dB, at the lower edge
    static constexpr int mostReduction = 24; ///< dB, at the lower edge

    /// Both in dB.
    struct Sample
    {
        double input;
        double reduction;
    };

    explicit ReductionHistory(QWidget *parent);

    /// Adds a sample at the right and drops the oldest one if there are more than `length`.
    void append(const Sample &sample);
    /// Shows other samples, the latest one last.
    void setSamples(const std::deque<Sample> &samples);
    const std::deque<Sample> &samples() const { return m_samples; }
    /// Shows a threshold in dB. The line is grey while the compressor is off.
    void setThreshold(int level, bool isOn);

    QSize sizeHint() const override;

protected:
    void arrange() override;
    void paintEvent(QPaintEvent *event) override;

private:
    void redraw();
    void scroll();
    void drawLatest(int columns);
    double levelRow(double level) const;
    double reductionRow(double reduction) const;
    double thresholdRow() const;
    QRect thresholdArea() const;
    QRect readoutArea() const;
    void drawLegends(QPainter &painter);
    int columnsUntil(int samples) const;

    std::deque<Sample> m_samples;
    int m_threshold = 0;
    bool m_isOn = false;
    QRect m_plot;
    QImage m_image;           ///< the plot in device pixels
    int m_shownReduction = 0; ///< dB, in numbers
    int m_count = 0;          ///< samples drawn into the image, modulo `length`
};
