#include "app/curves.h"

#include "mixer/state.h"

namespace curves {

EqCurve eqOf(const storage::Values &values, const std::optional<mixer::StripId> &strip)
{
    EqCurve curve;
    for (int band = 0; strip && band < tamber::eqBandCount; ++band) {
        const Eq eq = mixer::eqOf(values, *strip, band);
        const bool isLow = band == mixer::bandLow; // its Q byte carries the low cut
        curve.state = eq.on ? EqCurve::State::On : EqCurve::State::Off;
        curve.bands[static_cast<std::size_t>(band)] = {
            static_cast<std::int8_t>(eq.gain), eq.freq, isLow ? 0 : eq.q};
        if (isLow) curve.lowCut = eq.q != 0;
    }
    return curve;
}

CompressorCurve
compressorOf(const storage::Values &values, const std::optional<mixer::StripId> &strip)
{
    CompressorCurve curve;
    if (!strip) return curve;
    const Comp comp = mixer::compOf(values, *strip);
    curve.state = comp.on ? CompressorCurve::State::On : CompressorCurve::State::Off;
    curve.threshold = comp.threshold;
    curve.ratio = comp.ratio;
    return curve;
}

} // namespace curves
