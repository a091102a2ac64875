#pragma once

#include <QString>

#include <array>

/// How a strip of the mixer is identified. GUI thread or none: plain values and pure functions.
namespace mixer {

constexpr int trackCount = 16; ///< mono strips, one for each input of the device
constexpr int pairCount = 8;   ///< stereo strips: 1-2, 3-4, ... 15-16; there are no other pairs
constexpr int stripCount = trackCount + pairCount + 1; ///< with the master

/// What a strip is; it decides which key its values are stored under and where its controls lie.
enum class StripKind {
    Odd = 0,  ///< mono strip 1, 3, ... 15, the left half of a pair's page
    Even = 1, ///< mono strip 2, 4, ... 16, the right half
    Pair = 2, ///< stereo strip
    Master = 3,
};

enum class Side { Left = 0, Right = 1 };

/// One strip, as every rule takes it.
struct StripId
{
    StripKind kind;
    QString channelKey; ///< "Track7"; empty for pairs and the master
    QString busKey; ///< "Track7_8", "Master"; for a mono strip its side of the pair, "Track7_8_L"

    /// The key that the strip's own values are stored under.
    const QString &key() const { return isMono() ? channelKey : busKey; }
    bool isMono() const { return kind == StripKind::Odd || kind == StripKind::Even; }
    /// Place among all strips: tracks 0 to 15, pairs 16 to 23, master 24.
    int index() const;
};

StripId track(int number); ///< number 1 to 16
StripId pair(int left);    ///< left channel of the pair: 1, 3, ... 15
StripId master();

/// The pair that a channel (1 to 16) belongs to, and the side it is there.
StripId pairOf(int number);
Side sideOf(int number);

/// "Track7" gives 7, "Track7_8" gives 7 (its left channel), any other key -1.
int channelNumber(const QString &key);
/// "Track7_8" gives "Track7"; a key that is not a pair gives "NotStereo".
QString leftSide(const QString &pairKey);
/// "Track7_8" gives "Track8"; a key that is not a pair gives "NotStereo".
QString rightSide(const QString &pairKey);

/// A channel as the device knows it.
struct DeviceChannel
{
    int type;         ///< 4 input channel, 2 master
    unsigned char no; ///< counted from 1
};

/// The channels of the device that a strip stands for: one for a mono strip, else two.
struct DeviceChannels
{
    std::array<DeviceChannel, 2> channel;
    int count;
    const DeviceChannel *begin() const { return channel.data(); }
    const DeviceChannel *end() const { return channel.data() + count; }
};
DeviceChannels deviceChannels(const StripId &strip);

/// How the strip is called in words: "Channel 7", "Channels 7 and 8", "Master".
QString title(const StripId &strip);

} // namespace mixer
