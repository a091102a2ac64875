#pragma once

#include "storage/keys.h"

#include <QString>

#include <array>
#include <cstdint>

/// The parameters of the equalizer and the compressor, one for each of the fifteen knobs of the
/// editing area. A table holds each parameter's settings keys, scale, default and command field.
/// Pure functions; any thread.
///
/// A knob has a position, which the user drags and the panel stores. The position gives a step; the
/// step gives the text that is shown and the byte that is sent.
namespace mixer {

/// All parameters: the EQ bands in the order of EqBand, then the compressor.
enum class ParameterId {
    LowGain,
    LowFreq,
    HighGain,
    HighFreq,
    HighMidGain,
    HighMidFreq,
    HighMidQ,
    LowMidGain,
    LowMidFreq,
    LowMidQ,
    Threshold,
    Ratio,
    MakeUpGain,
    Attack,
    Release,
};
constexpr int parameterCount = 15;

/// The EQ bands as the device command and the EQ curve number them.
// contract: the numbers, which are the device's.
enum EqBand { bandLow = 0, bandHigh = 1, bandHighMid = 2, bandLowMid = 3 };
constexpr int eqBandCount = tamber::eqBandCount;
constexpr int knobPositions = 128; ///< positions 0 to 127, on all scales but Time
constexpr int noBand = -1;         ///< the band of a compressor parameter

/// How a knob's positions map to its steps.
enum class Scale {
    Gain, ///< 0 to 127 cover -12 to 12 dB, with five positions a dB
    List, ///< 0 to 127 are shared equally among the entries of a list of texts
    Time, ///< the position is the step, 0 to 99; the text is in milliseconds
};

/// How a knob chooses its image from its position.
enum class FrameRule {
    Gain, ///< the image changes with the gain
    Even, ///< the image changes every six positions
    Time, ///< the hundred steps are shared equally among the images
};

/// The field of the EQ or compressor command that a parameter's byte goes into.
enum class Field { Gain, Freq, Q, Threshold, Ratio, MakeUpGain, Attack, Release };

/// One parameter.
struct Parameter
{
    const char *stem;           ///< begins the names of its knob and slots: "highGain"
    const char *title;          ///< its name for the user: "High gain"
    storage::PositionKeys keys; ///< where its position and its text are stored
    Scale scale;
    int steps;
    QString (*text)(int step); ///< the text of a step, 0 to steps - 1, without unit
    int defaultPosition;
    FrameRule frames;
    int band; ///< EqBand, or noBand
    Field field;
    const char *unit; ///< with its leading blank, for tool tips and screen readers
};

const Parameter &parameter(ParameterId id);
/// All parameters in the order of ParameterId.
const std::array<Parameter, parameterCount> &parameters();

/// A parameter's value.
struct Value
{
    int position; ///< of the knob
    int step;
    QString text; ///< without unit
};

/// Returns the value of a position, with the position as given. The step of a position outside the
/// knob's range is that of the nearest end, except that a gain position above 127 gives 0 dB.
Value valueAt(const Parameter &parameter, int position);

/// Returns the value that a stored position and text stand for:
/// - List: the text decides. A text that is not in the list gives the default.
/// - Gain: the position decides. A position outside the range gives the default, 0 dB.
/// - Time: the position decides. A position outside the range gives the nearest end.
Value storedValue(const Parameter &parameter, int position, const QString &text);

/// Returns a position with a step: the default if it has that step, else the lowest such position.
/// A step that the parameter does not have gives the default.
int positionOf(const Parameter &parameter, int step);

/// Returns the highest position of a knob. The lowest is 0.
int topPosition(const Parameter &parameter);

/// Returns the number of the image that shows a position, 0 to 20.
int knobFrame(const Parameter &parameter, int position);

/// Returns the byte that the command carries for a step: for a gain its decibels in two's
/// complement, else the step itself.
std::uint8_t commandByte(const Parameter &parameter, int step);

/// Returns the gain of a position in dB, -12 to 12.
// contract: a position above 127 gives 0 dB, because missing settings read as 157.
int gainOfPosition(int position);
/// Returns the attack time of a step in milliseconds, clamped to 2 to 200.
int attackTime(int step);
/// Returns the release time of a step in milliseconds, clamped to 10 to 1000.
int releaseTime(int step);

/// Returns the step of a text, or -1 if no step of the parameter has it.
int stepOfText(const Parameter &parameter, const QString &text);

} // namespace mixer
