#include "mixer/rules.h"

namespace mixer {

namespace key = storage::strip;

namespace {

/// Calls `action` for every strip but the master.
template <typename Action>
void forSoloable(Action action)
{
    for (const StripId &strip : allStrips())
        if (!strip.isMaster()) action(strip);
}

/// Saves the mutes of all strips but the unlinked pairs. Of a linked pair, both channels save the
/// pair's mute.
void saveMutes(Transaction &t)
{
    const auto save = [&t](const StripId &strip, bool muted) {
        t.write(strip.group(), key::savedMute, muted);
    };
    forSoloable([&](const StripId &strip) {
        const bool muted = isOn(t.values(), strip, key::mute);
        if (strip.isMono()) save(strip, muted);
        if (!strip.isPair() || !isShown(t.values(), strip)) return;
        save(strip, muted);
        for (const int channel : channelsOf(strip))
            save(track(channel), muted);
    });
}

void begin(Transaction &t, const StripId &strip)
{
    if (!isAnySoloed(t.values(), strip)) {
        saveMutes(t);
        forSoloable([&](const StripId &other) {
            if (other != strip) t.write(other.group(), key::mute, true);
        });
    }
    t.write(strip.group(), key::solo, true);
    t.write(strip.group(), key::mute, false);
}

void end(Transaction &t, const StripId &strip)
{
    t.write(strip.group(), key::solo, false);
    if (isAnySoloed(t.values(), strip)) {
        t.write(strip.group(), key::mute, true);
        return;
    }
    forSoloable([&](const StripId &other) {
        if (!isOn(t.values(), other, key::savedMute)) t.write(other.group(), key::mute, false);
    });
    if (isOn(t.values(), strip, key::savedMute)) t.write(strip.group(), key::mute, true);
}

} // namespace

void setSolo(Transaction &t, const StripId &strip, bool on)
{
    if (on == isOn(t.values(), strip, key::solo)) return;
    on ? begin(t, strip) : end(t, strip);
}

void forgetSavedMutes(Transaction &t)
{
    forSoloable(
        [&t](const StripId &strip) { t.set(strip.group(), key::savedMute.key, QByteArray()); });
}

QByteArray savedMutes(const Values &values)
{
    QByteArray mutes;
    forSoloable([&](const StripId &strip) {
        const bool isSaved = !values.raw(strip.group(), key::savedMute.key).isNull();
        mutes += !isSaved ? '-' : isOn(values, strip, key::savedMute) ? '1' : '0';
    });
    return mutes;
}

void restoreSavedMutes(Transaction &t, const QByteArray &mutes)
{
    if (mutes.size() != stripCount - 1) return; // all but the master
    const char *mute = mutes.constData();
    forSoloable([&](const StripId &strip) {
        if (*mute != '-') t.write(strip.group(), key::savedMute, *mute == '1');
        ++mute;
    });
}

} // namespace mixer
