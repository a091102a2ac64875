#include "mixer/solorule.h"

#include "mixer/context.h"
#include "mixer/switchrule.h"
#include "storage/settings.h"

#include <QPushButton>

#include <algorithm>

namespace mixer {

namespace key = storage::strip;

void SoloRule::clicked(const StripId &strip)
{
    const bool on = m_context.viewOf(strip).solo->isChecked();
    if (on == m_context.settings.read(strip.key(), key::solo)) return;
    if (on)
        begin(strip);
    else
        end(strip);
}

bool &SoloRule::savedMute(const StripId &strip)
{
    return m_savedMutes[static_cast<std::size_t>(strip.index())];
}

bool SoloRule::othersSoloed(const StripId &strip) const
{
    const auto &strips = m_context.view.strips;
    return std::any_of(strips.begin(), strips.end(), [&](const StripView &other) {
        return other.solo && other.solo->isChecked() && other.id.key() != strip.key() &&
               m_context.isShown(other.id);
    });
}

bool SoloRule::isAnySoloed() const
{
    const auto &strips = m_context.view.strips;
    return std::any_of(strips.begin(), strips.end(), [this](const StripView &strip) {
        return strip.solo && strip.solo->isChecked() && m_context.isOnScreen(strip.id);
    });
}

void SoloRule::begin(const StripId &strip)
{
    if (!othersSoloed(strip)) {
        saveMutes();
        for (const StripView &other : m_context.view.strips)
            if (other.solo && other.id.key() != strip.key()) m_switches.setMute(other.id, true);
    }
    m_switches.setSolo(strip, true);
    m_switches.setMute(strip, false);
}

void SoloRule::saveMutes()
{
    const auto muted = [this](const StripId &strip) {
        return m_context.viewOf(strip).mute->isChecked();
    };
    for (int number = 1; number <= trackCount; ++number)
        savedMute(track(number)) = muted(track(number));
    for (int left = 1; left < trackCount; left += 2) {
        if (!m_context.isShown(pair(left))) continue;
        const bool pairMuted = muted(pair(left));
        for (const StripId &strip : {pair(left), track(left), track(left + 1)})
            savedMute(strip) = pairMuted;
    }
}

void SoloRule::end(const StripId &strip)
{
    m_switches.setSolo(strip, false);
    if (othersSoloed(strip)) {
        m_switches.setMute(strip, true);
        return;
    }
    restoreMutes();
    if (savedMute(strip)) m_switches.setMute(strip, true);
}

void SoloRule::restoreMutes()
{
    for (const StripView &view : m_context.view.strips)
        if (view.solo && !savedMute(view.id)) m_switches.setMute(view.id, false);
}

void SoloRule::link(const StripId &pair)
{
    const int left = channelNumber(pair.key());
    const auto stored = [this](const StripId &side, storage::SwitchKey switchKey) {
        return m_context.settings.read(side.key(), switchKey);
    };
    const bool leftSoloed = stored(track(left), key::solo);
    const bool rightSoloed = stored(track(left + 1), key::solo);
    for (const StripId &side : {track(left), track(left + 1)})
        m_switches.setSolo(side, false);
    m_switches.setSolo(pair, leftSoloed || rightSoloed);
    // The left channel's mute is then the one that the solo of the right has given it.
    if (rightSoloed && !leftSoloed) m_switches.setMute(pair, stored(track(left + 1), key::mute));
    savedMute(pair) = savedMute(track(left));
    savedMute(track(left + 1)) = savedMute(track(left));
}

void SoloRule::unlink(const StripId &pair)
{
    const int left = channelNumber(pair.key());
    const bool soloed = m_context.settings.read(pair.key(), key::solo);
    for (const StripId &side : {track(left), track(left + 1)}) {
        m_switches.setSolo(side, soloed);
        savedMute(side) = savedMute(pair);
    }
    m_switches.setSolo(pair, false);
}

} // namespace mixer
