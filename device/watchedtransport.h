#pragma once

#include "device/transport.h"

#include <atomic>

/// A transport that forwards every request and measures how long the current one has lasted. A
/// transfer that hangs in the driver blocks its thread, so another thread has to detect it.
class WatchedTransport final : public Transport
{
public:
    /// @param transport must outlive the object
    explicit WatchedTransport(Transport &transport) : m_transport(transport) {}

    /// Returns the milliseconds since the current request began, or 0 if there is none. Any thread.
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
    /// When the current request began, in milliseconds of the steady clock; 0 if there is none.
    std::atomic<std::int64_t> m_began{0};
};
