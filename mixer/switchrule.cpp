#include "mixer/switchrule.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"
#include "storage/settings.h"
#include "widgets/channelcontrol.h"

#include <QPushButton>

namespace mixer {

namespace key = storage::strip;

void SwitchRule::setPhase(const StripId &track, bool on)
{
    for (const QString &group : {track.channelKey, track.busKey})
        m_context.settings.write(group, key::phase, on);
    showPhase(track);
    sendPhase(track);
}

void SwitchRule::setMute(const StripId &strip, bool on)
{
    m_context.settings.write(strip.key(), key::mute, on);
    m_context.viewOf(strip).mute->setChecked(on);
    sendMute(strip);
}

void SwitchRule::setSolo(const StripId &strip, bool on)
{
    m_context.settings.write(strip.key(), key::solo, on);
    m_context.viewOf(strip).solo->setChecked(on);
    sendSolo(strip);
}

void SwitchRule::setEq(const StripId &strip, bool on)
{
    m_context.settings.write(strip.key(), key::eq, on);
    m_context.viewOf(strip).eq->setChecked(on);
    emit m_context.viewOf(strip).frame->signal_doEqualizerRepaint();
}

void SwitchRule::setComp(const StripId &strip, bool on)
{
    m_context.settings.write(strip.key(), key::comp, on);
    m_context.viewOf(strip).comp->setChecked(on);
    emit m_context.viewOf(strip).frame->signal_doCompressorRepaint();
}

void SwitchRule::setSelected(const StripId &strip, bool on)
{
    unselectOthers(strip);
    m_context.settings.write(strip.key(), key::select, on);
    showSelected(strip, on);
}

void SwitchRule::showSelected(const StripId &strip, bool selected)
{
    const StripView &view = m_context.viewOf(strip);
    if (!view.select) return;
    view.select->setChecked(selected);
    view.frame->setSelected(selected);
}

void SwitchRule::unselectOthers(const StripId &strip)
{
    for (const StripView &other : m_context.view.strips) {
        if (!other.select || other.id.key() == strip.key()) continue;
        showSelected(other.id, false);
        if (m_context.settings.read(other.id.key(), key::select))
            m_context.settings.write(other.id.key(), key::select, false);
    }
}

void SwitchRule::show(const StripId &strip)
{
    const StripView &view = m_context.viewOf(strip);
    const auto stored = [&](storage::SwitchKey switchKey) {
        return m_context.settings.read(strip.key(), switchKey);
    };
    view.mute->setChecked(stored(key::mute));
    if (strip.kind == StripKind::Master) return;
    view.solo->setChecked(stored(key::solo));
    view.eq->setChecked(stored(key::eq));
    view.comp->setChecked(stored(key::comp));
    if (strip.isMono()) showPhase(strip);
}

void SwitchRule::showPhase(const StripId &track)
{
    const bool on = m_context.settings.read(track.channelKey, key::phase);
    const int number = channelNumber(track.channelKey);
    const auto side = static_cast<std::size_t>(sideOf(number));
    m_context.viewOf(track).sides[0].phase->setChecked(on);
    m_context.viewOf(pairOf(number)).sides[side].phase->setChecked(on);
}

void SwitchRule::sendMute(const StripId &strip)
{
    if (!m_context.isShown(strip)) return;
    const bool on = m_context.settings.read(strip.key(), key::mute);
    for (const DeviceChannel &channel : deviceChannels(strip))
        m_context.device.set_mute(channel.type, channel.no, on);
}

void SwitchRule::sendSolo(const StripId &strip)
{
    if (!m_context.isShown(strip)) return;
    const bool on = m_context.settings.read(strip.key(), key::solo);
    for (const DeviceChannel &channel : deviceChannels(strip))
        m_context.device.set_solo(channel.type, channel.no, on);
}

void SwitchRule::sendPhase(const StripId &track)
{
    const bool on = m_context.settings.read(track.channelKey, key::phase);
    for (const DeviceChannel &channel : deviceChannels(track))
        m_context.device.set_phase(channel.type, channel.no, on);
}

} // namespace mixer
