#include "widgets/eqshapes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace eqshapes {
namespace {

/// Slightly above the full weight of 120, so that the top of the widest bell is one higher than its
/// neighbours.
constexpr double topWeight = 120.6;

// clang-format off
constexpr std::array<int, 64> columns = {
      9,  13,  17,  21,  24,  27,  29,  31,  35,  39,  42,  45,  47,  49,  52,  55,
     58,  60,  62,  66,  69,  72,  73,  74,  75,  76,  78,  80,  81,  83,  84,  85,
     86,  87,  89,  90,  91,  93,  95,  96,  98,  99, 100, 101, 102, 103, 105, 107,
    109, 111, 113, 114, 115, 117, 119, 121, 123, 125, 126, 128, 129, 130, 131, 133,
};
// clang-format on
constexpr int highSteps = 32;
constexpr std::size_t highOffset = 22; // index in `columns` of the high band's first step
static_assert(columns[highOffset] == 73, "the high band starts at column 73");

/// The entries at which a bell has at least half its height, by Q step.
struct Span
{
    int first;
    int last;
};
constexpr std::array<Span, qSteps> halfHeight = {{
    {184, 218},
    {193, 211},
    {197, 206},
    {199, 204},
    {200, 203},
    {202, 203},
    {201, 202},
}};
constexpr int bellFirst = 135; // a bell's weight is 0 outside these entries
constexpr int bellLast = 269;

/// Returns a bell of the form 2^-x², symmetric about the middle of the span. The entries nearest to
/// the middle have the full weight. The bell falls to half its height half an entry outside the
/// span, so that exactly the entries of the span have at least half.
Shape bell(const Span &span)
{
    const double middle = (span.first + span.last) / 2.0;
    const double half = (span.last - span.first + 1) / 2.0;
    const double nearest = (span.last - span.first) % 2 == 0 ? 0 : 0.5;
    const double width = half * half - nearest * nearest;
    Shape shape{};
    for (int i = bellFirst; i <= bellLast; ++i) {
        const double x = i - middle;
        const double weight = topWeight * std::exp2(-(x * x - nearest * nearest) / width);
        shape[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(std::lround(weight));
    }
    return shape;
}

struct Point
{
    double entry;
    double weight;
};

/// Returns the slope of a curve at a point: the weighted harmonic mean of the slopes on its two
/// sides, or 0 where the curve is level or turns. With these slopes the cubic never overshoots the
/// points.
double slopeAt(const Point &before, const Point &at, const Point &after)
{
    const double left = at.entry - before.entry;
    const double right = after.entry - at.entry;
    const double leftSlope = (at.weight - before.weight) / left;
    const double rightSlope = (after.weight - at.weight) / right;
    if (leftSlope * rightSlope <= 0) return 0;
    const double leftShare = 2 * right + left;
    const double rightShare = right + 2 * left;
    return (leftShare + rightShare) / (leftShare / leftSlope + rightShare / rightSlope);
}

/// Returns the value at `entry` of the cubic between two points with the given slopes.
double hermite(const Point &a, double slopeA, const Point &b, double slopeB, double entry)
{
    const double width = b.entry - a.entry;
    const double t = (entry - a.entry) / width;
    const double u = 1 - t;
    return a.weight * (1 + 2 * t) * u * u + slopeA * width * t * u * u +
           b.weight * t * t * (3 - 2 * t) - slopeB * width * t * t * u;
}

/// Returns a monotone curve through the points, level before the first and after the last.
Shape flank(const std::vector<Point> &points)
{
    std::vector<double> slopes(points.size(), 0);
    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        slopes[i] = slopeAt(points[i - 1], points[i], points[i + 1]);

    Shape shape{};
    for (int entry = 0; entry < entryCount; ++entry) {
        const auto next = std::find_if(
            points.begin(), points.end(), [entry](const Point &p) { return p.entry > entry; });
        double weight = 0;
        if (next == points.begin()) {
            weight = points.front().weight;
        } else if (next == points.end()) {
            weight = points.back().weight;
        } else {
            const auto i = static_cast<std::size_t>(next - points.begin());
            weight = hermite(points[i - 1], slopes[i - 1], points[i], slopes[i], entry);
        }
        shape[static_cast<std::size_t>(entry)] = static_cast<std::int32_t>(std::lround(weight));
    }
    return shape;
}

std::array<Shape, qSteps> bells()
{
    std::array<Shape, qSteps> shapes;
    std::transform(halfHeight.begin(), halfHeight.end(), shapes.begin(), bell);
    return shapes;
}

} // namespace

const Shape &peaking(int qStep)
{
    static const std::array<Shape, qSteps> shapes = bells();
    return shapes[static_cast<std::size_t>(qStep)];
}

const Shape &highShelf()
{
    static const Shape shape = flank({{135, 0}, {190, 63}, {200, 88}, {234, 120}});
    return shape;
}

const Shape &lowShelf(bool lowCut)
{
    static const Shape cut = flank({{180, 150}, {190, 105}, {200, 48}, {210, 11}, {220, 0}});
    static const Shape plain = flank(
        {{180, 120},
         {200, 99},
         {210, 76},
         {220, 50},
         {230, 25},
         {240, 11},
         {250, 6},
         {269, 1},
         {270, 0}});
    return lowCut ? cut : plain;
}

double weight(const Shape &shape, double entry)
{
    const double first = std::floor(entry);
    const auto at = [&shape](double index) {
        const double inside = std::clamp(index, 0.0, double{entryCount - 1});
        return Point{index, double(shape[static_cast<std::size_t>(inside)])};
    };
    // Where the weights differ by their rounding only, a monotone curve would draw it as steps.
    const auto slope = [&at](double index) {
        const Point before = at(index - 1), middle = at(index), after = at(index + 1);
        const double left = middle.weight - before.weight;
        const double right = after.weight - middle.weight;
        const bool isRounding = std::abs(left) <= 1 && std::abs(right) <= 1;
        return isRounding ? (left + right) / 2 : slopeAt(before, middle, after);
    };
    return hermite(at(first), slope(first), at(first + 1), slope(first + 1), entry);
}

int column(int step)
{
    return columns[static_cast<std::size_t>(step)];
}

int highColumn(int step)
{
    return columns[highOffset + static_cast<std::size_t>(std::min(step, highSteps - 1))];
}

} // namespace eqshapes
