#include "device/interfacesearch_windows.h"
#include "device/intpack.h"
#include "device/platformtransport.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <windows.h>
#include <winioctl.h>

namespace {

// contract: the names, control codes and blocks are the kernel driver's.
constexpr wchar_t driverService[] = L"tamber";
constexpr wchar_t controlEndpoint[] = L"\\tamber";

/// The requests that the driver accepts.
enum ControlCode : DWORD {
    controlTransfer = CTL_CODE(FILE_DEVICE_UNKNOWN, 0x800, METHOD_BUFFERED, FILE_ANY_ACCESS),
    currentSampleRate = CTL_CODE(FILE_DEVICE_UNKNOWN, 0x81B, METHOD_BUFFERED, FILE_READ_ACCESS),
};
static_assert(controlTransfer == 0x222000 && currentSampleRate == 0x22606C, "the driver's codes");

enum Direction : std::uint32_t { toDevice = 0, fromDevice = 1 };

constexpr std::uint16_t transferKind = 0x0017; ///< the same in every block
constexpr std::size_t blockSize = 16;
constexpr std::size_t blockSizeToFetch = 20; ///< the last four bytes stay zero

struct CloseDevice
{
    void operator()(HANDLE device) const { CloseHandle(device); }
};
using Device = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseDevice>;

struct FreePages
{
    void operator()(std::uint8_t *pages) const { VirtualFree(pages, 0, MEM_RELEASE); }
};
using Pages = std::unique_ptr<std::uint8_t, FreePages>;

Pages allocate(std::size_t size)
{
    return Pages(
        static_cast<std::uint8_t *>(VirtualAlloc(nullptr, size, MEM_COMMIT, PAGE_READWRITE)));
}

/// Returns the path of the driver's control endpoint, which is next to the interface that was
/// found.
std::wstring endpointPath(const TransportContext &context)
{
    const auto *end = std::find(std::begin(context.path), std::end(context.path), L'\0');
    const std::wstring path(std::begin(context.path), end);
    return path.substr(0, path.rfind(L'\\')) + controlEndpoint;
}

int failed(int line)
{
    reportSystemError(line);
    return 1;
}

/// Opens the driver. Every request opens it again, so that no handle outlives an unplugged device.
Device open(const TransportContext &context)
{
    const HANDLE device = CreateFileW(
        endpointPath(context).c_str(), GENERIC_READ | GENERIC_WRITE,
        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (device != INVALID_HANDLE_VALUE) return Device(device);
    reportSystemError(__LINE__);
    return {};
}

struct Block
{
    Direction direction;
    std::uint32_t length; ///< of the message behind the block
    std::uint8_t request;
    std::uint16_t value;
    std::uint16_t index;
};

void write(const Block &block, std::uint8_t *to)
{
    intpack::put32(to, block.direction);
    intpack::put32(to + 4, block.length);
    intpack::put16(to + 8, transferKind);
    intpack::put16(to + 10, block.value);
    intpack::put16(to + 12, block.index);
    to[14] = 0;
    to[15] = block.request;
}

/// Makes one request. Returns 0 for success and 1 if the driver refuses it or does not return
/// exactly `expected` bytes. Only a refusal sets the system's last error, so only a refusal reports
/// it.
int control(
    const Device &device, ControlCode code, std::uint8_t *in, std::size_t inSize, void *out,
    DWORD outSize, DWORD expected)
{
    DWORD returned = 0;
    const BOOL accepted = DeviceIoControl(
        device.get(), code, in, static_cast<DWORD>(inSize), out, outSize, &returned, nullptr);
    if (!accepted) return failed(__LINE__);
    if (returned == expected) return 0;
    std::printf("ERROR : %d\n", __LINE__);
    return 1;
}

/// The transport through the Tamber's kernel driver.
class KernelDriver final : public Transport
{
public:
    int find(TransportContext &context, int index) override;
    int transferOut(
        TransportContext &context, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, const std::uint8_t *data) override;
    int transferIn(
        TransportContext &context, std::uint8_t request, std::uint16_t value, std::uint16_t index,
        std::uint16_t length, std::uint8_t *data) override;
    int sampleRate(TransportContext &context, std::uint32_t &rate) override;
};

int KernelDriver::find(TransportContext &context, int index)
{
    context.device = nullptr;
    if (index != 0) return 1;
    const std::wstring path = findSoundInterface(driverService);
    if (path.empty()) return 1;
    std::fill(std::begin(context.path), std::end(context.path), L'\0');
    path.copy(context.path, std::size(context.path));
    context.device = &context;
    return 0;
}

int KernelDriver::transferOut(
    TransportContext &context, std::uint8_t request, std::uint16_t value, std::uint16_t index,
    std::uint16_t length, const std::uint8_t *data)
{
    if (length == 0 || data == nullptr) return 1;
    const Device device = open(context);
    if (!device) return 1;
    const std::size_t size = blockSize + length;
    const Pages input = allocate(size);
    if (!input) return failed(__LINE__);
    write({toDevice, length, request, value, index}, input.get());
    std::memcpy(input.get() + blockSize, data, length);
    return control(device, controlTransfer, input.get(), size, nullptr, 0, 0);
}

int KernelDriver::transferIn(
    TransportContext &context, std::uint8_t request, std::uint16_t value, std::uint16_t index,
    std::uint16_t length, std::uint8_t *data)
{
    const Device device = open(context);
    if (!device) return 1;
    std::array<std::uint8_t, blockSizeToFetch> input = {};
    write({fromDevice, 0, request, value, index}, input.data());
    return control(device, controlTransfer, input.data(), input.size(), data, length, length);
}

int KernelDriver::sampleRate(TransportContext &context, std::uint32_t &rate)
{
    const Device device = open(context);
    if (!device) return 1;
    std::array<std::uint8_t, 4> answer = {};
    DWORD returned = 0;
    if (!DeviceIoControl(
            device.get(), currentSampleRate, nullptr, 0, answer.data(),
            static_cast<DWORD>(answer.size()), &returned, nullptr))
        return failed(__LINE__);
    rate = intpack::get32(answer.data());
    return 0;
}

} // namespace

std::unique_ptr<Transport> platformTransport()
{
    return std::make_unique<KernelDriver>();
}
