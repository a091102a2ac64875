#pragma once

#include "mixer/gainreductionrule.h"
#include "mixer/meterrule.h"
#include "mixer/retries.h"
#include "mixer/wallclock.h"

#include <QObject>

#include <optional>

namespace mixer {

struct Context;

/// The panel's life with its device, every 100 ms: whether it is there, its meters, and what is to
/// be done when it went or came back. GUI thread only.
class Presence : public QObject
{
    Q_OBJECT

public:
    /// @param clock must outlive the object
    Presence(Context &context, WallClock &clock);

    /// @param selected the strip whose gain reduction is shown
    void tick(const std::optional<StripId> &selected);

    /// Whether the device is there and answers. A single request that failed does not count.
    bool isAnswering() const { return m_answering; }
    /// Whether it refuses a command for good, however often it is sent.
    bool isRefusing() const { return m_refusing; }

    /// Everything is about to be sent anew.
    void forgetFailures() { m_retries.clear(); }

signals:
    /// The device is gone; once for each time that it goes.
    void disconnected();
    /// It is back after that.
    void reconnected();
    /// What the device holds is not known: everything is to be sent to it, once.
    void stateWanted();
    /// The device, which takes everything else, has lost the value of a bus option.
    void busOptionWanted(QVXDevice::Kind option);
    /// isAnswering() or isRefusing() has changed.
    void statusChanged();

private:
    bool checkPresence(bool wasAway);
    bool pollMeters();
    void wantState();
    void setStatus(bool answering, bool refusing);

    Context &m_context;
    WallClock &m_clock;
    MeterRule m_meters;
    GainReductionRule m_gainReduction;
    Retries m_retries;
    std::optional<qint64> m_lastTick;
    bool m_disconnected = false;
    bool m_lost = false; ///< the meters have failed for so long that the device may have restarted
    bool m_answering = true;
    bool m_refusing = false;
};

} // namespace mixer
