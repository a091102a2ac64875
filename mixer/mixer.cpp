#include "mixer/mixer.h"

#include "storage/settings.h"

#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

#include <algorithm>

namespace mixer {

namespace key = storage::strip;

Mixer::Mixer(
    Settings &settings, QVXDevice &device, const MixerView &view, const SectionView &section)
    : m_context{settings, device, view, section}, m_fader(m_context), m_pan(m_context),
      m_switches(m_context), m_section(m_context), m_gainReduction(m_context)
{
}

void Mixer::selectClicked(const StripId &strip)
{
    const bool on = m_context.viewOf(strip).select->isChecked();
    m_switches.setSelected(strip, on);
    m_section.edit(on ? std::make_optional(strip) : std::nullopt);
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
    m_section.sendEq(strip);
}

void Mixer::compClicked(const StripId &strip)
{
    m_switches.setComp(strip, m_context.viewOf(strip).comp->isChecked());
    m_section.sendComp(strip);
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
        const bool solo = m_context.settings.read(track(left).key(), key::solo) ||
                          m_context.settings.read(track(left + 1).key(), key::solo);
        copyStrip(track(left), pair);
        m_switches.setSolo(pair, solo); // either side's
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
    m_section.showTitle();
}

void Mixer::showLink(const StripId &pair)
{
    const int left = channelNumber(pair.busKey);
    const PairView &view = m_context.view.pairs[static_cast<std::size_t>(left / 2)];
    view.pages->setCurrentIndex(m_context.isLinked(pair) ? 1 : 0);
}

/// Only one strip is selected; were more stored, the first is.
void Mixer::showSelection()
{
    const auto &strips = m_context.view.strips;
    const auto selected = std::find_if(strips.begin(), strips.end(), [this](const StripView &view) {
        return m_context.settings.read(view.id.key(), key::select);
    });
    for (const StripView &view : strips)
        m_switches.showSelected(
            view.id, selected != strips.end() && view.id.index() == selected->id.index());
    m_section.edit(selected != strips.end() ? std::make_optional(selected->id) : std::nullopt);
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
    showSelection();
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
    for (const StripView &view : m_context.view.strips) {
        if (view.id.kind == StripKind::Master) continue;
        m_switches.sendSolo(view.id);
        m_section.sendEq(view.id);
        m_section.sendComp(view.id);
    }
}

} // namespace mixer
