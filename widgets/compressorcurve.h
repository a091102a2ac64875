#pragma once

/// What the compressor display draws: the transfer curve of one channel. A plain value, and its
/// arithmetic. Any thread.
struct CompressorCurve
{
    enum class State {
        NoChannel, ///< none is shown
        Off,       ///< the channel's compressor is out of circuit
        On,
    };

    State state = State::NoChannel;
    int threshold = 32; ///< step, 0 (-32 dB) to 32 (0 dB)
    int ratio = 0;      ///< step, 0 ("1.0:1") to 14 ("inf:1")

    /// The level in dB at which the curve bends.
    int kneeLevel() const { return threshold - 32; }
    /// The level in dB that comes out for one that goes in, before any make-up gain.
    double output(double input) const;

    bool operator==(const CompressorCurve &o) const
    {
        return state == o.state && threshold == o.threshold && ratio == o.ratio;
    }
};
