#include "mixer/rules.h"

namespace mixer {

namespace key = storage::strip;

namespace {

/// Copies all values that a pair does not keep for each channel.
void copyStrip(Transaction &t, const StripId &from, const StripId &to)
{
    for (const storage::SwitchKey &copied : {key::eq, key::comp, key::mute, key::eqLowCut})
        t.write(to.group(), copied, isOn(t.values(), from, copied));
    setFader(t, to, faderPosition(t.values(), from));
    for (const Parameter &parameter : parameters()) {
        const Value value = knobValue(t.values(), from, parameter);
        t.write(to.group(), parameter.keys, value.position, value.text);
    }
}

/// Solos the pair if either channel is soloed. The left channel's saved mute becomes that of the
/// pair and of the right channel.
void moveSoloToPair(Transaction &t, const StripId &pair)
{
    const StripId left = track(pair.number);
    const StripId right = track(pair.number + 1);
    const bool leftSoloed = isOn(t.values(), left, key::solo);
    const bool rightSoloed = isOn(t.values(), right, key::solo);
    t.write(pair.group(), key::solo, leftSoloed || rightSoloed);
    // The solo of the right channel has muted the left one, so the right channel's mute counts.
    if (rightSoloed && !leftSoloed)
        t.write(pair.group(), key::mute, isOn(t.values(), right, key::mute));
    const QByteArray saved = t.values().raw(left.group(), key::savedMute.key);
    t.set(pair.group(), key::savedMute.key, saved);
    t.set(right.group(), key::savedMute.key, saved);
}

void link(Transaction &t, const StripId &pair)
{
    copyStrip(t, track(pair.number), pair);
    moveSoloToPair(t, pair);
    for (const int channel : channelsOf(pair)) {
        t.write(track(channel).group(), key::solo, false);
        t.write(track(channel).group(), key::mute, false);
    }
    select(t, pair, true);
}

void unlink(Transaction &t, const StripId &pair)
{
    const bool soloed = isOn(t.values(), pair, key::solo);
    const QByteArray saved = t.values().raw(pair.group(), key::savedMute.key);
    for (const int channel : channelsOf(pair)) {
        copyStrip(t, pair, track(channel));
        t.write(track(channel).group(), key::solo, soloed);
        t.set(track(channel).group(), key::savedMute.key, saved);
    }
    t.write(pair.group(), key::solo, false);
    select(t, track(pair.number), true);
}

} // namespace

void setLinked(Transaction &t, const StripId &pair, bool linked)
{
    if (isLinked(t.values(), pair) == linked) return;
    t.write(pair.group(), key::link, linked);
    linked ? link(t, pair) : unlink(t, pair);
}

} // namespace mixer
