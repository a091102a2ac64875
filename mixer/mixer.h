#pragma once

#include "mixer/adjustable.h"
#include "mixer/rules.h"
#include "mixer/section.h"
#include "mixer/sender.h"
#include "mixer/stripclip.h"

#include <QObject>
#include <QPointF>

#include <optional>
#include <vector>

namespace mixer {

/// Turns each gesture of the user into one transaction on the store, by the rules. The mixer knows
/// no widget; the store tells its views what has changed. GUI thread only.
///
/// While the mixer is bypassed, gestures on strips and knobs do nothing.
class Mixer : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the object.
    Mixer(storage::Store &store, Sender &sender);

    /// Returns the strip that is shown for editing. There is none while no strip is selected or the
    /// mixer is bypassed.
    std::optional<StripId> edited() const { return editedStrip(m_store.values()); }
    /// Returns a knob of the edited strip, or nothing if no strip is edited.
    std::optional<Adjustable> editedKnob(ParameterId id) const;

    /// While an object exists, gestures come from elsewhere than the window. The titles of their
    /// steps begin with the name of where. Gestures that follow each other within a second are one
    /// step, also those on several controls, so that no flood of them fills the history. Linking
    /// and recalling are steps of their own.
    class Elsewhere
    {
    public:
        Elsewhere(Mixer &mixer, const QString &where) : m_mixer(mixer) { m_mixer.m_where = where; }
        ~Elsewhere() { m_mixer.m_where.clear(); }
        Elsewhere(const Elsewhere &) = delete;
        Elsewhere &operator=(const Elsewhere &) = delete;

    private:
        Mixer &m_mixer;
    };
    /// Returns a title with the name of where the gesture comes from: "Remote: Save scene 3".
    QString titled(const QString &title) const;

    /// @name Drags
    /// A drag continues from the stored position, even if something else has changed it meanwhile.
    /// Moves count only after a press on the same control.
    ///@{
    /// @param pointer in coordinates that do not move with the control
    void press(const Adjustable &a, const QPointF &pointer);
    /// @param fine one position for every four pixels instead of one a pixel
    void move(const Adjustable &a, const QPointF &pointer, bool fine = false);
    void pressKnob(ParameterId id, const QPointF &pointer); ///< of the edited strip
    void moveKnob(ParameterId id, const QPointF &pointer, bool fine = false);
    void resetKnob(ParameterId id);
    ///@}

    /// A step of one of several knobs that change together.
    struct KnobStep
    {
        ParameterId id;
        int step;
    };
    /// @name Drags of several knobs of the edited strip at once
    /// The moves after a press are one step for undo. They end when another strip is edited.
    ///@{
    void pressHandle();
    /// @param what names the handle: "low band"
    void moveHandle(const char *what, const std::vector<KnobStep> &knobs);
    ///@}

    /// @name Other gestures on a fader, pan marker or knob
    ///@{
    void step(const Adjustable &a, int steps);      ///< see mixer::stepped()
    void shift(const Adjustable &a, int positions); ///< see mixer::shifted()
    void toLowest(const Adjustable &a);
    /// Faders and make-up gain stop at their default first, because the highest value is loud.
    void toHighest(const Adjustable &a);
    void reset(const Adjustable &a);
    /// Moves the control to the value of a position within its range. A control that has the value
    /// already stays, because several positions can have the same value.
    void setPosition(const Adjustable &a, int position);
    ///@}

    /// @name Switches, with the state that their button has now
    ///@{
    void setPhase(int input, bool on);
    /// EQ and compressor also select the strip.
    void setEq(const StripId &strip, bool on);
    void setComp(const StripId &strip, bool on);
    void setSolo(const StripId &strip, bool on);
    void soloAlone(const StripId &strip); ///< ends the solo of all other strips
    void setMute(const StripId &strip, bool on);
    void select(const StripId &strip, bool on);
    void setLinked(const StripId &pair, bool linked);
    void setLowCut(const StripId &strip, bool on);
    void setLowCut(bool on); ///< of the edited strip
    ///@}

    /// Changes of a name after one startNaming() are one step for undo.
    void startNaming() { ++m_sessions; }
    void setName(const StripId &strip, const QString &name);

    /// @name Whole strips
    /// The strip keeps its name, mute, solo, link and selection.
    ///@{
    void paste(const StripClip &clip, const StripId &strip, ClipPart part);
    void reset(const StripId &strip, ClipPart part);
    ///@}

    /// @name EQ and compressor of the edited strip
    ///@{
    /// Replaces them by the state that is compared with them. A run of switches is one step for
    /// undo. See Compare.
    void switchCompared(const SectionState &other);
    /// Turns the knobs to a preset's; the switches stay. Returns the knobs that have turned.
    std::vector<ParameterId> applyPreset(const QString &name, const KnobPositions &knobs);
    ///@}

    /// @name Outputs
    ///@{
    /// output 1 to 8; source 0 to 9, any other does nothing.
    void setLineOut(int output, int source);
    /// The bus options are sent before they are stored. contract: this order.
    void setStereoBus(bool on);
    /// First of all bypassChanging() is told.
    void setTrueBypass(bool on);
    ///@}

    /// @name Everything
    ///@{
    void recall(const Values &scene, const QString &title, const SafeStrips &safe = {});
    void initialize();
    ///@}

signals:
    /// The mixer's controls are to rest, or to be used again; nothing is sent or stored yet.
    void bypassChanging(bool bypassed);

private:
    template <typename Rule>
    void change(const QString &title, const QByteArray &mergeKey, Rule rule);
    /// Makes a change that is always a step of its own.
    template <typename Rule>
    void changeAlone(const QString &title, Rule rule);
    template <typename Rule>
    void changeStrip(const StripId &strip, const char *what, const QByteArray &mergeKey, Rule rule);
    void adjust(const Adjustable &a, int position, const QByteArray &mergeKey);
    QByteArray sessionKey(const char *what) const;

    const Values &values() const { return m_store.values(); }

    storage::Store &m_store;
    Sender &m_sender;
    std::optional<Adjustable> m_grab; ///< pressed last
    std::optional<StripId> m_handled; ///< the strip whose handle was pressed last
    QPointF m_pointer;                ///< at the last event of the drag
    QPointF m_travelled;              ///< the pointer, with fine moves made smaller
    QString m_where;                  ///< see Elsewhere; empty for the window
    int m_sessions = 0;               ///< drags and edits of names so far
};

} // namespace mixer
