#include "mixer/parameters.h"

#include <algorithm>

namespace mixer {
namespace {

constexpr int lastPosition = 127;
constexpr int gainSteps = 25; // -12 to 12 dB
constexpr int lastGain = 12;
constexpr int timeSteps = 100;
constexpr int thresholdSteps = 33; // -32 to 0 dB
constexpr int makeUpSteps = 21;    // 0 to 20 dB

// clang-format off
/// Frequencies in Hz. The middle bands have all of them, the low band the first 32 and the high
/// band the last 32.
constexpr std::array<const char *, 64> frequencies = {
    "32",   "40",   "50",   "60",   "70",    "80",    "90",    "100",
    "125",  "150",  "175",  "200",  "225",   "250",   "300",   "350",
    "400",  "450",  "500",  "600",  "700",   "800",   "850",   "900",
    "950",  "1.0k", "1.1k", "1.2k", "1.3k",  "1.4k",  "1.5k",  "1.6k",
    "1.7k", "1.8k", "1.9k", "2.0k", "2.2k",  "2.4k",  "2.6k",  "2.8k",
    "3.0k", "3.2k", "3.4k", "3.6k", "3.8k",  "4.0k",  "4.5k",  "5.0k",
    "5.5k", "6.0k", "6.5k", "7.0k", "7.5k",  "8.0k",  "9.0k",  "10.0k",
    "11.0k","12.0k","13.0k","14.0k","15.0k", "16.0k", "17.0k", "18.0k",
};
constexpr std::size_t shelfSteps = 32;
static_assert(frequencies.size() == 2 * shelfSteps, "the low and the high band share the list");

constexpr std::array<const char *, 7> qualities = {
    "0.25", "0.50", "1.00", "2.00", "4.00", "8.00", "16.00",
};

constexpr std::array<const char *, 15> ratios = {
    "1.0:1", "1.1:1", "1.3:1", "1.5:1", "1.7:1", "2.0:1", "2.5:1",  "3.0:1",
    "3.5:1", "4.0:1", "5.0:1", "6.0:1", "8.0:1", "16.0:1", "inf:1",
};
// clang-format on

QString entry(const char *text)
{
    return QString::fromLatin1(text);
}

QString gainText(int step)
{
    return QString::number(step - lastGain);
}

QString lowFreqText(int step)
{
    return entry(frequencies[static_cast<std::size_t>(step)]);
}

QString highFreqText(int step)
{
    return entry(frequencies[shelfSteps + static_cast<std::size_t>(step)]);
}

QString qText(int step)
{
    return entry(qualities[static_cast<std::size_t>(step)]);
}

QString thresholdText(int step)
{
    return QString::number(step - (thresholdSteps - 1));
}

QString ratioText(int step)
{
    return entry(ratios[static_cast<std::size_t>(step)]);
}

QString makeUpText(int step)
{
    return QString::number(step);
}

QString attackText(int step)
{
    return QString::number(attackTime(step));
}

QString releaseText(int step)
{
    return QString::number(releaseTime(step));
}

/// Returns the smallest position that gives a step of a knob with so many steps.
constexpr int positionOfStep(int step, int steps)
{
    return (step * knobPositions + steps - 1) / steps;
}

constexpr int flatGain = 63; // 0 dB
constexpr int mid = 64;
constexpr int shelf = static_cast<int>(shelfSteps);
constexpr int q = 7;
constexpr int ratio = 15;
constexpr int slowest = timeSteps - 1;

namespace key = storage::strip;

// clang-format off
constexpr std::array<Parameter, parameterCount> rows = {{
    {"lowGain",     "Low gain",           key::eqLowGain,     Scale::Gain, gainSteps, gainText,     flatGain,                    FrameRule::Gain, bandLow,     Field::Gain,       " dB"},
    {"lowFreq",     "Low frequency",      key::eqLowFreq,     Scale::List, shelf,     lowFreqText,  positionOfStep(7, shelf),    FrameRule::Even, bandLow,     Field::Freq,       " Hz"},
    {"highGain",    "High gain",          key::eqHighGain,    Scale::Gain, gainSteps, gainText,     flatGain,                    FrameRule::Gain, bandHigh,    Field::Gain,       " dB"},
    {"highFreq",    "High frequency",     key::eqHighFreq,    Scale::List, shelf,     highFreqText, positionOfStep(23, shelf),   FrameRule::Even, bandHigh,    Field::Freq,       " Hz"},
    {"highMidGain", "High-mid gain",      key::eqHighMidGain, Scale::Gain, gainSteps, gainText,     flatGain,                    FrameRule::Gain, bandHighMid, Field::Gain,       " dB"},
    {"highMidFreq", "High-mid frequency", key::eqHighMidFreq, Scale::List, mid,       lowFreqText,  positionOfStep(35, mid),     FrameRule::Even, bandHighMid, Field::Freq,       " Hz"},
    {"highMidQ",    "High-mid Q",         key::eqHighMidQ,    Scale::List, q,         qText,        positionOfStep(2, q),        FrameRule::Even, bandHighMid, Field::Q,          ""},
    {"lowMidGain",  "Low-mid gain",       key::eqLowMidGain,  Scale::Gain, gainSteps, gainText,     flatGain,                    FrameRule::Gain, bandLowMid,  Field::Gain,       " dB"},
    {"lowMidFreq",  "Low-mid frequency",  key::eqLowMidFreq,  Scale::List, mid,       lowFreqText,  positionOfStep(16, mid),     FrameRule::Even, bandLowMid,  Field::Freq,       " Hz"},
    {"lowMidQ",     "Low-mid Q",          key::eqLowMidQ,     Scale::List, q,         qText,        positionOfStep(2, q),        FrameRule::Even, bandLowMid,  Field::Q,          ""},
    {"threshold",   "Threshold",          key::compThreshold, Scale::List, thresholdSteps, thresholdText, positionOfStep(32, thresholdSteps), FrameRule::Even, noBand, Field::Threshold, " dB"},
    {"ratio",       "Ratio",              key::compRatio,     Scale::List, ratio,     ratioText,    positionOfStep(0, ratio),    FrameRule::Even, noBand,      Field::Ratio,      ""},
    {"gain",        "Make-up gain",       key::compGain,      Scale::List, makeUpSteps, makeUpText, positionOfStep(0, makeUpSteps), FrameRule::Even, noBand,   Field::MakeUpGain, " dB"},
    {"attack",      "Attack",             key::compAttack,    Scale::Time, timeSteps, attackText,   slowest,                     FrameRule::Time, noBand,      Field::Attack,     " ms"},
    {"release",     "Release",            key::compRelease,   Scale::Time, timeSteps, releaseText,  slowest,                     FrameRule::Time, noBand,      Field::Release,    " ms"},
}};
// clang-format on

int stepOfPosition(const Parameter &parameter, int position)
{
    switch (parameter.scale) {
    case Scale::Gain:
        return gainOfPosition(position) + lastGain;
    case Scale::List:
        return std::clamp(position, 0, lastPosition) * parameter.steps / knobPositions;
    case Scale::Time:
        break;
    }
    return std::clamp(position, 0, parameter.steps - 1);
}

// contract: frames 7 and 14 cover two decibels, all others between the ends one.
int gainFrame(int position)
{
    static constexpr std::array<int, 20> lastOfFrame = {
        10, 15, 20, 25, 30, 35, 40, 50, 55, 60, 65, 70, 75, 80, 90, 95, 100, 105, 110, 115,
    };
    const auto frame = std::lower_bound(lastOfFrame.begin(), lastOfFrame.end(), position);
    return static_cast<int>(frame - lastOfFrame.begin());
}

bool isPosition(const Parameter &parameter, int position)
{
    return position >= 0 && position <= topPosition(parameter);
}

} // namespace

int positionOf(const Parameter &parameter, int step)
{
    if (stepOfPosition(parameter, parameter.defaultPosition) == step)
        return parameter.defaultPosition;
    for (int position = 0; position <= topPosition(parameter); ++position)
        if (stepOfPosition(parameter, position) == step) return position;
    return parameter.defaultPosition;
}

int topPosition(const Parameter &parameter)
{
    return parameter.scale == Scale::Time ? parameter.steps - 1 : lastPosition;
}

const std::array<Parameter, parameterCount> &parameters()
{
    return rows;
}

const Parameter &parameter(ParameterId id)
{
    return rows[static_cast<std::size_t>(id)];
}

int gainOfPosition(int position)
{
    constexpr int lowest = 5;    // last position of the lowest gain
    constexpr int run = 5;       // positions of each gain between the ends
    constexpr int highest = 121; // first position of the highest gain
    if (position > lastPosition) return 0;
    if (position <= lowest) return -lastGain;
    return position >= highest ? lastGain : (position - 1) / run - lastGain;
}

int attackTime(int step)
{
    return std::clamp(2 * step + 2, 2, 200);
}

int releaseTime(int step)
{
    return std::clamp(10 * step + 10, 10, 1000);
}

int stepOfText(const Parameter &parameter, const QString &text)
{
    for (int step = 0; step < parameter.steps; ++step)
        if (text == parameter.text(step)) return step;
    return -1;
}

Value valueAt(const Parameter &parameter, int position)
{
    const int step = stepOfPosition(parameter, position);
    return {position, step, parameter.text(step)};
}

Value storedValue(const Parameter &parameter, int position, const QString &text)
{
    const bool valid = isPosition(parameter, position);
    if (parameter.scale == Scale::Time)
        return valueAt(parameter, std::clamp(position, 0, topPosition(parameter)));
    if (parameter.scale == Scale::Gain)
        return valueAt(parameter, valid ? position : parameter.defaultPosition);
    const int step = stepOfText(parameter, text);
    if (step < 0) return valueAt(parameter, parameter.defaultPosition);
    const bool agrees = valid && stepOfPosition(parameter, position) == step;
    return {agrees ? position : positionOfStep(step, parameter.steps), step, text};
}

int knobFrame(const Parameter &parameter, int position)
{
    constexpr int lastFrame = 20;
    switch (parameter.frames) {
    case FrameRule::Gain:
        return gainFrame(position);
    case FrameRule::Even:
        return std::clamp(position / 6, 0, lastFrame);
    case FrameRule::Time:
        break;
    }
    return std::clamp(position * (lastFrame + 1) / parameter.steps, 0, lastFrame);
}

std::uint8_t commandByte(const Parameter &parameter, int step)
{
    const int number = parameter.scale == Scale::Gain ? step - lastGain : step;
    return static_cast<std::uint8_t>(number);
}

} // namespace mixer
