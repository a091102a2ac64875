#pragma once

#include "common/device.h"
#include "storage/keys.h"

#include <QString>

#include <array>

/// Identifiers of the mixer's strips. Plain values and pure functions; any thread.
namespace mixer {

constexpr int trackCount = tamber::inputCount; ///< mono strips, one for each input of the device
constexpr int pairCount = tamber::pairCount;   ///< stereo strips
constexpr int stripCount = trackCount + pairCount + 1; ///< all strips, the master included

/// The kind of a strip. It decides which values the strip has and where its controls are.
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
    int number; ///< channel 1 to 16; for a pair its left channel; for the master 0

    constexpr bool isMono() const { return kind == StripKind::Odd || kind == StripKind::Even; }
    constexpr bool isPair() const { return kind == StripKind::Pair; }
    constexpr bool isMaster() const { return kind == StripKind::Master; }

    /// Returns 0 to 15 for mono strips, 16 to 23 for pairs, 24 for the master.
    constexpr int index() const { return static_cast<int>(group()); }
    /// Returns the settings group of the strip's values.
    constexpr storage::Group group() const
    {
        if (isMaster()) return storage::masterGroup;
        return isPair() ? storage::pairGroup(number) : storage::trackGroup(number);
    }
    /// Returns the name of the settings group: "Track7", "Track7_8", "Master".
    const QByteArray &key() const { return storage::nameOf(group()); }

    constexpr bool operator==(const StripId &o) const
    {
        return kind == o.kind && number == o.number;
    }
    constexpr bool operator!=(const StripId &o) const { return !(*this == o); }
};

/// Returns a mono strip.
/// @param number 1 to 16
constexpr StripId track(int number)
{
    return {number % 2 == 1 ? StripKind::Odd : StripKind::Even, number};
}

/// Returns a pair's stereo strip.
/// @param left the left channel of the pair: 1, 3, ... 15
constexpr StripId pair(int left)
{
    return {StripKind::Pair, left};
}

constexpr StripId master()
{
    return {StripKind::Master, 0};
}

/// Returns the strip with an index, 0 to 24; see StripId::index().
constexpr StripId stripAt(int index)
{
    if (index < trackCount) return track(index + 1);
    return index < trackCount + pairCount ? pair(2 * (index - trackCount) + 1) : master();
}

/// Returns all strips in the order of StripId::index().
const std::array<StripId, stripCount> &allStrips();

/// Returns the pair that a channel (1 to 16) belongs to.
constexpr StripId pairOf(int number)
{
    return pair(number - (number + 1) % 2);
}
/// Returns the side of its pair that a channel (1 to 16) is on.
constexpr Side sideOf(int number)
{
    return number % 2 == 1 ? Side::Left : Side::Right;
}
/// Returns the settings group of a channel's (1 to 16) side of its pair: "Track7_8_L".
constexpr storage::Group sideGroup(int number)
{
    return storage::sideGroup(number);
}

/// A range of channel numbers, for range-based for loops.
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
/// Returns the channels of a strip: one for a mono strip, two for a pair. For the master it returns
/// its sides, 1 (left) and 2 (right).
constexpr Channels channelsOf(const StripId &strip)
{
    return {strip.isMaster() ? 1 : strip.number, strip.isMono() ? 1 : 2};
}

/// Returns a strip's title: "Channel 7", "Channels 7 and 8", "Master".
QString title(const StripId &strip);

/// @name Strip keys from settings files
// contract: these functions and the text "NotStereo". The panel itself does not call them.
///@{
/// Returns a strip's channel: 7 for "Track7", 7 (the left channel) for "Track7_8". Returns -1 for
/// any other key.
int channelNumber(const QString &key);
/// Returns the left channel's key: "Track7" for "Track7_8". Returns "NotStereo" if the key is not a
/// pair's.
QString leftSide(const QString &pairKey);
/// Returns the right channel's key: "Track8" for "Track7_8". Returns "NotStereo" if the key is not
/// a pair's.
QString rightSide(const QString &pairKey);
///@}

} // namespace mixer
