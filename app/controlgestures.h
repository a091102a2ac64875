#pragma once

#include "app/mixerwidgets.h"
#include "mixer/mixer.h"
#include "widgets/gestures.h"

#include <QHash>
#include <QPointer>

class StepControl;

/// Performs the gestures made on faders, pan markers and knobs: by wheel, key, click, typed value
/// or screen reader. Drags arrive by the window's named slots instead. GUI thread only.
class ControlGestures : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the object.
    ControlGestures(
        mixer::Mixer &mixer, const storage::Store &store, const MixerWidgets &strips,
        const SectionWidgets &section, QWidget *window);

    /// Adds a control of another window for a knob of the edited strip.
    /// @param readout where the value editor opens; both live as long as their window
    void add(StepControl *control, mixer::ParameterId id, QWidget *readout);

    /// Opens the value editor over a control's readout.
    void edit(StepControl *control, const QString &typed = QString());
    /// The same for a strip's fader.
    void editFader(const mixer::StripId &strip) { edit(faderOf(strip)); }

    /// Returns whether the user holds the control of a value with the mouse.
    bool isHeld(const mixer::Adjustable &a) const;
    /// Returns whether the user holds any fader, pan, knob or handle with the mouse.
    bool isAnyHeld() const;
    /// Returns whether the user holds a knob or a handle of the edited strip with the mouse.
    bool isKnobHeld() const;

    /// Moves the focus to the same control of the visible strip on the left (-1) or right (1). Does
    /// nothing if the focus is not on a strip or the neighbour has no such control.
    void focusNeighbour(int direction);
    /// Enters the name of the next (1) or the previous (-1) visible strip.
    void editNeighboursName(const mixer::StripId &strip, int direction);

signals:
    /// A pan was changed by wheel, key or typing.
    void panStepped(int input);

private:
    /// A control and what it adjusts. A knob adjusts nothing while no strip is edited.
    struct Entry
    {
        std::function<std::optional<mixer::Adjustable>()> target;
        QWidget *readout;
        QWidget *window = nullptr; ///< of the readout; null for the panel's window
    };

    void add(StepControl *control, const Entry &entry, const mixer::Adjustable &sample);
    void addStrip(const StripWidgets &strip);
    void perform(StepControl *control, const gestures::Gesture &gesture);
    void adjust(const mixer::Adjustable &a, const gestures::Gesture &gesture);
    StepControl *faderOf(const mixer::StripId &strip) const;
    const StripWidgets *neighbour(const mixer::StripId &strip, int direction) const;

    mixer::Mixer &m_mixer;
    const storage::Store &m_store;
    const MixerWidgets &m_strips;
    QWidget *const m_window;
    QHash<StepControl *, Entry> m_entries;
};
