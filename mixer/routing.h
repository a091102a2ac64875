#pragma once

#include "common/device.h"

#include <QString>

/// What the line outputs can play: a table of sources, by their place in the lists of the Output
/// page. Pure functions; any thread.
namespace mixer {

constexpr int lineOutCount = tamber::lineOutCount;
/// The master's two sides, then the computer's playback channels.
constexpr int sourceCount = tamber::masterSides + tamber::computerCount;

/// A source as the device knows it.
struct Source
{
    int type; ///< 2 master, 3 computer playback
    unsigned char no;
};

/// The source at a place, 0 to 9.
Source source(int index);
/// How it is called: "MASTER L", "COMPUTER 3".
QString sourceText(int index);

/// What an output (1 to 8) plays as long as nothing was chosen: the first two the master's left
/// and right, the others the computer's channel of the same number.
int defaultSource(int output);

/// A stored source as the panel takes it: one that is in no list is the output's default.
int validSource(int output, int stored);

} // namespace mixer
