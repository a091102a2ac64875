#include "mixer/compare.h"

namespace mixer {

Compare::Compare(Mixer &mixer, const storage::Store &store) : m_mixer(mixer), m_store(store)
{
    connect(&store, &storage::Store::committed, this, &Compare::follow);
    restart();
}

void Compare::toggle()
{
    if (m_mixer.edited() == m_strip) m_mixer.switchCompared(m_held);
}

void Compare::copy()
{
    m_held = m_active;
    emit changed();
}

void Compare::restart()
{
    m_strip = m_mixer.edited();
    m_isB = false;
    if (m_strip) m_active = m_held = SectionState::of(m_store.values(), *m_strip);
    emit changed();
}

void Compare::follow(const storage::ChangeSet &changes)
{
    const std::optional<StripId> strip = m_mixer.edited();
    if (!strip) return; // the strip may be selected again, or the bypass end
    if (strip != m_strip) return restart();
    const SectionState before = m_active;
    m_active = SectionState::of(m_store.values(), *strip);
    // Also if undo or redo has replayed a switch.
    if (changes.contains(strip->group(), storage::strip::comparedB.key)) {
        m_held = before;
        m_isB = !m_isB;
    }
    emit changed();
}

} // namespace mixer
