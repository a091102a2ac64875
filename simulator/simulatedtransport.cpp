#include "simulator/simulatedtransport.h"

#include <algorithm>
#include <cwchar>

namespace simulator {

/// Lets the time of a transfer pass. Returns false if no device is plugged in.
bool SimulatedTransport::passTransferTime()
{
    if (!m_device.isPlugged()) return false;
    const bool slow = m_device.fault() == Fault::Slow;
    m_device.clock().pass(slow ? slowTransferTime : transferTime);
    return m_device.isPlugged();
}

int SimulatedTransport::find(TransportContext &context, int index)
{
    context.device = nullptr;
    if (index != 0 || !m_device.isPlugged()) return 1;
    static constexpr wchar_t path[] = L"simulated";
    std::copy(std::begin(path), std::end(path), context.path);
    context.device = &context;
    return 0;
}

int SimulatedTransport::transferOut(
    TransportContext &, std::uint8_t request, std::uint16_t, std::uint16_t, std::uint16_t length,
    const std::uint8_t *data)
{
    if (length == 0 || !data || !passTransferTime()) return 1;
    return request == requestSend && m_device.take(data, length) ? 0 : 1;
}

int SimulatedTransport::transferIn(
    TransportContext &, std::uint8_t request, std::uint16_t, std::uint16_t, std::uint16_t length,
    std::uint8_t *data)
{
    if (!data || !passTransferTime() || request != requestFetch) return 1;
    if (length > vxmsg::maxMessage || m_device.fault() == Fault::ShortRead) return 1;
    std::uint8_t message[vxmsg::maxMessage];
    m_device.give(message);
    std::copy_n(message, length, data);
    return 0;
}

int SimulatedTransport::sampleRate(TransportContext &, std::uint32_t &rate)
{
    if (!passTransferTime()) return 1;
    rate = m_device.sampleRate();
    return 0;
}

} // namespace simulator
