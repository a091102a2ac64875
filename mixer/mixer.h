#pragma once

#include "mixer/context.h"
#include "mixer/faderrule.h"
#include "mixer/fullsend.h"
#include "mixer/panrule.h"
#include "mixer/presence.h"
#include "mixer/sectionrule.h"
#include "mixer/solorule.h"
#include "mixer/switchrule.h"

namespace mixer {

/// The rules of the mixer: what the window's strip slots call. A rule stores the new value, shows
/// it and asks the device for it, and acts on the strip that it is given. GUI thread only.
class Mixer
{
public:
    /// All of them must outlive the object.
    Mixer(
        Settings &settings, QVXDevice &device, const MixerView &view, const SectionView &section,
        WallClock &clock);
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

    /// Links a pair: its strip takes the left channel's values, and the mono strips are left
    /// unmuted. Or parts it: both channels take the pair's. Phase, pan and names stay as they are.
    /// The device is told when all is copied.
    void setLinked(const StripId &pair, bool linked);
    void setName(const StripId &strip, const QString &name);

    /// The device's presence, its meters, and the selected strip's gain reduction. Every 100 ms.
    void tick() { m_presence.tick(m_section.edited()); }
    Presence &presence() { return m_presence; }

    /// Puts the mixer out of use, or into use again: a bypassed mixer shows no strip for editing,
    /// and "Bypass" where the strips' levels stand. Nothing is stored or sent.
    void setBypassed(bool bypassed);

    /// Puts the whole stored state on screen, the stored selection too, however it came about.
    void showAll();
    /// @name Asking the device for the whole stored state
    ///@{
    void sendFaders();
    void sendMutes();
    /// The rest, a portion a strip.
    std::vector<FullSend::Portion> stripPortions();
    ///@}

private:
    void showLink(const StripId &pair);
    void showName(const StripView &strip);
    void showSelection();
    void select(const StripId &strip, bool on);
    void sendStrip(const StripId &strip);
    void sendSides(const StripId &track);
    void copyStrip(const StripId &from, const StripId &to);

    void enableStrip(const StripView &strip, bool enabled);

    Context m_context;
    bool m_bypassed = false;
    FaderRule m_fader;
    PanRule m_pan;
    SwitchRule m_switches;
    SoloRule m_solo;
    SectionRule m_section;
    Presence m_presence;
};

} // namespace mixer
