#include "mixer/routing.h"

#include "device/vxctl.h"

namespace mixer {
namespace {

using vxctl::channelComputer;
using vxctl::channelMaster;

struct Row
{
    Source source;
    const char *text;
};

// clang-format off
constexpr Row rows[] = {
    {{channelMaster, 1},   "MASTER L"},
    {{channelMaster, 2},   "MASTER R"},
    {{channelComputer, 1}, "COMPUTER 1"},
    {{channelComputer, 2}, "COMPUTER 2"},
    {{channelComputer, 3}, "COMPUTER 3"},
    {{channelComputer, 4}, "COMPUTER 4"},
    {{channelComputer, 5}, "COMPUTER 5"},
    {{channelComputer, 6}, "COMPUTER 6"},
    {{channelComputer, 7}, "COMPUTER 7"},
    {{channelComputer, 8}, "COMPUTER 8"},
};
// clang-format on
static_assert(sizeof rows / sizeof rows[0] == sourceCount, "one row for each source");

constexpr int computerPlayback = tamber::masterSides; // index of COMPUTER 1

} // namespace

Source source(int index)
{
    return rows[index].source;
}

QString sourceText(int index)
{
    return QLatin1String(rows[index].text);
}

int defaultSource(int output)
{
    return output <= 2 ? output - 1 : computerPlayback + output - 1;
}

int validSource(int output, int stored)
{
    return stored >= 0 && stored < sourceCount ? stored : defaultSource(output);
}

} // namespace mixer
