#include "mixer/presence.h"

#include "mixer/state.h"

namespace mixer {
namespace {

// All times in milliseconds.
constexpr qint64 tickInterval = 100;
constexpr qint64 lateTick = 1000;        // after such a delay the device may have restarted
constexpr qint64 hangingTransfer = 2000; // a transfer that takes longer counts as a lost device

constexpr int manyFailures = 2;    // failed meter requests in a row that mean a lost device
constexpr int ticksDuringSend = 7; // during a full send or a scene, only every seventh tick polls

} // namespace

Presence::Presence(const storage::Store &store, QVXDevice &device, Sender &sender, WallClock &clock)
    : m_store(store), m_device(device), m_sender(sender), m_clock(clock), m_meters(device),
      m_gainReduction(device),
      m_retries(device, [this](QVXDevice::Kind option) { m_sender.resendBusOption(option); }),
      m_questions(device)
{
}

void Presence::tick()
{
    const qint64 now = m_clock.now();
    const bool wasAway = m_lastTick && now - *m_lastTick > tickInterval + lateTick;
    m_lastTick = now;
    m_questions.tick();
    const bool hanging = m_device.transferAge() > hangingTransfer;
    m_lost = m_lost || hanging;
    // Polling less often leaves the worker free for a full send or a scene.
    m_ticks = m_sender.isSendingMuch() ? m_ticks + 1 : 0;
    const bool gone = !m_device.lastAnswers().isSelected;
    if (m_ticks % ticksDuringSend != 0 && !wasAway && !hanging && !gone) return;

    const bool present = checkPresence(wasAway);
    const bool metered = present && !hanging && pollMeters();
    if (metered) {
        m_gainReduction.poll(editedStrip(m_store.values()), m_store.values());
        m_retries.tick(now);
    } else {
        m_meters.clear();
        m_gainReduction.poll(std::nullopt, m_store.values());
    }
    setStatus(present && !m_lost, m_retries.isRefused());
}

/// Returns whether the device is connected, and starts a full send if it may have restarted.
/// @param wasAway whether the last tick was so long ago that the device may have restarted
bool Presence::checkPresence(bool wasAway)
{
    if (!m_device.is_selected()) {
        if (!m_disconnected) {
            m_disconnected = true;
            emit disconnected();
        }
        return false;
    }
    if (m_disconnected || wasAway) {
        m_device.trustMeters();
        sendEverything();
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
    m_lost = m_lost || m_device.meterFailures() >= manyFailures;
    if (!answered) {
        m_device.deselect();
        return false;
    }
    if (m_lost) sendEverything();
    return true;
}

bool Presence::isSettled() const
{
    return m_sender.isIdle() && !m_retries.isRetrying() && m_device.transferAge() == 0;
}

void Presence::sendEverything()
{
    m_lost = false;
    m_device.reset();
    m_retries.clear();
    m_sender.sendAll();
}

void Presence::setStatus(bool answering, bool refusing)
{
    if (answering == m_answering && refusing == m_refusing) return;
    m_answering = answering;
    m_refusing = refusing;
    emit statusChanged();
}

} // namespace mixer
