/// Every reader of the device's replies, and the transfer of a firmware image, over a device that
/// answers with the input. Results stay in their arrays and ranges, and every command ends.

#include "check.h"
#include "device/firmwaretransfer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace {

/// Answers each read with the next bytes of the input. Every eighth transfer fails if `isLossy`.
class InputTransport final : public Transport
{
public:
    InputTransport(const std::uint8_t *data, std::size_t size, bool isLossy)
        : m_data(data), m_size(size), m_isLossy(isLossy)
    {
    }

    int find(TransportContext &context, int) override
    {
        context.device = &context;
        return 0;
    }
    int transferOut(
        TransportContext &, std::uint8_t request, std::uint16_t, std::uint16_t,
        std::uint16_t length, const std::uint8_t *data) override
    {
        FUZZ_CHECK(request == requestSend && data && length > 0 && length <= vxmsg::maxMessage);
        return fails();
    }
    int transferIn(
        TransportContext &, std::uint8_t request, std::uint16_t, std::uint16_t,
        std::uint16_t length, std::uint8_t *data) override
    {
        FUZZ_CHECK(request == requestFetch && data && length <= vxmsg::maxMessage);
        if (fails()) return 1;
        const std::size_t count = std::min<std::size_t>(length, m_size);
        std::memset(data, 0, length);
        std::copy_n(m_data, count, data);
        m_data += count;
        m_size -= count;
        return 0;
    }
    int sampleRate(TransportContext &, std::uint32_t &rate) override
    {
        rate = static_cast<std::uint32_t>(m_size);
        return fails();
    }
    bool isUsedUp() const { return m_size == 0; }

private:
    int fails() { return m_isLossy && ++m_transfers % 8 == 0; }

    const std::uint8_t *m_data;
    std::size_t m_size;
    const bool m_isLossy;
    int m_transfers = 0;
};

/// Waits for nothing. Stops a command that never ends. Unless `isPatient`, the thread is asked to
/// stop at the end of the input, because a command that reads a hundred empty replies takes a
/// hundred times as long as the rest.
class InstantClock final : public Clock
{
public:
    InstantClock(const InputTransport &transport, bool isPatient)
        : m_transport(transport), m_isPatient(isPatient)
    {
    }
    bool sleep(int) override
    {
        FUZZ_CHECK(++m_waits < 1000000);
        return !stopping();
    }
    bool stopping() const override { return !m_isPatient && m_transport.isUsedUp(); }

private:
    const InputTransport &m_transport;
    const bool m_isPatient;
    int m_waits = 0;
};

void readMeters(const vxctl::Link &link)
{
    std::array<vxctl::MeterRecord, vxctl::meterCount> records;
    int count = -1;
    const int failed = vxctl::get_meter(link, records.data(), count);
    FUZZ_CHECK(count >= 0 && count <= vxctl::meterCount);
    FUZZ_CHECK(failed == 0 || failed == 1);
}

template <int size, typename Read>
void readText(const vxctl::Link &link, Read read)
{
    std::array<char, size> text;
    std::uint8_t length = 0;
    if (read(link, text.data(), length) == 0) FUZZ_CHECK(length <= size);
}

void sendFirmware(const vxctl::Link &link, std::uint8_t size)
{
    const std::array<std::uint8_t, 255> image{};
    std::uint32_t progress = 0;
    vxctl::transferFirmware(link, image.data(), size, progress);
    FUZZ_CHECK(progress <= size);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 2) return 0;
    const int command = data[0] % 10;
    InputTransport transport(data + 2, size - 2, data[0] & 0x80);
    TransportContext device{};
    device.device = &device;
    InstantClock clock(transport, (data[0] & 0x70) == 0x70);
    const vxctl::Link link{transport, device, clock};
    std::uint16_t number = 0;
    std::uint32_t rate = 0;
    switch (command) {
    case 0:
        readMeters(link);
        break;
    case 1:
        vxctl::get_grmeter(link, vxctl::channelInput, data[1], number);
        break;
    case 2:
        vxctl::get_version(link, number);
        break;
    case 3:
        vxctl::get_build(link, number);
        break;
    case 4:
        readText<vxctl::productNameSize>(link, vxctl::get_product_name);
        break;
    case 5:
        readText<vxctl::debugTextSize>(link, vxctl::get_debugprint);
        break;
    case 6:
        vxctl::get_sample_rate(link, rate);
        break;
    case 7:
        sendFirmware(link, data[1]);
        break;
    case 8:
        vxctl::waitReady(link);
        break;
    default:
        vxctl::set_parameter(link, vxctl::channelInput, 1, vxctl::tagFader, data[1]);
        break;
    }
    return 0;
}
