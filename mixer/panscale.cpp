#include "mixer/panscale.h"

#include <algorithm>

namespace mixer {
namespace {

constexpr int steps = 41; // L20 to R20
constexpr int centreStep = 20;
constexpr int oddFirst = 0;    // first position of an odd strip
constexpr int evenFirst = 59;  // first position of an even strip
constexpr int fullValue = 127; // hard left or right
constexpr std::int8_t unknownText = -1;

QString textOfStep(int step)
{
    if (step == centreStep) return QStringLiteral("C");
    return step < centreStep ? QStringLiteral("L%1").arg(centreStep - step)
                             : QStringLiteral("R%1").arg(step - centreStep);
}

/// Returns 127 x (step - 20) / 20, with halves rounded away from zero.
constexpr int valueOfStep(int step)
{
    const int scaled = fullValue * (step - centreStep);
    return (2 * scaled + (scaled < 0 ? -centreStep : centreStep)) / (2 * centreStep);
}
static_assert(valueOfStep(0) == -fullValue && valueOfStep(steps - 1) == fullValue);
static_assert(valueOfStep(10) == -64 && valueOfStep(centreStep) == 0);

bool isStep(int step)
{
    return step >= 0 && step < steps;
}

int firstPosition(StripKind kind)
{
    return kind == StripKind::Odd ? oddFirst : evenFirst;
}

} // namespace

QString panText(int position)
{
    for (const int first : {oddFirst, evenFirst})
        if (isStep(position - first)) return textOfStep(position - first);
    return QStringLiteral("Error");
}

std::int8_t panValue(const QString &text)
{
    for (int step = 0; step < steps; ++step)
        if (text == textOfStep(step)) return static_cast<std::int8_t>(valueOfStep(step));
    return unknownText;
}

int panCentre(StripKind kind)
{
    switch (kind) {
    case StripKind::Odd:
        return oddFirst + centreStep;
    case StripKind::Even:
        return evenFirst + centreStep;
    case StripKind::Pair:
    case StripKind::Master:
        break;
    }
    return 0;
}

int nearestPanPosition(StripKind kind, int position)
{
    const int first = firstPosition(kind);
    return std::clamp(position, first, first + steps - 1);
}

int validPanPosition(StripKind kind, int stored)
{
    const int first = firstPosition(kind);
    const bool valid = stored >= first && stored < first + steps;
    return valid ? stored : panCentre(kind);
}

} // namespace mixer
