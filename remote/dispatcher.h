#pragma once

#include "mixer/mixer.h"
#include "mixer/presence.h"
#include "remote/addresses.h"

#include <functional>
#include <optional>

namespace remote {

/// What remote control needs of the window. The functions that do something return a sentence that
/// says why it was not done, or an empty text.
struct Panel
{
    /// Returns whether the user holds the control with the mouse.
    std::function<bool(const mixer::Adjustable &)> isHeld;
    std::function<bool()> isAnyHeld; ///< whether the user holds any control with the mouse
    /// Returns whether the user holds a control that belongs to the edited strip: a knob of the
    /// editing area or a handle of a curve.
    std::function<bool()> isKnobHeld;
    std::function<int()> currentScene; ///< 1 to 10, or 0 for none
    std::function<QString(int slot)> recallScene;
    std::function<QString(int slot)> saveScene;
    std::function<QString()> undo;
    std::function<QString()> redo;
};

/// Performs messages: reads and sets values of the mixer by the same gestures as the window. It
/// knows no client. GUI thread only.
class Dispatcher
{
public:
    /// All references must outlive the object.
    Dispatcher(
        const storage::Store &store, mixer::Mixer &mixer, const mixer::Presence &presence,
        const Panel &panel);

    /// What came of a message.
    struct Outcome
    {
        std::optional<Argument> value; ///< the answer, at the message's own address
        QString error;                 ///< one sentence; empty if the message was performed
        const Address *address = nullptr;
        /// The client wants a subscription to begin (1) or to end (0), or to begin for this port of
        /// its computer.
        std::optional<int> subscribe;
    };
    Outcome perform(const Message &message);

    /// Returns the value of an address that has one.
    Argument valueOf(const Address &address) const;

private:
    void write(Outcome &outcome, const Argument &argument);
    QString refusal(const Address &address) const;
    bool isShown(const Address &address, double number) const;
    bool disturbsHeld(const Address &address, int choice) const;
    QString set(const Address &address, double number);
    void setStrip(const Address &address, bool on);
    void adjust(const Address &address, double number);
    QString setText(const Address &address, const Argument &argument);
    float levelOf(const Address &address) const;

    const storage::Values &values() const { return m_store.values(); }

    const storage::Store &m_store;
    mixer::Mixer &m_mixer;
    const mixer::Presence &m_presence;
    const Panel m_panel;
};

} // namespace remote
