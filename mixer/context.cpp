#include "mixer/context.h"

#include "storage/settings.h"

#include <QStackedWidget>

namespace mixer {

const StripView &Context::viewOf(const StripId &strip) const
{
    return view.strips[static_cast<std::size_t>(strip.index())];
}

bool Context::isLinked(const StripId &pair) const
{
    return settings.read(pair.busKey, storage::strip::link);
}

QStackedWidget *Context::pagesOf(const StripId &pair) const
{
    return view.pairs[static_cast<std::size_t>(channelNumber(pair.key()) / 2)].pages;
}

bool Context::isOnScreen(const StripId &strip) const
{
    if (strip.kind == StripKind::Master) return true;
    const StripId pair = pairOf(channelNumber(strip.key()));
    const bool stereoPage = pagesOf(pair)->currentIndex() == stereoPageIndex;
    return stereoPage == (strip.kind == StripKind::Pair);
}

bool Context::isShown(const StripId &strip) const
{
    if (strip.kind == StripKind::Master) return true;
    const StripId pair = pairOf(channelNumber(strip.key()));
    return isOnScreen(strip) && isLinked(pair) == (strip.kind == StripKind::Pair);
}

} // namespace mixer
