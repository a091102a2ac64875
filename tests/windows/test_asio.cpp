// Queries the sample rate of fakeasio.dll. This test writes the list of drivers in the registry.

#include "driver/asiodriver.h"
#include "tests/windows/check.h"
#include "tests/windows/registry.h"

#include <objbase.h>

namespace {

const std::wstring list = L"Software\\ASIO";
const std::wstring classId = L"{7A3C51E2-90B4-4D6F-8E21-5B0CD719A463}";
const std::wstring classKey = L"Software\\Classes\\CLSID\\" + classId;
const QString noDriver = QStringLiteral("No  ASIO  Driver");

/// The DLL is in the folder of this program.
std::wstring driverFile()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\')) + L"\\fakeasio.dll";
}

void registerFile(const std::wstring &file)
{
    registry::write(classKey + L"\\InprocServer32", nullptr, file);
    registry::write(classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
}

void registerDriver(const std::wstring &key, const std::wstring &id = classId)
{
    registry::write(list + L"\\" + key, L"CLSID", id);
    registry::write(list + L"\\" + key, L"Description", key);
}

void startAfresh()
{
    registry::remove(list);
    registry::remove(classKey);
    registerFile(driverFile());
    SetEnvironmentVariableA("FAKE_ASIO_INIT", nullptr);
    SetEnvironmentVariableA("FAKE_ASIO_ERROR", nullptr);
    SetEnvironmentVariableA("FAKE_ASIO_RATE", "48000");
}

QString rateText()
{
    const std::unique_ptr<AsioHost> host = platformAsioHost();
    return AsioDriver(*host).driverSampleRateText();
}

/// The number of driver objects, -1 if the DLL is not loaded.
long driversAlive()
{
    const HMODULE module = GetModuleHandleW(L"fakeasio.dll");
    if (!module) return -1;
    const FARPROC counter = GetProcAddress(module, "fakeDriversAlive");
    return reinterpret_cast<long (*)()>(reinterpret_cast<void *>(counter))();
}

void noneOrOthers()
{
    startAfresh();
    CHECK(rateText() == noDriver); // no list of drivers
    registerDriver(L"Tamber");
    registerDriver(L"tamber asio");
    registerDriver(L"Tamber ASIO 2");
    CHECK(rateText() == noDriver);
    CHECK(driversAlive() == -1); // and no other driver was loaded
}

void notUsable()
{
    startAfresh();
    registerDriver(L"Tamber ASIO", L"{00000000-0000-0000-0000-0000000000AA}");
    CHECK(rateText() == noDriver); // no such class
    registerDriver(L"Tamber ASIO", L"nonsense");
    CHECK(rateText() == noDriver);
    registerDriver(L"Tamber ASIO");
    registerFile(L"C:\\missing\\fakeasio.dll");
    CHECK(rateText() == noDriver);
}

void found()
{
    startAfresh();
    registerDriver(L"Another ASIO", L"{00000000-0000-0000-0000-0000000000AA}");
    registerDriver(L"Tamber ASIO");
    CHECK(rateText() == QStringLiteral("48000"));
    SetEnvironmentVariableA("FAKE_ASIO_RATE", "1411200");
    CHECK(rateText() == QStringLiteral("1.4112e+06"));
    CHECK(driversAlive() == 0);
    // Without a description the name of the key is used.
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, (list + L"\\Tamber ASIO").c_str(), L"Description");
    CHECK(rateText() == QStringLiteral("1.4112e+06"));
}

void refusal()
{
    startAfresh();
    registerDriver(L"Tamber ASIO");
    const std::unique_ptr<AsioHost> host = platformAsioHost();
    AsioDriver driver(*host);
    SetEnvironmentVariableA("FAKE_ASIO_INIT", "fail");
    CHECK(driver.driverSampleRateText() == noDriver);
    SetEnvironmentVariableA("FAKE_ASIO_INIT", nullptr);
    CHECK(driver.driverSampleRateText() == QStringLiteral("48000"));
    CHECK(driversAlive() == 1);
    // After an error the driver is loaded again, and the old object is released.
    SetEnvironmentVariableA("FAKE_ASIO_ERROR", "yes");
    SetEnvironmentVariableA("FAKE_ASIO_RATE", "0");
    CHECK(driver.driverSampleRateText() == QStringLiteral("0"));
    SetEnvironmentVariableA("FAKE_ASIO_ERROR", nullptr);
    SetEnvironmentVariableA("FAKE_ASIO_RATE", "96000");
    CHECK(driver.driverSampleRateText() == QStringLiteral("96000"));
    CHECK(driversAlive() == 1);
}

/// With 127 names the list is treated as cut off.
void fullList()
{
    startAfresh();
    registerDriver(L"Tamber ASIO");
    for (int i = 0; i < AsioHost::nameLimit - 2; ++i)
        registerDriver(L"Other " + std::to_wstring(i));
    CHECK(rateText() == QStringLiteral("48000"));
    registerDriver(L"Other one more");
    CHECK(rateText() == noDriver);
}

/// The host has released COM, so this thread can initialise it with another threading model.
void comInBalance()
{
    CHECK(driversAlive() == 0 || driversAlive() == -1);
    CHECK(CoInitializeEx(nullptr, COINIT_MULTITHREADED) == S_OK);
    CoUninitialize();
}

} // namespace

int main()
{
    noneOrOthers();
    notUsable();
    found();
    refusal();
    fullList();
    comInBalance();
    return check::failures() == 0 ? 0 : 1;
}
