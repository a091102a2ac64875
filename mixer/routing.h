#pragma once

#include "common/device.h"

#include <QString>

#include <cstdint>

/// The sources that the line outputs can play. A source's index is its place in the lists of the
/// Output page and its value in the settings. Pure functions; any thread.
namespace mixer {

constexpr int lineOutCount = tamber::lineOutCount;
/// The master's two sides and the computer's eight playback channels, in this order.
constexpr int sourceCount = tamber::masterSides + tamber::computerCount;

/// A source as the device identifies it.
struct Source
{
    int type;        ///< vxctl::channelMaster or vxctl::channelComputer
    std::uint8_t no; ///< channel of that type, from 1
};

/// Returns the source with an index, 0 to 9.
Source source(int index);
/// Returns the name of a source, 0 to 9: "MASTER L", "COMPUTER 3".
QString sourceText(int index);

/// Returns the source that an output, 1 to 8, plays before the user chooses one. Outputs 1 and 2
/// play the master's left and right; the others play the computer's channel of the same number.
int defaultSource(int output);

/// Returns a stored source, or the default of the output (1 to 8) if there is no such source.
int validSource(int output, int stored);

} // namespace mixer
