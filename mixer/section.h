#pragma once

#include "mixer/adjustable.h"
#include "mixer/rules.h"

#include <array>

namespace mixer {

/// Positions of all knobs, by ParameterId.
using KnobPositions = std::array<int, parameterCount>;

/// Return a knob and the name under which files have it. Every strip has the same knobs.
/// @param index a ParameterId
///@{
Adjustable knobAt(int index);
QString knobName(int index);
///@}

/// The EQ and the compressor of a strip: the knobs and their switches.
struct SectionState
{
    KnobPositions knobs{};
    bool eq = false;
    bool lowCut = false;
    bool compressor = false;

    static SectionState of(const Values &values, const StripId &strip);
    bool operator==(const SectionState &o) const
    {
        return knobs == o.knobs && eq == o.eq && lowCut == o.lowCut && compressor == o.compressor;
    }
};

/// Writes what differs from the stored state.
void setSection(Transaction &t, const StripId &strip, const SectionState &state);

/// Turns the knobs whose value differs and leaves the switches alone. A knob that shows the value
/// already keeps its position. Returns the knobs that it has turned.
std::vector<ParameterId> setKnobs(Transaction &t, const StripId &strip, const KnobPositions &knobs);

} // namespace mixer
