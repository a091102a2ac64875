#include "device/watchedtransport.h"

#include <chrono>

namespace {

std::int64_t now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

class WatchedTransport::Watch
{
public:
    explicit Watch(WatchedTransport &transport) : m_transport(transport)
    {
        m_transport.m_began = now();
    }
    ~Watch() { m_transport.m_began = 0; }
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

private:
    WatchedTransport &m_transport;
};

std::int64_t WatchedTransport::age() const
{
    const std::int64_t began = m_began;
    return began == 0 ? 0 : now() - began;
}

int WatchedTransport::find(TransportContext &context, int index)
{
    const Watch watch(*this);
    return m_transport.find(context, index);
}

int WatchedTransport::transferOut(
    TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
    std::uint16_t length, const std::uint8_t *data)
{
    const Watch watch(*this);
    return m_transport.transferOut(device, request, value, index, length, data);
}

int WatchedTransport::transferIn(
    TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
    std::uint16_t length, std::uint8_t *data)
{
    const Watch watch(*this);
    return m_transport.transferIn(device, request, value, index, length, data);
}

int WatchedTransport::sampleRate(TransportContext &device, std::uint32_t &rate)
{
    const Watch watch(*this);
    return m_transport.sampleRate(device, rate);
}
