#include "mixer/panrule.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"
#include "mixer/panscale.h"
#include "storage/settings.h"
#include "widgets/pancontrol.h"

#include <QLabel>

namespace mixer {

template <typename Action>
void PanRule::forBothViews(const StripId &track, Action action) const
{
    const int number = channelNumber(track.channelKey);
    action(m_context.viewOf(track).sides[0]);
    action(m_context.viewOf(pairOf(number)).sides[static_cast<std::size_t>(sideOf(number))]);
}

void PanRule::press(const StripId &track, const QPointF &pointer)
{
    showText(track, true);
    m_drag = {Pointer(pointer), stored(track), track.key()};
}

void PanRule::move(const StripId &track, const QPointF &pointer)
{
    const Pointer now(pointer);
    m_drag.position = draggedPan(track.kind, m_drag.position, m_drag.last, now);
    m_drag.last = now;
    set(track, m_drag.position);
}

void PanRule::release(const StripId &track)
{
    showText(track, false);
}

void PanRule::releaseAll()
{
    for (int number = 1; number <= trackCount; ++number)
        release(track(number));
}

void PanRule::reset(const StripId &track)
{
    m_drag.follow(track.key(), panCentre(track.kind));
    set(track, panCentre(track.kind));
}

void PanRule::step(const StripId &track, int positions)
{
    const std::uint16_t target = nearestPanPosition(track.kind, stored(track) + positions);
    m_drag.follow(track.key(), target);
    set(track, target);
}

std::uint16_t PanRule::stored(const StripId &track) const
{
    return validPanPosition(
        track.kind, m_context.settings.read(track.channelKey, storage::strip::pan.position));
}

void PanRule::set(const StripId &track, std::uint16_t position)
{
    const QString text = panText(position);
    for (const QString &key : {track.channelKey, track.busKey})
        m_context.settings.write(key, storage::strip::pan, position, text);
    show(track);
    send(track);
}

void PanRule::show(const StripId &track)
{
    const std::uint16_t position = stored(track);
    const QString text = panText(position);
    const QString words = QStringLiteral("%1 pan, %2").arg(title(track), text);
    forBothViews(track, [&](const SideView &side) {
        side.panKnob->move(position, panRow);
        side.panKnob->setCentred(position == panCentre(track.kind));
        side.panKnob->setAccessibleName(words);
        side.panText->setText(text);
    });
}

void PanRule::send(const StripId &track)
{
    const auto value = static_cast<unsigned char>(panValue(panText(stored(track))));
    for (const DeviceChannel &channel : deviceChannels(track))
        m_context.device.set_pan(channel.type, channel.no, value);
}

void PanRule::showText(const StripId &track, bool visible)
{
    forBothViews(track, [visible](const SideView &side) { side.panText->setVisible(visible); });
}

} // namespace mixer
