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
static_assert(std::size(rows) == bufferStepCount, "one row a step");

constexpr const Row &rowInsteadOfNone = rows[8];
constexpr const Row &rowOfUnknownFrames = rows[7];
static_assert(rowOfUnknownFrames.frames == defaultFrames, "an unknown length is the default one");

const Row &rowAt(int step)
{
    return step >= 0 && step < bufferStepCount ? rows[step] : rowInsteadOfNone;
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

int bufferStep(qint64 frames)
{
    const auto counted = static_cast<quint16>(frames);
    const auto *row = std::find_if(
        std::begin(rows), std::end(rows), [counted](const Row &r) { return r.frames == counted; });
    return row != std::end(rows) ? row->step : rowOfUnknownFrames.step;
}

} // namespace driver
