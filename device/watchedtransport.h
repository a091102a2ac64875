#pragma once

#include "device/transport.h"

#include <atomic>

/// A transport that knows how long its transfer under way has lasted. A transfer that hangs in the
/// driver blocks its thread, so another thread has to notice.
class WatchedTransport final : public Transport
{
public:
    /// @param transport must outlive the object
    explicit WatchedTransport(Transport &transport) : m_transport(transport) {}

    /// Milliseconds since the transfer under way began; 0 without one. Any thread.
    std::int64_t age() const;

    int find(TransportContext &context, int index) override;
    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override;
    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override;
    int sampleRate(TransportContext &device, std::uint32_t &rate) override;

private:
    class Watch;

    Transport &m_transport;
    std::atomic<std::int64_t> m_began{
        0}; ///< milliseconds of the steady clock, 0 without a transfer
};
