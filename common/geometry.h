#pragma once

/// Where the controls of the Mixer page lie, in pixels at 100 %: for the views, and for the program
/// that draws the images behind them. Includes nothing.
namespace geometry {

// Strips. Columns count from the left edge of the strip's parent; an even strip is the right half.
constexpr int stripWidth = 59;
constexpr int pairWidth = 2 * stripWidth;
constexpr int masterWidth = 78;
constexpr int stripHeight = 368;

constexpr int faderTop = 144;                    ///< the cap's top edge at the highest level
constexpr int faderBottom = 245;                 ///< and at silence
constexpr int faderColumns[] = {12, 71, 35, 17}; ///< the cap's left edge: odd, even, pair, master
constexpr int capWidth = 20;
constexpr int capHeight = 30;

constexpr int panRow = 128; ///< top edge of the markers
constexpr int panWidth = 16;
constexpr int panHeight = 12;

constexpr int meterTop = 154; ///< row of a full bar
constexpr int meterBottom = 260;
constexpr int meterWidth = 6;
constexpr int meterHeight = meterBottom - meterTop; ///< from silence to full scale
constexpr int monoMeterColumn = 37;                 ///< from the strip's left edge
constexpr int pairMeterColumns[] = {63, 75};
constexpr int masterMeterColumns[] = {43, 52};

// The editing area above the strips.
constexpr int editingWidth = 1036;
constexpr int editingHeight = 165;
constexpr int reductionLeft = 574; ///< of the gain-reduction bar, which grows downwards
constexpr int reductionTop = 73;
constexpr int reductionWidth = 5;
constexpr int reductionLength = 63; ///< at most
constexpr int eqLeft = 33;          ///< of the EQ curve
constexpr int eqTop = 52;
constexpr int eqColumns = 136;
constexpr int eqZeroRow = 38;       ///< of 0 dB, from its top
constexpr int compressorLeft = 630; ///< of the compressor's curve, without its margin
constexpr int compressorTop = 50;

} // namespace geometry
