#pragma once

#include "device/transport.h"
#include "simulator/simulatedtamber.h"

namespace simulator {

/// The transport to a simulated device. A transfer takes as long as one over a cable. Any thread,
/// one request at a time.
class SimulatedTransport final : public Transport
{
public:
    /// The device must outlive the transport.
    explicit SimulatedTransport(SimulatedTamber &device) : m_device(device) {}

    int find(TransportContext &context, int index) override;
    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override;
    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override;
    int sampleRate(TransportContext &device, std::uint32_t &rate) override;

private:
    bool passTransferTime();

    SimulatedTamber &m_device;
};

} // namespace simulator
