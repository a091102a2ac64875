#pragma once

#include "mixer/gainreductionrule.h"
#include "mixer/meterrule.h"

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
    explicit Presence(Context &context);

    /// @param selected the strip whose gain reduction is shown
    void tick(const std::optional<StripId> &selected);

    /// Whether the device answered at the last tick.
    bool isAnswering() const { return m_answering; }

signals:
    /// The device is gone; once for each time that it goes.
    void disconnected();
    /// It is back after that.
    void reconnected();
    /// What the device holds is not known: everything is to be sent to it, once. For commands that
    /// go on failing not again before the last send is through.
    void stateWanted();
    /// isAnswering() has changed.
    void answeringChanged(bool answering);

private:
    bool checkPresence();
    bool pollMeters();
    void resendWhatFailed();
    void setAnswering(bool answering);

    Context &m_context;
    MeterRule m_meters;
    GainReductionRule m_gainReduction;
    bool m_disconnected = false;
    bool m_unsent = false; ///< a command or the meters failed since all was sent
    int m_ticksToResend = 0;
    bool m_answering = true;
};

} // namespace mixer
