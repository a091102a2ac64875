// The Windows transport with the fake driver, which is already loaded. This test registers the
// devices.

#include "device/platformtransport.h"
#include "tests/windows/cable.h"
#include "tests/windows/check.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <io.h>
#include <iterator>
#include <memory>
#include <shlwapi.h>
#include <vector>

using namespace cable;

namespace {

const std::wstring firstDevice = L"AAA#0000"; // enumerated before ours
const std::wstring lastDevice = L"ZZZ#0000";  // enumerated after ours

bool endsWith(const std::wstring &text, const std::wstring &end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::string lastLineOfLog()
{
    std::ifstream log(FAKE_DRIVER_LOG);
    std::string line, last;
    while (std::getline(log, line))
        last = line;
    return last;
}

struct Bench
{
    std::unique_ptr<Transport> transport = platformTransport();
    TransportContext context = {};

    bool found() { return transport->find(context, 0) == 0 && context.device == &context; }
    int send(const std::vector<std::uint8_t> &bytes)
    {
        return transport->transferOut(
            context, requestSend, 0, 0, static_cast<std::uint16_t>(bytes.size()), bytes.data());
    }
    int fetch(std::array<std::uint8_t, 64> &bytes)
    {
        return transport->transferIn(context, requestFetch, 0, 0, 64, bytes.data());
    }
};

void finding()
{
    Bench bench;
    CHECK(!bench.found()); // nothing is plugged in
    plugIn(ownDevice, L"wave", L"tamber");
    CHECK(bench.found());
    CHECK(endsWith(bench.context.path, L"\\wave"));
    CHECK(bench.transport->find(bench.context, 1) == 1);
    CHECK(bench.context.device == nullptr);
}

void exactService()
{
    Bench bench;
    for (const wchar_t *name : {L"Tamber", L"tambe", L"tamber2", L""}) {
        plugIn(ownDevice, L"wave", name);
        CHECK(!bench.found());
    }
    CHECK(bench.context.path[0] == 0);
    plugIn(ownDevice, L"wave", L"tamber");
    CHECK(bench.found());
}

void lastMatchCounts()
{
    Bench bench;
    plugIn(ownDevice, L"topo", L"tamber");
    plugIn(ownDevice, L"zz", L"tamber");
    CHECK(bench.found());
    CHECK(endsWith(bench.context.path, L"\\zz"));
    // Other devices, before and after ours, change nothing.
    plugIn(firstDevice, L"wave", L"usbaudio");
    plugIn(lastDevice, L"wave", L"usbaudio");
    CHECK(bench.found());
    CHECK(endsWith(bench.context.path, L"\\zz"));
    plugIn(lastDevice, L"wave", L"tamber");
    CHECK(bench.found());
    CHECK(StrStrIW(bench.context.path, lastDevice.c_str()) != nullptr);
    pullOut(firstDevice);
    pullOut(lastDevice);
    CHECK(bench.found());
}

void sending()
{
    Bench bench;
    CHECK(bench.found());
    CHECK(bench.send({0x81, 2, 0xF0, 0, 0}) == 0);
    CHECK(lastLineOfLog() == "00 00 00 00 05 00 00 00 17 00 00 00 00 00 00 1d 81 02 f0 00 00");
    const DWORD before = behave(BEHAVE_WELL);
    CHECK(bench.send({}) == 1);
    CHECK(bench.transport->transferOut(bench.context, requestSend, 0, 0, 5, nullptr) == 1);
    CHECK(behave(BEHAVE_CHATTY) == before); // the driver got no request
    CHECK(bench.send({0, 0}) == 1);
    behave(BEHAVE_REFUSE);
    CHECK(bench.send({0, 0}) == 1);
    behave(BEHAVE_WELL);
    CHECK(bench.send({0, 0}) == 0);
}

void fetching()
{
    Bench bench;
    CHECK(bench.found());
    std::array<std::uint8_t, 64> bytes;
    bytes.fill(0xEE);
    CHECK(bench.fetch(bytes) == 0);
    CHECK(bytes[0] == 0xA1 && bytes[1] == 2 && bytes[2] == 1 && bytes[63] == 0);
    behave(BEHAVE_SHORT);
    CHECK(bench.fetch(bytes) == 1);
    behave(BEHAVE_REFUSE);
    CHECK(bench.fetch(bytes) == 1);
    behave(BEHAVE_WELL);
    CHECK(bench.fetch(bytes) == 0);
}

/// The standard output of a function.
template <typename Act>
std::string printed(Act act)
{
    std::fflush(stdout);
    std::FILE *const file = std::tmpfile();
    const int console = _dup(1);
    _dup2(_fileno(file), 1);
    act();
    std::fflush(stdout);
    _dup2(console, 1);
    _close(console);
    std::rewind(file);
    std::string text(4096, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    return text;
}

/// A wrong byte count is not a system error, so the text of an earlier system error is not printed.
void wrongCount()
{
    Bench bench;
    CHECK(bench.found());
    behave(BEHAVE_SHORT);
    std::array<std::uint8_t, 64> bytes;
    const std::string text = printed([&] {
        SetLastError(ERROR_ACCESS_DENIED);
        bench.fetch(bytes);
    });
    CHECK(text.find("ERROR : ") == 0);
    CHECK(text.find('\n') + 1 == text.size());
    behave(BEHAVE_REFUSE);
    CHECK(printed([&] { bench.fetch(bytes); }).find("ERROR : ") > 0); // after the system's text
    behave(BEHAVE_WELL);
}

void rate()
{
    Bench bench;
    CHECK(bench.found());
    std::uint32_t hertz = 0;
    CHECK(bench.transport->sampleRate(bench.context, hertz) == 0);
    CHECK(hertz == FAKE_DRIVER_RATE);
    behave(BEHAVE_REFUSE);
    CHECK(bench.transport->sampleRate(bench.context, hertz) == 1);
    behave(BEHAVE_WELL);
}

/// After the device is unplugged, every request fails, also before the next search.
void unplugging()
{
    Bench bench;
    CHECK(bench.found());
    behave(BEHAVE_UNPLUG);
    std::array<std::uint8_t, 64> bytes;
    std::uint32_t hertz = 0;
    CHECK(bench.send({0, 0}) == 1);
    CHECK(bench.fetch(bytes) == 1);
    CHECK(bench.transport->sampleRate(bench.context, hertz) == 1);
    behave(BEHAVE_REPLUG);
    CHECK(bench.send({0, 0}) == 0);
    pullOut(ownDevice);
    CHECK(!bench.found());
}

/// Windows returns the lowest free handle, so a leaked handle increases the next one.
std::size_t nextHandle()
{
    const HANDLE handle = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    CloseHandle(handle);
    return reinterpret_cast<std::size_t>(handle);
}

std::size_t privateMemory()
{
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region = {};
    for (char *at = nullptr; VirtualQuery(at, &region, sizeof(region)) == sizeof(region);
         at += region.RegionSize)
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    return bytes;
}

/// Makes every request once, whether it succeeds or not.
void tryAll(Bench &bench)
{
    std::array<std::uint8_t, 64> bytes;
    std::uint32_t hertz = 0;
    bench.found();
    bench.send({0, 0});
    bench.fetch(bytes);
    bench.transport->sampleRate(bench.context, hertz);
}

/// Hundreds of successful and failed requests leak neither handles nor memory.
void nothingLeaks()
{
    plugIn(ownDevice, L"wave", L"tamber");
    Bench bench;
    std::size_t handles = 0;
    std::size_t memory = 0;
    const DWORD round[] = {BEHAVE_WELL, BEHAVE_SHORT, BEHAVE_CHATTY, BEHAVE_REFUSE, BEHAVE_UNPLUG};
    for (int rounds = 0; rounds < 5; ++rounds) {
        for (const DWORD behaviour : round) {
            behave(behaviour);
            for (int i = 0; i < 50; ++i)
                tryAll(bench);
        }
        behave(BEHAVE_REPLUG);
        if (rounds > 0) continue; // the first round fills caches of the system
        handles = nextHandle();
        memory = privateMemory();
    }
    behave(BEHAVE_WELL);
    CHECK(handles > 0 && nextHandle() <= handles + 16);
    // A leak of a hundred bytes for each failed request would exceed this.
    CHECK(memory > 0 && privateMemory() <= memory + 0x10000);
}

} // namespace

int main()
{
    pullOut(ownDevice);
    finding();
    exactService();
    lastMatchCounts();
    sending();
    fetching();
    wrongCount();
    rate();
    unplugging();
    nothingLeaks();
    return check::failures() == 0 ? 0 : 1;
}
