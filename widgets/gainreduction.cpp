#include "widgets/gainreduction.h"

#include <QWidget>

#include <algorithm>
#include <iterator>

namespace gainreduction {
namespace {

// clang-format off
/// From -24 dB to unity, about 1 dB apart.
constexpr std::uint16_t gains[] = {
     2067,  2319,  2602,  2920,  3276,  3676,  4125,  4628,  5193,  5827,  6538,  7335,  8230,
     9235, 10362, 11626, 13045, 14636, 16422, 18426, 20675, 23197, 26028, 29204, 32768,
};
/// What is left of the full length when the gain is below the entry of the same place.
constexpr int heights[] = {
     0,  3,  6,  8, 11, 14, 16, 19, 22, 24, 27, 30, 32,
    35, 38, 40, 43, 46, 48, 51, 54, 56, 59, 61, 62,
};
// clang-format on
static_assert(std::size(gains) == 25 && std::size(heights) == 25, "the tables go together");

} // namespace

int target(std::uint16_t gain)
{
    const auto *const above = std::upper_bound(std::begin(gains), std::end(gains), gain);
    if (above == std::end(gains)) return fullLength;
    return fullLength - heights[above - std::begin(gains)];
}

int fallen(int length)
{
    if (length <= 1) return 0;
    if (length == 2) return 1;
    if (length <= 4) return length - 2;
    return length - (length <= 8 ? 4 : 8);
}

Bar::Bar(QWidget *widget) : m_widget(widget)
{
    m_widget->hide();
}

void Bar::update(std::uint16_t gain)
{
    const int wanted = target(gain);
    if (m_length > wanted) return fall();
    setLength(wanted);
    m_widget->show();
}

void Bar::clear()
{
    m_length = 0;
    m_widget->hide();
}

void Bar::fall()
{
    const int next = fallen(m_length);
    if (next == 0) return m_widget->hide();
    setLength(next);
}

void Bar::setLength(int length)
{
    m_length = length;
    m_widget->setGeometry(left, top, width, length);
}

} // namespace gainreduction
