#include "mixer/presence.h"

#include "device/qvxdevice.h"
#include "mixer/context.h"

namespace mixer {
namespace {

/// A whole send takes 3.2 s beside the meters. A command that fails each time must not make it
/// begin anew so often that what follows never gets its turn.
constexpr int resendTicks = 60;

} // namespace

Presence::Presence(Context &context)
    : m_context(context), m_meters(context), m_gainReduction(context)
{
}

void Presence::tick(const std::optional<StripId> &selected)
{
    const bool answering = checkPresence() && pollMeters();
    if (answering) {
        m_gainReduction.poll(selected);
    } else {
        m_meters.clear();
        m_gainReduction.poll(std::nullopt);
    }
    setAnswering(answering);
}

bool Presence::checkPresence()
{
    if (!m_context.device.is_selected()) {
        m_unsent = true;
        if (!m_disconnected) {
            m_disconnected = true;
            emit disconnected();
        }
        return false;
    }
    if (m_disconnected) {
        m_disconnected = false;
        m_unsent = false;
        m_context.device.reset();
        m_context.device.trustMeters();
        emit reconnected();
        emit stateWanted();
    }
    return true;
}

bool Presence::pollMeters()
{
    m_unsent = m_context.device.takeFailure() || m_unsent;
    if (!m_meters.poll()) {
        m_unsent = true;
        m_context.device.deselect();
        return false;
    }
    resendWhatFailed();
    return true;
}

void Presence::resendWhatFailed()
{
    if (m_ticksToResend > 0) --m_ticksToResend;
    if (!m_unsent || m_ticksToResend > 0) return;
    m_unsent = false;
    m_ticksToResend = resendTicks;
    m_context.device.reset();
    emit stateWanted();
}

void Presence::setAnswering(bool answering)
{
    if (answering == m_answering) return;
    m_answering = answering;
    emit answeringChanged(answering);
}

} // namespace mixer
