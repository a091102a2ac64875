#pragma once

#include "mixer/drag.h"

namespace mixer {

struct Context;

/// What a pan knob does. A channel has two, in its mono strip and on its side of the pair; their
/// position is one, and is stored under both keys. So every operation takes the channel's mono
/// strip, whichever knob was touched. One knob is dragged at a time. GUI thread only.
class PanRule
{
public:
    explicit PanRule(Context &context) : m_context(context) {}

    void press(const StripId &track, const QPointF &pointer);
    void move(const StripId &track, const QPointF &pointer);
    void release(const StripId &track);
    /// Hides every pan text: the release of a knob that is held will not come.
    void releaseAll();
    /// Back to the centre.
    void reset(const StripId &track);
    /// By wheel or key: so many positions to the right.
    void step(const StripId &track, int positions);

    void show(const StripId &track);
    void send(const StripId &track);

private:
    std::uint16_t stored(const StripId &track) const;
    void set(const StripId &track, std::uint16_t position);
    void showText(const StripId &track, bool visible);
    template <typename Action>
    void forBothViews(const StripId &track, Action action) const;

    Context &m_context;
    Drag m_drag;
};

} // namespace mixer
