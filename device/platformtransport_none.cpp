#include "device/platformtransport.h"

namespace {

/// The transport for platforms without a kernel driver for the Tamber. It never finds a device.
class NoDevice final : public Transport
{
public:
    int find(TransportContext &context, int) override
    {
        context.device = nullptr;
        return 1;
    }
    int transferOut(
        TransportContext &, std::uint8_t, std::uint16_t, std::uint16_t, std::uint16_t,
        const std::uint8_t *) override
    {
        return 1;
    }
    int transferIn(
        TransportContext &, std::uint8_t, std::uint16_t, std::uint16_t, std::uint16_t,
        std::uint8_t *) override
    {
        return 1;
    }
    int sampleRate(TransportContext &, std::uint32_t &) override { return 1; }
};

} // namespace

std::unique_ptr<Transport> platformTransport()
{
    return std::make_unique<NoDevice>();
}
