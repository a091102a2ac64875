#pragma once

#include "mixer/state.h"

#include <QString>

#include <optional>

/// Everything that a fader, a pan marker or a knob adjusts, under one interface: what a step is,
/// where the ends and the default lie, what a position means, which position a typed text asks for.
/// GUI thread only.
namespace mixer {

/// One adjustable value of the mixer.
struct Adjustable
{
    enum class What { Fader, Pan, Knob };

    What what;
    StripId strip; ///< of a pan the mono strip of its input, also if the input is linked
    ParameterId id = ParameterId::LowGain; ///< of a knob

    bool operator==(const Adjustable &o) const
    {
        return what == o.what && strip == o.strip && (what != What::Knob || id == o.id);
    }
};

constexpr Adjustable faderOf(const StripId &strip)
{
    return {Adjustable::What::Fader, strip};
}
/// input is 1 to 16.
constexpr Adjustable panOf(int input)
{
    return {Adjustable::What::Pan, track(input)};
}
constexpr Adjustable knobOf(const StripId &strip, ParameterId id)
{
    return {Adjustable::What::Knob, strip, id};
}

/// @name Positions
/// Where the control stands, as it is stored: a fader's grows downwards, all others towards more
/// or towards R.
///@{
int storedPosition(const Values &values, const Adjustable &a);
int lowestPosition(const Adjustable &a);  ///< of the lowest value; of a pan hard left
int highestPosition(const Adjustable &a); ///< of the highest value; of a pan hard right
int defaultPosition(const Adjustable &a);
///@}

/// @name Steps
/// All stop at the ends. A positive number raises the value, or turns towards R.
///@{
/// Returns the nearest position with another text, that many times. On a pan it is the next
/// position. From a position with the last text it is the end.
int stepped(const Adjustable &a, int position, int steps);
/// Returns the position that many positions on, which may show the same text.
int shifted(const Adjustable &a, int position, int positions);
/// Returns how many steps the keys PageUp and PageDown take: 8, or 4 on short lists.
int pageSteps(const Adjustable &a);
/// Returns how many steps a notch of the wheel takes: 2 on faders and gain knobs, else 1.
int notchSteps(const Adjustable &a);
///@}

/// @name Meaning
///@{
/// Returns the text of the readout without its unit: "-6", "infinity ", "L10", "2.0k", "2.5:1".
QString textAt(const Adjustable &a, int position);
/// Returns the value in the unit of the readout: dB, Hz, ms, ratio; pans -20 to 20, a silent fader
/// -127, the limiter of the ratio 100.
double numberAt(const Adjustable &a, int position);
/// Returns the value in words and with its unit: "-6 dB", "2.0 kHz", "left 10", "silence".
QString wordsAt(const Adjustable &a, int position);
/// Returns the position whose value is nearest to a number. Frequencies, Q and ratios are compared
/// by their quotient. Numbers outside the range give the nearest end.
int nearestPosition(const Adjustable &a, double number);
/// Returns the position that a person asks for by typing, or nothing for a text that means nothing
/// or a number outside the range. Units may be left out; comma and point are the same. Understands
/// "-6", "-6 dB", "inf", "oo", "L10", "R 3", "C", "4k", "2.5", "2.5:1", "0.2 s".
std::optional<int> typedPosition(const Adjustable &a, const QString &typed);
/// Returns what can be typed: "-96 to 6 dB, or -inf".
QString possibleTexts(const Adjustable &a);
///@}

/// Returns the name of the control: "Channel 3 fader", "Channel 4 pan", "Channel 3 Low gain".
QString title(const Adjustable &a);

} // namespace mixer
