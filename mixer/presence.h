#pragma once

#include "mixer/gainreduction.h"
#include "mixer/identity.h"
#include "mixer/meters.h"
#include "mixer/retries.h"
#include "mixer/sender.h"
#include "mixer/wallclock.h"

#include <QObject>

#include <optional>

namespace mixer {

/// Follows the device: whether it is connected and answers, its meters, and the full send that is
/// due when it comes back. GUI thread only.
class Presence : public QObject
{
    Q_OBJECT

public:
    /// All arguments must outlive the object.
    Presence(const storage::Store &store, QVXDevice &device, Sender &sender, WallClock &clock);

    /// Checks the device, polls its meters and resends failed commands. Call it every 100 ms. While
    /// the whole state or a scene is being sent, only every seventh call does so.
    void tick();
    /// Asks the device for its identity during the next ticks.
    void askIdentity() { m_questions.begin(); }

    const Meters &meters() const { return m_meters; }
    void clearClips() { m_meters.clearClips(); }
    const GainReduction &gainReduction() const { return m_gainReduction; }

    /// Returns whether the device is connected and answers. A single failed request does not count.
    bool isAnswering() const { return m_answering; }
    /// Returns whether the device has refused a command every time that it was sent.
    bool isRefusing() const { return m_refusing; }
    /// Returns whether everything has been sent and no failed command is to be sent again. A bus
    /// option may still wait until the worker's pause of 10 ms is over.
    bool isSettled() const;

    /// Resets the facade and sends the whole state, because the device may hold any state.
    void sendEverything();

signals:
    /// The device is disconnected. Emitted once for each disconnection.
    void disconnected();
    /// The device is connected again after disconnected().
    void reconnected();
    /// The result of isAnswering() or isRefusing() has changed.
    void statusChanged();

private:
    bool checkPresence(bool wasAway);
    bool pollMeters();
    void setStatus(bool answering, bool refusing);

    const storage::Store &m_store;
    QVXDevice &m_device;
    Sender &m_sender;
    WallClock &m_clock;
    Meters m_meters;
    GainReduction m_gainReduction;
    Retries m_retries;
    IdentityQuestions m_questions;
    int m_ticks = 0;
    std::optional<qint64> m_lastTick;
    bool m_disconnected = false;
    bool m_lost = false; ///< meters failed or a transfer hung: the device may have restarted
    bool m_answering = true;
    bool m_refusing = false;
};

} // namespace mixer
