#pragma once

#include "tests/windows/check.h"
#include "tests/windows/fakedriver.h"
#include "tests/windows/registry.h"

/// Plugs fake devices in and out, and controls how the fake driver behaves.
namespace cable {

const std::wstring ownDevice = L"TAMBER#0000";

inline std::wstring enumKey(const std::wstring &device)
{
    std::wstring path = device;
    path[path.find(L'#')] = L'\\';
    return L"System\\CurrentControlSet\\Enum\\ROOT\\" + path;
}

inline std::wstring classKey(const std::wstring &device)
{
    return L"System\\CurrentControlSet\\Control\\DeviceClasses\\"
           L"{65e8773e-8f56-11d0-a3b9-00a0c9223196}\\##?#ROOT#" +
           device + L"#{65e8773e-8f56-11d0-a3b9-00a0c9223196}";
}

/// Registers an interface of a device with Windows.
inline void plugIn(const std::wstring &device, const wchar_t *interfaceName, const wchar_t *service)
{
    registry::write(enumKey(device), L"Service", service);
    registry::write(enumKey(device), L"ClassGUID", L"{4d36e96c-e325-11ce-bfc1-08002be10318}");
    const std::wstring instance = enumKey(device).substr(enumKey(device).find(L"ROOT"));
    registry::write(classKey(device), L"DeviceInstance", instance);
    const std::wstring reference = classKey(device) + L"\\#" + interfaceName;
    registry::write(reference + L"\\Control", L"Linked", DWORD{1});
}

inline void pullOut(const std::wstring &device)
{
    registry::remove(classKey(device));
    registry::remove(enumKey(device));
}

/// Sets the behaviour of the driver, a FakeDriverBehaviour. Returns its number of requests so far.
inline DWORD behave(DWORD behaviour)
{
    DWORD requests = 0;
    DWORD returned = 0;
    const HANDLE driver = CreateFileA(
        FAKE_DRIVER_NAME, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
        OPEN_EXISTING, 0, nullptr);
    const BOOL told = DeviceIoControl(
        driver, FAKE_DRIVER_BEHAVE, &behaviour, sizeof(behaviour), &requests, sizeof(requests),
        &returned, nullptr);
    if (!told) check::report(false, "the fake driver is there", __LINE__);
    CloseHandle(driver);
    return requests;
}

} // namespace cable
