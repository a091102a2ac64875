#include "mixer/context.h"

#include "storage/settings.h"

namespace mixer {

const StripView &Context::viewOf(const StripId &strip) const
{
    return view.strips[static_cast<std::size_t>(strip.index())];
}

bool Context::isLinked(const StripId &pair) const
{
    return settings.read(pair.busKey, storage::strip::link);
}

bool Context::isShown(const StripId &strip) const
{
    if (strip.kind == StripKind::Master) return true;
    const bool linked = isLinked(pairOf(channelNumber(strip.key())));
    return linked == (strip.kind == StripKind::Pair);
}

} // namespace mixer
