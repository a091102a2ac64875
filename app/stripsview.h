#pragma once

#include "app/mixerwidgets.h"
#include "storage/store.h"

#include <QObject>
#include <QTimer>

/// Shows the strips as they are stored: each value when it has changed, all when asked to. It
/// computes nothing but the presentation. GUI thread only.
class StripsView : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the object.
    StripsView(const storage::Store &store, const MixerWidgets &widgets);

    void showAll();

    /// Lets the controls rest while the mixer is bypassed, and shows "Bypass" in place of levels.
    void setBypassed(bool bypassed);

    /// @name The pan text, which is shown while a knob is held
    ///@{
    void holdPan(int input);
    void releasePan(int input);
    /// The release of a knob that is held will not come.
    void releaseAllPans();
    ///@}

private:
    void show(const storage::ChangeSet &changes);
    void show(const mixer::StripId &strip, storage::Key key);
    void showStrip(const mixer::StripId &strip);
    void showFader(const mixer::StripId &strip);
    void showPan(int input);
    void showPhase(int input);
    void showSwitches(const mixer::StripId &strip);
    void showSelection();
    void showLink(const mixer::StripId &pair);
    void showName(const mixer::StripId &strip);
    void enable(const StripWidgets &strip, bool enabled);
    void setPanTextVisible(int input, bool visible);
    template <typename Action>
    void forBothSides(int input, Action action) const;

    const storage::Store &m_store;
    const MixerWidgets &m_widgets;
    bool m_bypassed = false;
};
