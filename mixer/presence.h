#pragma once

#include "mixer/gainreduction.h"
#include "mixer/meters.h"
#include "mixer/retries.h"
#include "mixer/sender.h"
#include "mixer/wallclock.h"

#include <QObject>

#include <optional>

namespace mixer {

/// The panel's life with its device, every 100 ms: whether it is there, its meters, and what is to
/// be done when it went or came back. GUI thread only.
class Presence : public QObject
{
    Q_OBJECT

public:
    /// All of them must outlive the object.
    Presence(const storage::Store &store, QVXDevice &device, Sender &sender, WallClock &clock);

    void tick();

    const Meters &meters() const { return m_meters; }
    const GainReduction &gainReduction() const { return m_gainReduction; }

    /// Whether the device is there and answers. A single request that failed does not count.
    bool isAnswering() const { return m_answering; }
    /// Whether it refuses a command for good, however often it is sent.
    bool isRefusing() const { return m_refusing; }

    /// Sends everything anew, to a device that may hold anything.
    void sendEverything();

signals:
    /// The device is gone; once for each time that it goes.
    void disconnected();
    /// It is back after that.
    void reconnected();
    /// isAnswering() or isRefusing() has changed.
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
    int m_ticks = 0;
    std::optional<qint64> m_lastTick;
    bool m_disconnected = false;
    bool m_lost = false; ///< the meters have failed for so long that the device may have restarted
    bool m_answering = true;
    bool m_refusing = false;
};

} // namespace mixer
