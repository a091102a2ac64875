#pragma once

#include "mixer/strip.h"

#include <array>

namespace mixer {

struct Context;
class SwitchRule;

/// Solo: while any strip is soloed, the others are muted; when the last solo ends, the mutes of
/// before the first one are back. The master takes no part. Strips on a page that is not shown keep
/// their values, and their buttons do not count. GUI thread only.
class SoloRule
{
public:
    SoloRule(Context &context, SwitchRule &switches) : m_context(context), m_switches(switches) {}

    /// A strip's solo button has its new state. Nothing happens when that is stored already.
    void clicked(const StripId &strip);

    /// Whether a strip on screen is soloed.
    bool isAnySoloed() const;

    /// Forgets the mutes of before the first solo. When the last solo ends then, nothing is muted.
    void forgetMutes() { m_savedMutes.fill(false); }

    /// A pair's solo and saved mute become those of its channels, soloed when either is: to be
    /// called when their other values were copied, their mutes still stand, and no page sends. The
    /// mono strips let go of their solo.
    void link(const StripId &pair);
    /// The same back to both channels.
    void unlink(const StripId &pair);

private:
    static constexpr int switchable = trackCount + pairCount;

    bool othersSoloed(const StripId &strip) const;
    void begin(const StripId &strip);
    void end(const StripId &strip);
    void saveMutes();
    void restoreMutes();
    bool &savedMute(const StripId &strip);

    Context &m_context;
    SwitchRule &m_switches;
    std::array<bool, switchable> m_savedMutes{}; ///< by StripId::index()
};

} // namespace mixer
