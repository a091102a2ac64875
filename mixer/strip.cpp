#include "mixer/strip.h"

#include "device/vxctl.h"

namespace mixer {
namespace {

/// The keys of the mono strips and of the pairs, made once: they are compared at every drag move.
struct Keys
{
    std::array<QString, trackCount> tracks;
    std::array<QString, pairCount> pairs;

    Keys()
    {
        for (int i = 0; i < trackCount; ++i)
            tracks[static_cast<std::size_t>(i)] = QStringLiteral("Track%1").arg(i + 1);
        for (int i = 0; i < pairCount; ++i)
            pairs[static_cast<std::size_t>(i)] =
                QStringLiteral("Track%1_%2").arg(2 * i + 1).arg(2 * i + 2);
    }
};

const Keys &keys()
{
    static const Keys made;
    return made;
}

const QString &trackKey(int number)
{
    return keys().tracks[static_cast<std::size_t>(number - 1)];
}

const QString &pairKey(int left)
{
    return keys().pairs[static_cast<std::size_t>(left / 2)];
}

QString notStereo()
{
    return QStringLiteral("NotStereo");
}

int leftOf(int number)
{
    return number - (number + 1) % 2;
}

/// Left channel of a pair's key, 0 for any other key.
int leftOfPair(const QString &key)
{
    for (int left = 1; left < trackCount; left += 2)
        if (key == pairKey(left)) return left;
    return 0;
}

} // namespace

int StripId::index() const
{
    if (kind == StripKind::Master) return stripCount - 1;
    const int number = channelNumber(key());
    return kind == StripKind::Pair ? trackCount + number / 2 : number - 1;
}

StripId track(int number)
{
    const bool left = sideOf(number) == Side::Left;
    const QString side = left ? QStringLiteral("_L") : QStringLiteral("_R");
    return {
        left ? StripKind::Odd : StripKind::Even, trackKey(number), pairKey(leftOf(number)) + side};
}

StripId pair(int left)
{
    return {StripKind::Pair, QString(), pairKey(left)};
}

StripId master()
{
    return {StripKind::Master, QString(), QStringLiteral("Master")};
}

StripId pairOf(int number)
{
    return pair(leftOf(number));
}

Side sideOf(int number)
{
    return number % 2 == 1 ? Side::Left : Side::Right;
}

int channelNumber(const QString &key)
{
    for (int number = 1; number <= trackCount; ++number)
        if (key == trackKey(number)) return number;
    const int left = leftOfPair(key);
    return left > 0 ? left : -1;
}

QString leftSide(const QString &pairKey)
{
    const int left = leftOfPair(pairKey);
    return left > 0 ? trackKey(left) : notStereo();
}

QString rightSide(const QString &pairKey)
{
    const int left = leftOfPair(pairKey);
    return left > 0 ? trackKey(left + 1) : notStereo();
}

DeviceChannels deviceChannels(const StripId &strip)
{
    const auto channel = [](vxctl::ChannelType type, int number) {
        return DeviceChannel{type, static_cast<unsigned char>(number)};
    };
    if (strip.kind == StripKind::Master)
        return {{channel(vxctl::channelMaster, 1), channel(vxctl::channelMaster, 2)}, 2};
    const int number = channelNumber(strip.key());
    return {
        {channel(vxctl::channelInput, number), channel(vxctl::channelInput, number + 1)},
        strip.kind == StripKind::Pair ? 2 : 1};
}

QString title(const StripId &strip)
{
    if (strip.kind == StripKind::Master) return QStringLiteral("Master");
    const int number = channelNumber(strip.key());
    if (strip.isMono()) return QStringLiteral("Channel %1").arg(number);
    return QStringLiteral("Channels %1 and %2").arg(number).arg(number + 1);
}

} // namespace mixer
