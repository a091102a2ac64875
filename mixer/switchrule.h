#pragma once

#include "mixer/strip.h"

namespace mixer {

struct Context;

/// What the toggles of a strip do. Each takes its button's state, stores it and tells the device.
/// GUI thread only.
class SwitchRule
{
public:
    explicit SwitchRule(Context &context) : m_context(context) {}

    /// Phase is kept for the channel, and its buttons in the mono strip and on the pair's side
    /// always agree. So it takes the channel's mono strip, whichever button was clicked.
    void setPhase(const StripId &track, bool on);
    void setMute(const StripId &strip, bool on);
    void setSolo(const StripId &strip, bool on);
    void setEq(const StripId &strip, bool on);
    void setComp(const StripId &strip, bool on);
    /// Only one strip is selected at a time.
    void setSelected(const StripId &strip, bool on);

    /// Puts the stored states of a strip on screen, but for the selection.
    void show(const StripId &strip);
    /// Gives a strip the look of the selected one, or takes it away. The master has none.
    void showSelected(const StripId &strip, bool selected);
    /// Ask the device for the stored state, unless the strip is not shown.
    void sendMute(const StripId &strip);
    void sendSolo(const StripId &strip);
    void sendPhase(const StripId &track);

private:
    void showPhase(const StripId &track);
    void unselectOthers(const StripId &strip);

    Context &m_context;
};

} // namespace mixer
