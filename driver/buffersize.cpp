#include "driver/buffersize.h"

#include <algorithm>
#include <iterator>

namespace driver {
namespace {

struct Row
{
    int step;
    int frames;
    const char *label;
};

// contract: the labels, including the blanks before "4" and "8", which do not align them.
// clang-format off
constexpr Row rows[] = {
    { 0,    4, "  4 Samples"},
    { 1,    8, "  8 Samples"},
    { 2,   16, "  16 Samples"},
    { 3,   24, "  24 Samples"},
    { 4,   32, "  32 Samples"},
    { 5,   64, "  64 Samples"},
    { 6,  128, " 128 Samples"},
    { 7,  256, " 256 Samples"},
    { 8,  512, " 512 Samples"},
    { 9, 1024, "1024 Samples"},
    {10, 2048, "2048 Samples"},
};
// clang-format on
static_assert(std::size(rows) == bufferStepCount, "one row per step");

constexpr const Row &rowForInvalidStep = rows[8];
constexpr const Row &rowForUnknownFrames = rows[7];
static_assert(rowForUnknownFrames.frames == defaultFrames, "unknown lengths become the default");

const Row &rowAt(int step)
{
    return step >= 0 && step < bufferStepCount ? rows[step] : rowForInvalidStep;
}

} // namespace

int bufferFrames(int step)
{
    return rowAt(step).frames;
}

QString bufferLabel(int step)
{
    return QLatin1String(rowAt(step).label);
}

QString bufferTime(int frames, std::uint32_t hertz)
{
    const double milliseconds = 1000.0 * frames / hertz;
    return QStringLiteral("%1 ms").arg(milliseconds, 0, 'f', milliseconds < 1 ? 2 : 1);
}

int bufferStep(qint64 frames)
{
    const auto low = static_cast<std::uint16_t>(frames);
    const auto *row = std::find_if(
        std::begin(rows), std::end(rows), [low](const Row &r) { return r.frames == low; });
    return row != std::end(rows) ? row->step : rowForUnknownFrames.step;
}

} // namespace driver
