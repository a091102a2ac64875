#include "mixer/section.h"

namespace mixer {

namespace key = storage::strip;

Adjustable knobAt(int index)
{
    return knobOf(track(1), static_cast<ParameterId>(index));
}

QString knobName(int index)
{
    return QString::fromLatin1(parameters()[static_cast<std::size_t>(index)].stem);
}

SectionState SectionState::of(const Values &values, const StripId &strip)
{
    SectionState state;
    for (int i = 0; i < parameterCount; ++i)
        state.knobs[static_cast<std::size_t>(i)] =
            storedPosition(values, knobOf(strip, static_cast<ParameterId>(i)));
    state.eq = isOn(values, strip, key::eq);
    state.lowCut = isOn(values, strip, key::eqLowCut);
    state.compressor = isOn(values, strip, key::comp);
    return state;
}

void setSection(Transaction &t, const StripId &strip, const SectionState &state)
{
    const SectionState now = SectionState::of(t.values(), strip);
    for (std::size_t i = 0; i < state.knobs.size(); ++i)
        if (state.knobs[i] != now.knobs[i]) setKnob(t, strip, parameters()[i], state.knobs[i]);
    if (state.eq != now.eq) setSwitch(t, strip, key::eq, state.eq);
    if (state.lowCut != now.lowCut) setSwitch(t, strip, key::eqLowCut, state.lowCut);
    if (state.compressor != now.compressor) setSwitch(t, strip, key::comp, state.compressor);
}

std::vector<ParameterId> setKnobs(Transaction &t, const StripId &strip, const KnobPositions &knobs)
{
    std::vector<ParameterId> turned;
    for (std::size_t i = 0; i < knobs.size(); ++i) {
        const Parameter &parameter = parameters()[i];
        const int step = valueAt(parameter, knobs[i]).step;
        if (knobValue(t.values(), strip, parameter).step == step) continue;
        setKnob(t, strip, parameter, knobs[i]);
        turned.push_back(static_cast<ParameterId>(i));
    }
    return turned;
}

} // namespace mixer
