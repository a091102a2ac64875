#include "mixer/faderscale.h"

#include <array>

namespace mixer {
namespace {

const QString silence = QStringLiteral("infinity ");
constexpr std::int8_t silentValue = -127;

// contract: the uneven steps.
// Decibels of the positions 144 to 244. Each decibel has two positions down to -11 (0 dB has
// three), one and two in turn down to -30, then one. -42, -47, -52 and -57 are left out, and the
// steps below -60 are 4 dB wide.
// clang-format off
constexpr std::array<std::int8_t, 101> decibels = {
      6,   6,   5,   5,   4,   4,   3,   3,   2,   2, // 144
      1,   1,   0,   0,   0,  -1,  -1,  -2,  -2,  -3, // 154
     -3,  -4,  -4,  -5,  -5,  -6,  -6,  -7,  -7,  -8, // 164
     -8,  -9,  -9, -10, -10, -11, -11, -12, -13, -13, // 174
    -14, -15, -15, -16, -17, -17, -18, -19, -19, -20, // 184
    -21, -21, -22, -23, -23, -24, -24, -25, -26, -26, // 194
    -27, -28, -28, -29, -29, -30, -31, -32, -33, -34, // 204
    -35, -36, -37, -38, -39, -40, -41, -43, -44, -45, // 214
    -46, -48, -49, -50, -51, -53, -54, -55, -56, -58, // 224
    -59, -60, -64, -68, -72, -76, -80, -84, -88, -92, // 234
    -96,                                              // 244
};
// clang-format on
static_assert(decibels.size() == faderBottom - faderTop, "every position above silence has a row");
static_assert(decibels[faderDefault - faderTop] == 0, "the default is 0 dB");

} // namespace

QString faderText(int position)
{
    if (position < faderTop || position >= faderBottom) return silence;
    return QString::number(decibels[static_cast<std::size_t>(position - faderTop)]);
}

QString faderLabel(const QString &text)
{
    return text == silence ? text : text + QStringLiteral(" dB");
}

std::int8_t faderValue(const QString &text)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber, 10);
    return isNumber ? static_cast<std::int8_t>(value) : silentValue;
}

int validFaderPosition(int stored)
{
    return stored >= faderTop && stored <= faderBottom ? stored : faderBottom;
}

} // namespace mixer
