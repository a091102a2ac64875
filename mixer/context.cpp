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

bool Context::isShown(const StripId &strip) const
{
    if (strip.kind == StripKind::Master) return true;
    const int number = channelNumber(strip.key());
    const StripId pair = pairOf(number);
    const bool stereoPage = pagesOf(pair)->currentIndex() == stereoPageIndex;
    return strip.kind == StripKind::Pair ? isLinked(pair) && stereoPage
                                         : !isLinked(pair) && !stereoPage;
}

} // namespace mixer
