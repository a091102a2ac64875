#include "mixer/mixer.h"

#include "storage/settings.h"

#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

namespace mixer {

namespace key = storage::strip;

const StripView &Context::viewOf(const StripId &strip) const
{
    return view.strips[static_cast<std::size_t>(strip.index())];
}

bool Context::isLinked(const StripId &pair) const
{
    return settings.read(pair.busKey, key::link);
}

bool Context::isShown(const StripId &strip) const
{
    if (strip.kind == StripKind::Master) return true;
    const bool linked = isLinked(pairOf(channelNumber(strip.key())));
    return linked == (strip.kind == StripKind::Pair);
}

Mixer::Mixer(Settings &settings, QVXDevice &device, const MixerView &view)
    : m_context{settings, device, view}, m_fader(m_context), m_pan(m_context), m_switches(m_context)
{
}

void Mixer::selectClicked(const StripId &strip)
{
    m_switches.setSelected(strip, m_context.viewOf(strip).select->isChecked());
}

void Mixer::phaseClicked(const StripId &track)
{
    m_switches.setPhase(track, m_context.viewOf(track).sides[0].phase->isChecked());
}

void Mixer::pairPhaseClicked(const StripId &track)
{
    const int number = channelNumber(track.channelKey);
    const StripView &view = m_context.viewOf(pairOf(number));
    const auto side = static_cast<std::size_t>(sideOf(number));
    m_switches.setPhase(track, view.sides[side].phase->isChecked());
}

void Mixer::eqClicked(const StripId &strip)
{
    m_switches.setEq(strip, m_context.viewOf(strip).eq->isChecked());
}

void Mixer::compClicked(const StripId &strip)
{
    m_switches.setComp(strip, m_context.viewOf(strip).comp->isChecked());
}

void Mixer::soloClicked(const StripId &strip)
{
    m_switches.setSolo(strip, m_context.viewOf(strip).solo->isChecked());
}

void Mixer::muteClicked(const StripId &strip)
{
    m_switches.setMute(strip, m_context.viewOf(strip).mute->isChecked());
}

void Mixer::setLinked(const StripId &pair, bool linked)
{
    const int left = channelNumber(pair.busKey);
    m_context.settings.write(pair.busKey, key::link, linked);
    if (linked) {
        copyStrip(track(left), pair);
    } else {
        copyStrip(pair, track(left));
        copyStrip(pair, track(left + 1));
    }
    showLink(pair);
}

void Mixer::copyStrip(const StripId &from, const StripId &to)
{
    m_fader.copy(from, to);
    m_switches.setMute(to, m_context.settings.read(from.key(), key::mute));
    m_switches.setSolo(to, m_context.settings.read(from.key(), key::solo));
}

void Mixer::setName(const StripId &strip, const QString &name)
{
    m_context.settings.write(strip.key(), key::name, name);
}

void Mixer::showLink(const StripId &pair)
{
    const int left = channelNumber(pair.busKey);
    const PairView &view = m_context.view.pairs[static_cast<std::size_t>(left / 2)];
    view.pages->setCurrentIndex(m_context.isLinked(pair) ? 1 : 0);
}

void Mixer::showAll()
{
    for (const StripView &view : m_context.view.strips) {
        m_fader.show(view.id);
        m_switches.show(view.id);
        if (view.id.isMono()) m_pan.show(view.id);
        if (view.id.kind == StripKind::Pair) showLink(view.id);
        if (view.name) showName(view);
    }
}

void Mixer::showName(const StripView &strip)
{
    strip.name->setText(m_context.settings.read(strip.id.key(), key::name));
    strip.name->setCursorPosition(0); // of a long name the beginning is seen
}

void Mixer::sendAll()
{
    for (const StripView &view : m_context.view.strips)
        m_fader.send(view.id);
    for (const StripView &view : m_context.view.strips)
        m_switches.sendMute(view.id);
    for (int number = 1; number <= trackCount; ++number) {
        m_pan.send(track(number));
        m_switches.sendPhase(track(number));
    }
    for (const StripView &view : m_context.view.strips)
        if (view.id.kind != StripKind::Master) m_switches.sendSolo(view.id);
}

} // namespace mixer
