#pragma once

#include "widgets/compressorcurve.h"

#include <QLabel>

/// The transfer curve of a channel's compressor, 121 x 121 pixels inside a margin, three
/// pixels a decibel. The input runs from -40 to 0 dB to the right, the output upwards. A dot marks
/// the threshold. The display is transparent beside the curve, so that the background's grid shows.
/// GUI thread only.
class DrawCompressor : public QLabel
{
    Q_OBJECT

public:
    static constexpr int lowestLevel = -40; ///< dB, at the left and bottom edges
    static constexpr int pixelsPerDecibel = 3;
    static constexpr int side = -lowestLevel * pixelsPerDecibel + 1;
    static constexpr int margin = 3; ///< on all sides, so that the dot is never cut off

    explicit DrawCompressor(QWidget *parent = nullptr);

    const CompressorCurve &curve() const { return m_curve; }
    /// Shows a curve. Repaints only if it differs from the one shown.
    void setCurve(const CompressorCurve &curve);

signals:
    /// Announces the state of the gain-reduction indicator: "GR_Passive" (no channel),
    /// "GR_Available" (compressor off) or "GR_Active" (compressor on).
    // contract: the name, the states, and that every paint emits it, even without a change.
    void changeColorComp(const QString &state);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    CompressorCurve m_curve;
};
