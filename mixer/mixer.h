#pragma once

#include "mixer/drag.h"
#include "mixer/rules.h"
#include "mixer/sender.h"

#include <QObject>

#include <optional>

namespace mixer {

/// What the user's gestures do: each becomes one transaction on the store, by the rules. The mixer
/// knows no widget; what changes is told by the store. GUI thread only.
///
/// While the mixer is bypassed no gesture on a strip or knob does anything.
class Mixer : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the object.
    Mixer(storage::Store &store, Sender &sender);

    /// The strip that is shown for editing; none while there is none, or the mixer is bypassed.
    std::optional<StripId> edited() const { return editedStrip(m_store.values()); }

    /// @name Drags
    /// Pointers are in coordinates that stay where they are while the control moves. A drag goes on
    /// from the stored position, whoever has changed it meanwhile.
    ///@{
    void pressFader(const StripId &strip, const QPointF &pointer);
    void moveFader(const StripId &strip, const QPointF &pointer);
    void pressPan(int input, const QPointF &pointer);
    void movePan(int input, const QPointF &pointer);
    void pressKnob(ParameterId id, const QPointF &pointer);
    /// Counts only after a press on the same knob, while the same strip is edited.
    void moveKnob(ParameterId id, const QPointF &pointer);
    ///@}

    /// @name Back to the default
    ///@{
    void resetFader(const StripId &strip);
    void resetPan(int input);
    void resetKnob(ParameterId id);
    ///@}

    /// @name Steps by wheel or key
    ///@{
    void stepFader(const StripId &strip, int positions); ///< down
    void stepPan(int input, int positions);              ///< to the right
    void stepKnob(ParameterId id, int steps);            ///< up, each to another text
    ///@}

    /// @name Switches, with the state that their button has now
    ///@{
    void setPhase(int input, bool on);
    void setEq(const StripId &strip, bool on);
    void setComp(const StripId &strip, bool on);
    void setSolo(const StripId &strip, bool on);
    void setMute(const StripId &strip, bool on);
    void select(const StripId &strip, bool on);
    void setLinked(const StripId &pair, bool linked);
    void setLowCut(bool on); ///< of the edited strip
    ///@}

    void setName(const StripId &strip, const QString &name);

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
    void recall(const Values &scene, const QString &title);
    void initialize();
    ///@}

signals:
    /// The mixer's controls are to rest, or to be used again; nothing is sent or stored yet.
    void bypassChanging(bool bypassed);

private:
    struct Grab
    {
        ParameterId id;
        StripId strip;
    };

    template <typename Rule>
    void change(const QString &title, const QByteArray &mergeKey, Rule rule);
    template <typename Rule>
    void changeStrip(const StripId &strip, const char *what, const QByteArray &mergeKey, Rule rule);
    void dragFader(const StripId &strip, int position, const QByteArray &mergeKey);
    void dragPan(int input, int position, const QByteArray &mergeKey);
    void turnKnob(ParameterId id, int position, const QByteArray &mergeKey);
    void startDrag(const QPointF &pointer);
    QByteArray dragKey() const;

    const Values &values() const { return m_store.values(); }

    storage::Store &m_store;
    Sender &m_sender;
    Pointer m_pointer;          ///< at the last event of the drag
    int m_drags = 0;            ///< how many there have been
    std::optional<Grab> m_grab; ///< of a knob
};

} // namespace mixer
