#pragma once

/// The transfer curve of one channel's compressor, as the display draws it. A plain value; any
/// thread.
struct CompressorCurve
{
    enum class State {
        NoChannel, ///< no channel is shown
        Off,       ///< the channel's compressor is switched off
        On,
    };

    State state = State::NoChannel;
    int threshold = 32; ///< step, 0 (-32 dB) to 32 (0 dB)
    int ratio = 0;      ///< step, 0 ("1.0:1") to 14 ("inf:1")

    /// Returns the input level in dB at which the curve bends: the threshold.
    int kneeLevel() const { return threshold - 32; }
    /// Returns the output level in dB for an input level in dB, without make-up gain.
    double output(double input) const;

    bool operator==(const CompressorCurve &o) const
    {
        return state == o.state && threshold == o.threshold && ratio == o.ratio;
    }
};
