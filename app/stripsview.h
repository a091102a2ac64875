#pragma once

#include "app/mixerwidgets.h"
#include "mixer/rules.h"
#include "storage/store.h"

#include <QObject>
#include <QTimer>

/// Shows the stored values of the strips. Follows the store's changes; showAll() shows all values
/// again. It computes nothing but the presentation. GUI thread only.
class StripsView : public QObject
{
    Q_OBJECT

public:
    /// Store and widgets must outlive the object.
    StripsView(const storage::Store &store, const MixerWidgets &widgets);

    /// Shows all stored values again.
    void showAll();
    /// Shows the switches of a strip, for a button that was clicked without an effect.
    void showSwitches(const mixer::StripId &strip);

    /// Shows which strips a recall keeps.
    void showSafe(const mixer::SafeStrips &safe);

    /// Disables all controls of the strips while the mixer is bypassed, and shows "Bypass" in place
    /// of the fader texts; the master's text stays.
    void setBypassed(bool bypassed);

    /// @name The pan text, which is shown while a pan knob is held
    ///@{
    /// Shows the pan text of an input, 1 to 16.
    void holdPan(int input);
    /// Hides the pan text of an input, 1 to 16.
    void releasePan(int input);
    /// Shows the pan text of an input, 1 to 16, for a second.
    void flashPan(int input);
    /// Hides all pan texts. For drags whose mouse release will not arrive.
    void releaseAllPans();
    ///@}

private:
    void show(const storage::ChangeSet &changes);
    void show(const mixer::StripId &strip, storage::Key key);
    void showStrip(const mixer::StripId &strip);
    void showFader(const mixer::StripId &strip);
    void showPan(int input);
    void showPhase(int input);
    void showSelection();
    void showLink(const mixer::StripId &pair);
    void showName(const mixer::StripId &strip);
    void nameControls(const mixer::StripId &strip) const;
    void enable(const StripWidgets &strip, bool enabled);
    void setPanTextVisible(int input, bool visible);
    QTimer &flashOf(int input) { return m_panFlashes[static_cast<std::size_t>(input - 1)]; }
    template <typename Action>
    void forBothSides(int input, Action action) const;

    const storage::Store &m_store;
    const MixerWidgets &m_widgets;
    bool m_bypassed = false;
    int m_heldPan = 0; ///< input whose pan knob is held, 0 for none
    std::array<QTimer, mixer::trackCount> m_panFlashes; ///< running while a pan text flashes
};
