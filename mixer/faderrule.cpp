#include "mixer/faderrule.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"
#include "mixer/faderscale.h"
#include "storage/settings.h"
#include "widgets/fader.h"

#include <algorithm>

namespace mixer {

void FaderRule::press(const StripId &strip, const QPointF &pointer)
{
    m_drag = {Pointer(pointer), stored(strip), strip.key()};
}

void FaderRule::move(const StripId &strip, const QPointF &pointer)
{
    const Pointer now(pointer);
    m_drag.position = draggedFader(m_drag.position, m_drag.last, now);
    m_drag.last = now;
    set(strip, m_drag.position);
}

void FaderRule::reset(const StripId &strip)
{
    m_drag.follow(strip.key(), faderDefault);
    set(strip, faderDefault);
}

void FaderRule::step(const StripId &strip, int positions)
{
    const int target = std::clamp<int>(stored(strip) + positions, faderTop, faderBottom);
    m_drag.follow(strip.key(), static_cast<std::uint16_t>(target));
    set(strip, static_cast<std::uint16_t>(target));
}

void FaderRule::copy(const StripId &from, const StripId &to)
{
    set(to, stored(from));
}

std::uint16_t FaderRule::stored(const StripId &strip) const
{
    return validFaderPosition(m_context.settings.read(strip.key(), storage::strip::fader.position));
}

void FaderRule::set(const StripId &strip, std::uint16_t position)
{
    m_context.settings.write(strip.key(), storage::strip::fader, position, faderText(position));
    show(strip);
    send(strip);
}

void FaderRule::show(const StripId &strip)
{
    const std::uint16_t position = stored(strip);
    const QString label = faderLabel(faderText(position));
    const StripView &view = m_context.viewOf(strip);
    view.faderKnob->move(faderColumns[static_cast<int>(strip.kind)], position);
    view.faderKnob->setAccessibleName(QStringLiteral("%1 fader, %2").arg(title(strip), label));
    view.faderText->setText(label);
}

void FaderRule::send(const StripId &strip)
{
    if (!m_context.isShown(strip)) return;
    const auto value = static_cast<unsigned char>(faderValue(faderText(stored(strip))));
    for (const DeviceChannel &channel : deviceChannels(strip))
        m_context.device.set_fader(channel.type, channel.no, value);
}

} // namespace mixer
