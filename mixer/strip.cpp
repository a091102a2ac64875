#include "mixer/strip.h"

namespace mixer {
namespace {

/// Returns the mono strip or pair with a key, or the master for any other key.
StripId stripNamed(const QString &key)
{
    const auto group = storage::groupNamed(key.toLatin1());
    return group && *group < storage::masterGroup ? stripAt(static_cast<int>(*group)) : master();
}

QString sideKey(const QString &pairKey, int offset)
{
    const StripId strip = stripNamed(pairKey);
    if (!strip.isPair()) return QStringLiteral("NotStereo");
    return QString::fromLatin1(track(strip.number + offset).key());
}

} // namespace

const std::array<StripId, stripCount> &allStrips()
{
    static const auto strips = [] {
        std::array<StripId, stripCount> all{};
        for (int index = 0; index < stripCount; ++index)
            all[static_cast<std::size_t>(index)] = stripAt(index);
        return all;
    }();
    return strips;
}

QString title(const StripId &strip)
{
    if (strip.isMaster()) return QStringLiteral("Master");
    if (strip.isMono()) return QStringLiteral("Channel %1").arg(strip.number);
    return QStringLiteral("Channels %1 and %2").arg(strip.number).arg(strip.number + 1);
}

int channelNumber(const QString &key)
{
    const StripId strip = stripNamed(key);
    return strip.isMaster() ? -1 : strip.number;
}

QString leftSide(const QString &pairKey)
{
    return sideKey(pairKey, 0);
}

QString rightSide(const QString &pairKey)
{
    return sideKey(pairKey, 1);
}

} // namespace mixer
