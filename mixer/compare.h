#pragma once

#include "mixer/mixer.h"
#include "mixer/section.h"

#include <QObject>

#include <optional>

namespace mixer {

/// Compares two states, A and B, of the edited strip's EQ and compressor. The active one is what
/// the store holds; the other one is held here until another strip is edited. Both are equal at
/// first. Switching is a change like any other, so store and device know nothing of the held state.
/// Undo of a switch makes the other side active again, with its state. GUI thread only.
class Compare : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the object.
    Compare(Mixer &mixer, const storage::Store &store);

    /// Returns whether B is active. A is active at first.
    bool isB() const { return m_isB; }
    /// Returns whether the two states differ.
    bool differ() const { return !(m_active == m_held); }

    /// Makes the other state active.
    void toggle();
    /// Makes the other state equal to the active one.
    void copy();
    /// Begins again with the stored state. Call it if the store was loaded anew.
    void restart();

signals:
    void changed(); ///< isB() or differ()

private:
    void follow(const storage::ChangeSet &changes);

    Mixer &m_mixer;
    const storage::Store &m_store;
    std::optional<StripId> m_strip;
    bool m_isB = false;
    SectionState m_active;
    SectionState m_held;
};

} // namespace mixer
