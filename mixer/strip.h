#pragma once

#include "common/device.h"
#include "storage/keys.h"

#include <QString>

#include <array>

/// How a strip of the mixer is identified. Plain values and pure functions; any thread.
namespace mixer {

constexpr int trackCount = tamber::inputCount; ///< mono strips, one for each input of the device
constexpr int pairCount = tamber::pairCount;   ///< stereo strips
constexpr int stripCount = trackCount + pairCount + 1; ///< with the master

/// What a strip is; it decides which values it has and where its controls lie.
enum class StripKind {
    Odd = 0,  ///< mono strip 1, 3, ... 15, the left half of a pair's page
    Even = 1, ///< mono strip 2, 4, ... 16, the right half
    Pair = 2, ///< stereo strip
    Master = 3,
};

enum class Side { Left = 0, Right = 1 };

/// One strip.
struct StripId
{
    StripKind kind;
    int number; ///< of the channel, 1 to 16; of a pair its left one; of the master 0

    constexpr bool isMono() const { return kind == StripKind::Odd || kind == StripKind::Even; }
    constexpr bool isPair() const { return kind == StripKind::Pair; }
    constexpr bool isMaster() const { return kind == StripKind::Master; }

    /// Place among all strips: tracks 0 to 15, pairs 16 to 23, master 24.
    constexpr int index() const { return static_cast<int>(group()); }
    /// The group that the strip's values are stored in.
    constexpr storage::Group group() const
    {
        if (isMaster()) return storage::masterGroup;
        return isPair() ? storage::pairGroup(number) : storage::trackGroup(number);
    }
    /// The name of that group: "Track7", "Track7_8", "Master".
    const QByteArray &key() const { return storage::nameOf(group()); }

    constexpr bool operator==(const StripId &o) const
    {
        return kind == o.kind && number == o.number;
    }
    constexpr bool operator!=(const StripId &o) const { return !(*this == o); }
};

/// number 1 to 16.
constexpr StripId track(int number)
{
    return {number % 2 == 1 ? StripKind::Odd : StripKind::Even, number};
}

/// left is the left channel of the pair: 1, 3, ... 15.
constexpr StripId pair(int left)
{
    return {StripKind::Pair, left};
}

constexpr StripId master()
{
    return {StripKind::Master, 0};
}

/// The strip at a place, 0 to 24; see StripId::index().
constexpr StripId stripAt(int index)
{
    if (index < trackCount) return track(index + 1);
    return index < trackCount + pairCount ? pair(2 * (index - trackCount) + 1) : master();
}

/// All strips, in the order of their places.
const std::array<StripId, stripCount> &allStrips();

/// The pair that a channel (1 to 16) belongs to, the side it is there, and the group of that side.
constexpr StripId pairOf(int number)
{
    return pair(number - (number + 1) % 2);
}
constexpr Side sideOf(int number)
{
    return number % 2 == 1 ? Side::Left : Side::Right;
}
constexpr storage::Group sideGroup(int number)
{
    return storage::sideGroup(number);
}

/// The channels that a strip stands for: one for a mono strip, two for a pair. Of the master its
/// sides, 1 left and 2 right.
struct Channels
{
    int first;
    int count;

    struct Iterator
    {
        int number;
        int operator*() const { return number; }
        Iterator &operator++() { return ++number, *this; }
        bool operator!=(const Iterator &o) const { return number != o.number; }
    };
    Iterator begin() const { return {first}; }
    Iterator end() const { return {first + count}; }
};
constexpr Channels channelsOf(const StripId &strip)
{
    return {strip.isMaster() ? 1 : strip.number, strip.isMono() ? 1 : 2};
}

/// How a strip is called in words: "Channel 7", "Channels 7 and 8", "Master".
QString title(const StripId &strip);

/// @name Keys as they come from a file
/// contract: entry points for keys that are not made here.
///@{
/// "Track7" gives 7, "Track7_8" gives 7 (its left channel), any other key -1.
int channelNumber(const QString &key);
/// "Track7_8" gives "Track7"; a key that is not a pair gives "NotStereo".
QString leftSide(const QString &pairKey);
/// "Track7_8" gives "Track8"; a key that is not a pair gives "NotStereo".
QString rightSide(const QString &pairKey);
///@}

} // namespace mixer
