#include "device/interfacesearch_windows.h"

// setupapi.h needs the types of windows.h, so the order must stay.
// clang-format off
#include <windows.h>
#include <setupapi.h>
// clang-format on

#include <cstddef>
#include <cstdio>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

namespace {

using Detail = SP_DEVICE_INTERFACE_DETAIL_DATA_W;

/// The size that the system expects in the structure. It differs between 32-bit and 64-bit
/// processes.
constexpr DWORD detailSize = sizeof(Detail);
static_assert(detailSize == (sizeof(void *) == 4 ? 6 : 8), "the size that the system expects");

/// The interface class of all devices that render sound.
// contract: the driver registers the Tamber in this class.
constexpr GUID soundInterfaces = {
    0x65E8773E, 0x8F56, 0x11D0, {0xA3, 0xB9, 0x00, 0xA0, 0xC9, 0x22, 0x31, 0x96}};

struct DestroyList
{
    void operator()(HDEVINFO list) const { SetupDiDestroyDeviceInfoList(list); }
};
using DeviceList = std::unique_ptr<std::remove_pointer_t<HDEVINFO>, DestroyList>;

struct FreeLocal
{
    void operator()(wchar_t *text) const { LocalFree(text); }
};

DeviceList presentDevices()
{
    const HDEVINFO list = SetupDiGetClassDevsW(
        &soundInterfaces, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE);
    return DeviceList(list == INVALID_HANDLE_VALUE ? nullptr : list);
}

/// Returns the name of the device's driver service, or an empty text if the device has none.
std::wstring serviceName(HDEVINFO list, SP_DEVINFO_DATA &device)
{
    constexpr std::size_t size = 128;
    wchar_t name[size] = {};
    constexpr DWORD limit = sizeof(name) - sizeof(wchar_t); // keeps the terminating zero
    auto *bytes = reinterpret_cast<BYTE *>(name);
    const BOOL read = SetupDiGetDeviceRegistryPropertyW(
        list, &device, SPDRP_SERVICE, nullptr, bytes, limit, nullptr);
    return read ? name : std::wstring();
}

/// Logs a device without an identifier, which is only partly removed from the system.
void checkIdentifier(HDEVINFO list, SP_DEVINFO_DATA &device)
{
    wchar_t identifier[128] = {};
    if (!SetupDiGetDeviceInstanceIdW(
            list, &device, identifier, static_cast<DWORD>(std::size(identifier)), nullptr))
        reportSystemError(__LINE__);
}

std::wstring interfacePath(HDEVINFO list, SP_DEVICE_INTERFACE_DATA &entry)
{
    DWORD size = 0;
    SetupDiGetDeviceInterfaceDetailW(list, &entry, nullptr, 0, &size, nullptr);
    if (size < detailSize) {
        reportSystemError(__LINE__);
        return {};
    }
    const std::unique_ptr<BYTE[]> block(new BYTE[size]());
    auto *detail = reinterpret_cast<Detail *>(block.get());
    detail->cbSize = detailSize;
    if (SetupDiGetDeviceInterfaceDetailW(list, &entry, detail, size, nullptr, nullptr))
        return detail->DevicePath;
    reportSystemError(__LINE__);
    return {};
}

/// Returns the path of the device's last interface, or an empty path if no interface has one.
// contract: the last match wins, here and in findSoundInterface().
std::wstring lastInterface(HDEVINFO list, SP_DEVINFO_DATA &device)
{
    std::wstring last;
    SP_DEVICE_INTERFACE_DATA entry = {};
    entry.cbSize = sizeof(entry);
    for (DWORD i = 0; SetupDiEnumDeviceInterfaces(list, &device, &soundInterfaces, i, &entry);
         ++i) {
        std::wstring path = interfacePath(list, entry);
        if (!path.empty()) last = std::move(path);
    }
    return last;
}

} // namespace

std::wstring findSoundInterface(const wchar_t *service)
{
    const DeviceList list = presentDevices();
    if (!list) {
        reportSystemError(__LINE__);
        return {};
    }
    std::wstring found;
    SP_DEVINFO_DATA device = {};
    device.cbSize = sizeof(device);
    for (DWORD i = 0; SetupDiEnumDeviceInfo(list.get(), i, &device); ++i) {
        checkIdentifier(list.get(), device);
        std::wstring path = lastInterface(list.get(), device);
        if (!path.empty() && serviceName(list.get(), device) == service) found = std::move(path);
    }
    return found;
}

void reportSystemError(int line)
{
    wchar_t *text = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM,
        nullptr, GetLastError(), MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
        reinterpret_cast<wchar_t *>(&text), 0, nullptr);
    const std::unique_ptr<wchar_t, FreeLocal> owned(text);
    if (text) std::wprintf(L"%ls", text);
    std::printf("ERROR : %d\n", line);
}
