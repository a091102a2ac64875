#include "mixer/mixer.h"

#include "storage/settings.h"
#include "widgets/fader.h"
#include "widgets/pancontrol.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>

#include <algorithm>
#include <initializer_list>

namespace mixer {

namespace key = storage::strip;

Mixer::Mixer(
    Settings &settings, QVXDevice &device, const MixerView &view, const SectionView &section,
    WallClock &clock)
    : m_context{settings, device, view, section}, m_fader(m_context), m_pan(m_context),
      m_switches(m_context), m_solo(m_context, m_switches), m_section(m_context),
      m_presence(m_context, clock)
{
}

void Mixer::selectClicked(const StripId &strip)
{
    select(strip, m_context.viewOf(strip).select->isChecked());
}

void Mixer::select(const StripId &strip, bool on)
{
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
    m_solo.clicked(strip);
}

void Mixer::muteClicked(const StripId &strip)
{
    m_switches.setMute(strip, m_context.viewOf(strip).mute->isChecked());
}

void Mixer::setLinked(const StripId &pair, bool linked)
{
    if (m_context.isLinked(pair) == linked) return;
    const int left = channelNumber(pair.key());
    const std::array<StripId, 2> sides = {track(left), track(left + 1)};
    // From here until the page is exchanged none of the three strips sends.
    m_context.settings.write(pair.key(), key::link, linked);
    if (linked) {
        copyStrip(sides[0], pair);
        m_solo.link(pair);
        for (const StripId &side : sides)
            m_switches.setMute(side, false);
    } else {
        for (const StripId &side : sides)
            copyStrip(pair, side);
        m_solo.unlink(pair);
    }
    select(linked ? pair : sides[0], true);
    showLink(pair);
    for (const StripId &strip : {pair, sides[0], sides[1]})
        sendStrip(strip);
}

void Mixer::copyStrip(const StripId &from, const StripId &to)
{
    const auto stored = [&](storage::SwitchKey switchKey) {
        return m_context.settings.read(from.key(), switchKey);
    };
    m_switches.setEq(to, stored(key::eq));
    m_switches.setComp(to, stored(key::comp));
    m_switches.setMute(to, stored(key::mute));
    m_fader.copy(from, to);
    m_section.copy(from, to);
}

void Mixer::sendStrip(const StripId &strip)
{
    // A strip that falls silent does so before its level changes, others after.
    const bool muted = m_context.settings.read(strip.key(), key::mute);
    if (muted) m_switches.sendMute(strip);
    m_fader.send(strip);
    if (!muted) m_switches.sendMute(strip);
    m_switches.sendSolo(strip);
    m_section.sendEq(strip);
    m_section.sendComp(strip);
}

void Mixer::setName(const StripId &strip, const QString &name)
{
    m_context.settings.write(strip.key(), key::name, name);
    m_section.showTitle();
}

void Mixer::showLink(const StripId &pair)
{
    m_context.pagesOf(pair)->setCurrentIndex(
        m_context.isLinked(pair) ? stereoPageIndex : monoPageIndex);
}

/// Only one strip is selected; were more stored, the first is.
void Mixer::showSelection()
{
    const auto &strips = m_context.view.strips;
    const auto selected = std::find_if(strips.begin(), strips.end(), [this](const StripView &view) {
        return m_context.settings.read(view.id.key(), key::select);
    });
    if (!m_bypassed && selected != strips.end() && !m_context.isShown(selected->id)) {
        // It was left on a page that is not shown; its place on the other page is meant.
        const int number = channelNumber(selected->id.key());
        select(selected->id.isMono() ? pairOf(number) : track(number), true);
        return;
    }
    for (const StripView &view : strips)
        m_switches.showSelected(
            view.id, selected != strips.end() && view.id.index() == selected->id.index());
    const bool edited = selected != strips.end() && !m_bypassed;
    m_section.edit(edited ? std::make_optional(selected->id) : std::nullopt);
    if (m_bypassed) m_context.section.title->setText(QStringLiteral("Mixer bypassed"));
}

void Mixer::showAll()
{
    const bool soloed = m_solo.isAnySoloed();
    for (const StripView &view : m_context.view.strips) {
        m_fader.show(view.id);
        m_switches.show(view.id);
        if (view.id.isMono()) m_pan.show(view.id);
        if (view.id.kind == StripKind::Pair) showLink(view.id);
        if (view.name) showName(view);
    }
    // The mutes of before the first solo live on from one solo to the next.
    if (!soloed || !m_solo.isAnySoloed()) m_solo.forgetMutes();
    setBypassed(m_bypassed); // the texts are now those of a mixer in use
}

void Mixer::setBypassed(bool bypassed)
{
    m_bypassed = bypassed;
    for (const StripView &view : m_context.view.strips) {
        enableStrip(view, !bypassed);
        if (view.id.kind == StripKind::Master) continue;
        if (bypassed)
            view.faderText->setText(QStringLiteral("Bypass"));
        else
            m_fader.show(view.id);
    }
    for (const PairView &pair : m_context.view.pairs) {
        pair.linkOn->setEnabled(!bypassed);
        pair.linkOff->setEnabled(!bypassed);
    }
    showSelection();
}

void Mixer::enableStrip(const StripView &strip, bool enabled)
{
    for (QWidget *control : std::initializer_list<QWidget *>{
             strip.select, strip.eq, strip.comp, strip.solo, strip.mute, strip.faderKnob,
             strip.name, strip.sides[0].phase, strip.sides[0].panKnob, strip.sides[1].phase,
             strip.sides[1].panKnob})
        if (control) control->setEnabled(enabled);
}

void Mixer::showName(const StripView &strip)
{
    strip.name->setText(m_context.settings.read(strip.id.key(), key::name));
    strip.name->setCursorPosition(0); // of a long name the beginning is seen
}

void Mixer::sendFaders()
{
    for (const StripView &view : m_context.view.strips)
        m_fader.send(view.id);
}

void Mixer::sendMutes()
{
    for (const StripView &view : m_context.view.strips)
        m_switches.sendMute(view.id);
}

std::vector<FullSend::Portion> Mixer::stripPortions()
{
    std::vector<FullSend::Portion> portions;
    for (const StripView &view : m_context.view.strips) {
        if (view.id.kind == StripKind::Master) continue;
        portions.emplace_back([this, id = view.id] {
            if (id.isMono()) sendSides(id);
            sendStrip(id);
        });
    }
    return portions;
}

/// What a channel keeps for itself, linked or not.
void Mixer::sendSides(const StripId &track)
{
    m_pan.send(track);
    m_switches.sendPhase(track);
}

} // namespace mixer
