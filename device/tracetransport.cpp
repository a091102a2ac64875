#include "device/tracetransport.h"

#include "device/intpack.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

struct CloseFile
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

class TraceTransport final : public Transport
{
public:
    TraceTransport(std::unique_ptr<Transport> transport, File file)
        : m_transport(std::move(transport)), m_file(std::move(file))
    {
    }

    int find(TransportContext &context, int index) override
    {
        const int result = m_transport->find(context, index);
        write("find", result, nullptr, 0);
        return result;
    }

    int transferOut(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override
    {
        const int result = m_transport->transferOut(device, request, value, index, length, data);
        write("out", result, data, data ? length : 0);
        return result;
    }

    int transferIn(
        TransportContext &device, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override
    {
        const int result = m_transport->transferIn(device, request, value, index, length, data);
        std::uint16_t used = result == 0 ? length : 0;
        while (used > 0 && data[used - 1] == 0)
            --used;
        write("in", result, data, used);
        return result;
    }

    int sampleRate(TransportContext &device, std::uint32_t &rate) override
    {
        const int result = m_transport->sampleRate(device, rate);
        std::uint8_t bytes[4] = {};
        if (result == 0) intpack::put32(bytes, rate);
        write("rate", result, bytes, result == 0 ? sizeof bytes : 0);
        return result;
    }

private:
    void write(const char *what, int result, const std::uint8_t *bytes, std::size_t count)
    {
        using namespace std::chrono;
        const auto since = duration_cast<milliseconds>(steady_clock::now() - m_start).count();
        std::string line = std::to_string(since) + ' ' + what + ' ' + std::to_string(result);
        for (std::size_t i = 0; i < count; ++i) {
            static constexpr char digits[] = "0123456789ABCDEF";
            line += {' ', digits[bytes[i] >> 4], digits[bytes[i] & 0x0F]};
        }
        line += '\n';
        std::fwrite(line.data(), 1, line.size(), m_file.get());
        std::fflush(m_file.get());
    }

    std::unique_ptr<Transport> m_transport;
    File m_file;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace

std::unique_ptr<Transport> tracedWhereAsked(std::unique_ptr<Transport> transport)
{
    const char *name = std::getenv("TAMBER_TRACE");
    if (!name || !*name) return transport;
    File file(std::fopen(name, "a"));
    if (!file) {
        std::perror(name);
        return transport;
    }
    return std::make_unique<TraceTransport>(std::move(transport), std::move(file));
}
