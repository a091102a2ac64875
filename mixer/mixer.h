#pragma once

#include "mixer/context.h"
#include "mixer/faderrule.h"
#include "mixer/gainreductionrule.h"
#include "mixer/panrule.h"
#include "mixer/sectionrule.h"
#include "mixer/switchrule.h"

namespace mixer {

/// The rules of the mixer: what the window's strip slots call. A rule stores the new value, shows
/// it and asks the device for it, and acts on the strip that it is given. GUI thread only.
class Mixer
{
public:
    /// All of them must outlive the object.
    Mixer(Settings &settings, QVXDevice &device, const MixerView &view, const SectionView &section);
    Mixer(const Mixer &) = delete;
    Mixer &operator=(const Mixer &) = delete;

    FaderRule &fader() { return m_fader; }
    PanRule &pan() { return m_pan; }
    SectionRule &section() { return m_section; }

    /// @name Clicks
    /// The button has its new state already.
    ///@{
    void selectClicked(const StripId &strip);
    void phaseClicked(const StripId &track);
    /// The same of the button on the pair's side.
    void pairPhaseClicked(const StripId &track);
    void eqClicked(const StripId &strip);
    void compClicked(const StripId &strip);
    void soloClicked(const StripId &strip);
    void muteClicked(const StripId &strip);
    ///@}

    /// Links a pair or parts it again: the other page is shown, with the level, mute and solo of
    /// the page before, and sent.
    void setLinked(const StripId &pair, bool linked);
    void setName(const StripId &strip, const QString &name);

    /// Fetches the gain reduction of the selected strip and moves its bar. Every 100 ms.
    void pollGainReduction() { m_gainReduction.poll(m_section.edited()); }

    /// Puts the whole stored state on screen, the stored selection too.
    void showAll();
    /// Asks the device for the whole stored state: faders first, then mutes, then the rest.
    void sendAll();

private:
    void showLink(const StripId &pair);
    void showName(const StripView &strip);
    void showSelection();
    void copyStrip(const StripId &from, const StripId &to);

    Context m_context;
    FaderRule m_fader;
    PanRule m_pan;
    SwitchRule m_switches;
    SectionRule m_section;
    GainReductionRule m_gainReduction;
};

} // namespace mixer
