#pragma once

#include "storage/keys.h"

#include <QString>

#include <array>
#include <cstdint>

/// The fifteen knobs of the editing area: one row a parameter, with its settings, its scale, its
/// default and the byte of the command that it goes into. Pure functions; any thread.
///
/// A knob has a position, which is dragged and stored; the position gives a step, and the step the
/// text that is shown and the byte that is sent.
namespace mixer {

/// In the order of the EQ bands' numbers, each band's gain, frequency and Q, then the compressor.
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

/// EQ bands as the command and the curve count them.
enum EqBand { bandLow = 0, bandHigh = 1, bandHighMid = 2, bandLowMid = 3 };
constexpr int eqBandCount = tamber::eqBandCount;
constexpr int knobPositions = 128; ///< 0 to 127, of all knobs but the times
constexpr int noBand = -1;         ///< of a parameter of the compressor

/// How a knob's positions lie over its steps.
enum class Scale {
    Gain, ///< 0 to 127 over -12 to 12 dB, five positions a dB
    List, ///< 0 to 127 in equal shares over a list of texts
    Time, ///< the step itself, 0 to 99, in milliseconds
};

/// How a knob chooses its image from its position.
enum class FrameRule {
    Gain, ///< buckets that follow the gain scale
    Even, ///< one frame every six positions
    Time, ///< by the share of the hundred steps
};

/// What a step stands for in the command.
enum class Field { Gain, Freq, Q, Threshold, Ratio, MakeUpGain, Attack, Release };

struct Parameter
{
    const char *stem;  ///< of its control and slots: "highGain" of highGainKnob_Moved
    const char *title; ///< in words
    storage::PositionKeys keys;
    Scale scale;
    int steps;
    QString (*text)(int step);
    int defaultPosition;
    FrameRule frames;
    int band;
    Field field;
    const char *unit; ///< for words, not for the label
};

const Parameter &parameter(ParameterId id);
/// All of them, by ParameterId.
const std::array<Parameter, parameterCount> &parameters();

/// A parameter's value: where its knob stands and what that means.
struct Value
{
    int position;
    int step;
    QString text;
};

/// The value of a position. One outside the knob's range has the value of its nearest end; but a
/// gain position above 127 means 0 dB.
Value valueAt(const Parameter &parameter, int position);

/// The value of what is stored. For parameters with a list the text decides: one that is in no
/// list counts as missing, and gives the default. For the others the position does: a gain outside
/// its knob's range is the default, 0 dB, a time outside it the nearest end.
Value storedValue(const Parameter &parameter, int position, const QString &text);

/// The highest position of a knob; the lowest is 0.
int topPosition(const Parameter &parameter);

/// The nearest position that is so many steps up (or down, if negative) from a position: each step
/// shows another text. The end of the knob's range if there are fewer.
int steppedKnob(const Parameter &parameter, int position, int steps);

/// Image of a position, 0 to 20.
int knobFrame(const Parameter &parameter, int position);

/// The byte that the command carries for a step: gain as dB in two's complement, else the step.
std::uint8_t commandByte(const Parameter &parameter, int step);

/// Gain of a position in dB: -12 to 12; 0 for a position above 127.
int gainOfPosition(int position);
/// Milliseconds of a step, clamped to 2 to 200 and to 10 to 1000.
int attackTime(int step);
int releaseTime(int step);

/// Place of a text in the parameter's list, -1 when it is in none.
int stepOfText(const Parameter &parameter, const QString &text);

} // namespace mixer
