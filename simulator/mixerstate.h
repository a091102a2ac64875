#pragma once

#include <array>
#include <cstdint>

/// The mixer settings of the simulated device, in the units of the commands. Plain values.
namespace simulator {

constexpr int inputCount = 16;
constexpr int lineOutCount = 8;

constexpr int silentFader = -127;

struct EqBand
{
    std::int8_t gain = 0;  ///< dB
    std::uint8_t freq = 0; ///< step
    std::uint8_t q = 0;    ///< step
    bool operator==(const EqBand &o) const;
};

struct Eq
{
    std::array<EqBand, 4> bands; ///< low, high, high-mid, low-mid
    bool on = false;
    bool lowCut = false;
    bool operator==(const Eq &o) const;
};

struct Compressor
{
    std::uint8_t threshold = 32; ///< step; 32 is 0 dB
    std::uint8_t ratio = 0;      ///< step
    std::uint8_t attack = 0;     ///< step
    std::uint8_t release = 0;    ///< step
    std::uint8_t gain = 0;       ///< dB
    bool link = false;
    bool on = false;
    bool operator==(const Compressor &o) const;
};

struct Input
{
    int fader = silentFader; ///< dB, -127 silent
    int pan = 0;             ///< -127 left to 127 right
    bool mute = false;
    bool solo = false;
    bool phase = false;
    Eq eq;
    Compressor comp;
    bool operator==(const Input &o) const;
};

struct MasterSide
{
    int fader = silentFader; ///< dB, -127 silent
    bool mute = false;
    bool operator==(const MasterSide &o) const;
};

/// The source of a line output.
struct Source
{
    std::uint8_t type = 0; ///< 0 before the first assignment
    std::uint8_t no = 0;
    bool operator==(const Source &o) const;
};

struct MixerState
{
    std::array<Input, inputCount> inputs;
    std::array<MasterSide, 2> master; ///< left, right
    std::array<Source, lineOutCount> lineOuts;
    bool stereoBus = false;
    bool trueBypass = false;

    bool operator==(const MixerState &o) const;
    bool operator!=(const MixerState &o) const { return !(*this == o); }
};

} // namespace simulator
