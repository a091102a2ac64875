#pragma once

/// Positions and sizes of the controls of the Mixer page, in pixels at 100 % zoom. The views use
/// them, and so does the program that draws the images behind the controls. This header includes
/// nothing.
namespace geometry {

// Strips. Columns count from the left edge of the pair that a strip belongs to. An odd strip is the
// left half of the pair, an even strip the right half.
constexpr int stripWidth = 59;
constexpr int pairWidth = 2 * stripWidth;
constexpr int masterWidth = 78;
constexpr int stripHeight = 368;
constexpr int pairGap = 6;   ///< between two pairs
constexpr int masterGap = 8; ///< between the last pair and the master
constexpr int stripsWidth = 8 * (pairWidth + pairGap) - pairGap + masterGap + masterWidth;
constexpr int stripMargin = 5; ///< on both sides of a strip's buttons
constexpr int linkRow = 344;   ///< top edge of the buttons that link pairs

constexpr int faderTop = 144;                    ///< the cap's top edge at the highest level
constexpr int faderBottom = 245;                 ///< the cap's top edge at silence
constexpr int faderColumns[] = {12, 71, 35, 17}; ///< the cap's left edge: odd, even, pair, master
constexpr int capWidth = 20;
constexpr int capHeight = 30;

constexpr int fineDragPixels = 4; ///< pixels of a drag with Shift for one position

constexpr int panRow = 128; ///< top edge of the pan markers
constexpr int panWidth = 16;
constexpr int panHeight = 12;

constexpr int meterTop = 154; ///< row of a full bar
constexpr int meterBottom = 260;
constexpr int meterWidth = 6;
constexpr int meterHeight = meterBottom - meterTop; ///< from silence to full scale
constexpr int monoMeterColumn = 37;                 ///< from the left edge of the strip itself
constexpr int pairMeterColumns[] = {63, 75};
constexpr int masterMeterColumns[] = {43, 52};

// The editing area above the strips.
constexpr int editingWidth = stripsWidth;
constexpr int editingHeight = 165;
constexpr int editingHead = 24; ///< height of the row of headings
constexpr int bandsLeft = 184;  ///< the four EQ bands, from low to high
constexpr int bandWidth = 94;
constexpr int compressorSection = bandsLeft + 4 * bandWidth;
constexpr int knobSide = 36;
constexpr int knobRows[] = {27, 95}; ///< top edges of the captions
constexpr int knobCaption = 13;      ///< height of a caption; the knob is below it
constexpr int reductionLeft = 574;   ///< the gain-reduction bar, which grows downwards
constexpr int reductionTop = 73;
constexpr int reductionWidth = 5;
constexpr int reductionLength = 63; ///< of the longest bar
constexpr int eqLeft = 33;          ///< the EQ curve
constexpr int eqTop = 47;
constexpr int eqColumns = 136;
constexpr int eqZeroRow = 38;       ///< row of 0 dB, from the top of the curve
constexpr int compressorLeft = 634; ///< the compressor curve without its margin
constexpr int compressorTop = 29;
constexpr int compressorKnobs = 820; ///< the middle of the first of three columns of knobs
constexpr int compressorPitch = 96;

} // namespace geometry
