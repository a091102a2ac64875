#pragma once

#include "widgets/compressorcurve.h"

#include <QLabel>

/// The transfer curve of a channel's compressor, 81 x 81 pixels in a margin, two a decibel: input
/// from -40 to 0 dB to the right, output upwards. A dot marks the threshold. It is transparent
/// beside the curve, so that a grid shows behind it. GUI thread only.
class DrawCompressor : public QLabel
{
    Q_OBJECT

public:
    static constexpr int lowestLevel = -40; ///< dB, at the left and at the bottom
    static constexpr int pixelsPerDecibel = 2;
    static constexpr int side = -lowestLevel * pixelsPerDecibel + 1;
    static constexpr int margin = 3; ///< around, for the dot

    explicit DrawCompressor(QWidget *parent = nullptr);

    const CompressorCurve &curve() const { return m_curve; }
    /// Shows another curve; repaints only when it differs.
    void setCurve(const CompressorCurve &curve);

signals:
    /// Said on every paint, also when nothing changed: the state of the gain-reduction indicator,
    /// "GR_Passive" (no channel), "GR_Available" (compressor off) or "GR_Active" (on).
    void changeColorComp(const QString &state);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    CompressorCurve m_curve;
};
