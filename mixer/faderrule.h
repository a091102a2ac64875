#pragma once

#include "mixer/drag.h"

namespace mixer {

struct Context;

/// What a fader does: the drag, its text, its stored pair of keys, and what the device is sent.
/// One fader is dragged at a time. GUI thread only.
class FaderRule
{
public:
    explicit FaderRule(Context &context) : m_context(context) {}

    void press(const StripId &strip, const QPointF &pointer);
    void move(const StripId &strip, const QPointF &pointer);
    /// Back to 0 dB.
    void reset(const StripId &strip);
    /// By wheel or key: so many positions down.
    void step(const StripId &strip, int positions);

    /// Gives a strip the level of another one.
    void copy(const StripId &from, const StripId &to);
    /// Puts the stored level on screen.
    void show(const StripId &strip);
    /// Asks the device for the stored level, unless the strip is not shown.
    void send(const StripId &strip);

private:
    std::uint16_t stored(const StripId &strip) const;
    void set(const StripId &strip, std::uint16_t position);

    Context &m_context;
    Drag m_drag;
};

} // namespace mixer
