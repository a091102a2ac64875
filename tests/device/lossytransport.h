#pragma once

#include "device/vxctl.h"
#include "tests/device/faketransports.h"

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

/// Puts a transport in front of a simulated device's, whose clock is given, or returns that one.
using WrapTransport =
    std::function<std::unique_ptr<Transport>(std::unique_ptr<Transport>, simulator::DeviceClock &)>;
inline std::unique_ptr<Transport>
unwrapped(std::unique_ptr<Transport> transport, simulator::DeviceClock &)
{
    return transport;
}

/// Loses all messages that contain a chosen tag.
class LossyTransport final : public RecordedTransport
{
public:
    explicit LossyTransport(std::unique_ptr<Transport> behind)
        : RecordedTransport(behind.get()), m_behind(std::move(behind))
    {
    }

    void lose(int tag) ///< 0 for none
    {
        m_left = 1 << 30;
        m_tag = tag;
    }
    /// Loses one command with this tag, including its repeated transfers.
    void loseOne(int tag)
    {
        m_left = 10;
        m_tag = tag;
    }
    int lost() const { return m_lost; }

    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override
    {
        std::vector<std::uint8_t> copy(data, data + length);
        vxmsg::Buffer message{copy.data(), static_cast<std::uint8_t>(length), 0};
        vxmsg::Item item;
        while (vxmsg::next(message, item) == 0)
            if (item.tag == m_tag && m_left > 0) return --m_left, ++m_lost, 1;
        return RecordedTransport::transferOut(device, request, value, index, length, data);
    }

private:
    std::unique_ptr<Transport> m_behind;
    std::atomic<int> m_tag{0};
    std::atomic<int> m_left{0};
    std::atomic<int> m_lost{0};
};
