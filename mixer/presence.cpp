#include "mixer/presence.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"

namespace mixer {
namespace {

// All in milliseconds.
constexpr qint64 tickInterval = 100;
constexpr qint64 lateTick = 1000;        // the device may have restarted unnoticed meanwhile
constexpr qint64 hangingTransfer = 2000; // a transfer that takes longer will hardly ever end
constexpr int manyFailures = 2;          // failed meter requests in a row

} // namespace

Presence::Presence(Context &context, WallClock &clock)
    : m_context(context), m_clock(clock), m_meters(context), m_gainReduction(context),
      m_retries(context.device, [this](QVXDevice::Kind option) { emit busOptionWanted(option); })
{
}

void Presence::tick(const std::optional<StripId> &selected)
{
    const qint64 now = m_clock.now();
    const bool wasAway = m_lastTick && now - *m_lastTick > tickInterval + lateTick;
    m_lastTick = now;
    const bool present = checkPresence(wasAway);
    const bool hanging = m_context.device.transferAge() > hangingTransfer;
    m_lost = m_lost || hanging;
    const bool metered = present && !hanging && pollMeters();
    if (metered) {
        m_gainReduction.poll(selected);
        m_retries.tick(now);
    } else {
        m_meters.clear();
        m_gainReduction.poll(std::nullopt);
    }
    setStatus(present && !m_lost, m_retries.isRefused());
}

/// @param wasAway the panel stood still for so long that the device may have restarted
bool Presence::checkPresence(bool wasAway)
{
    if (!m_context.device.is_selected()) {
        if (!m_disconnected) {
            m_disconnected = true;
            emit disconnected();
        }
        return false;
    }
    if (m_disconnected || wasAway) {
        m_context.device.trustMeters();
        wantState();
    }
    if (m_disconnected) {
        m_disconnected = false;
        emit reconnected();
    }
    return true;
}

bool Presence::pollMeters()
{
    const bool answered = m_meters.poll();
    m_lost = m_lost || m_context.device.meterFailures() >= manyFailures;
    if (!answered) {
        m_context.device.deselect();
        return false;
    }
    if (m_lost) wantState();
    return true;
}

void Presence::wantState()
{
    m_lost = false;
    m_context.device.reset();
    m_retries.clear();
    emit stateWanted();
}

void Presence::setStatus(bool answering, bool refusing)
{
    if (answering == m_answering && refusing == m_refusing) return;
    m_answering = answering;
    m_refusing = refusing;
    emit statusChanged();
}

} // namespace mixer
