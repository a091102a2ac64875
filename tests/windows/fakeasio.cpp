// A fake ASIO driver that only answers queries. Environment variables control it: with
// FAKE_ASIO_INIT=fail its initialisation fails, FAKE_ASIO_RATE is its sample rate in hertz, and
// with FAKE_ASIO_ERROR=yes it returns an error together with the rate.

#include <cstdlib>
#include <cstring>
#include <string>
#include <windows.h>

namespace {

constexpr GUID classId = {
    0x7A3C51E2, 0x90B4, 0x4D6F, {0x8E, 0x21, 0x5B, 0x0C, 0xD7, 0x19, 0xA4, 0x63}};

long liveObjects = 0;

std::string variable(const char *name)
{
    char text[64] = {};
    GetEnvironmentVariableA(name, text, sizeof(text));
    return text;
}

/// All methods in the order of the standard. A method that the panel should not call ends the
/// process, so that a wrong order in the panel's own table is detected.
struct FakeDriver final : public IUnknown
{
    FakeDriver() { ++liveObjects; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void **object) override
    {
        *object = nullptr;
        if (!IsEqualGUID(id, classId)) return E_NOINTERFACE;
        AddRef();
        *object = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left != 0) return left;
        --liveObjects;
        delete this;
        return 0;
    }
    virtual long init(void *handle)
    {
        m_initialised = handle == nullptr && variable("FAKE_ASIO_INIT") != "fail";
        return m_initialised ? 1 : 0;
    }
    virtual void getDriverName(char *name) { std::strcpy(name, "Fake"); }
    virtual long getDriverVersion() { return 1; }
    virtual void getErrorMessage(char *text) { std::strcpy(text, "refused"); }
    virtual long start() { std::abort(); }
    virtual long stop() { std::abort(); }
    virtual long getChannels(long *, long *) { std::abort(); }
    virtual long getLatencies(long *, long *) { std::abort(); }
    virtual long getBufferSize(long *, long *, long *, long *) { std::abort(); }
    virtual long canSampleRate(double) { std::abort(); }
    virtual long getSampleRate(double *rate)
    {
        if (!m_initialised) std::abort();
        *rate = std::atof(variable("FAKE_ASIO_RATE").c_str());
        return variable("FAKE_ASIO_ERROR") == "yes" ? -1000 : 0;
    }
    virtual long setSampleRate(double) { std::abort(); }

private:
    ULONG m_references = 0;
    bool m_initialised = false;
};

struct Factory final : public IClassFactory
{
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void **object) override
    {
        const bool known = IsEqualGUID(id, IID_IUnknown) || IsEqualGUID(id, IID_IClassFactory);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *, REFIID id, void **object) override
    {
        auto *driver = new FakeDriver;
        driver->AddRef();
        const HRESULT result = driver->QueryInterface(id, object);
        driver->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

} // namespace

extern "C" {

__declspec(dllexport) HRESULT STDMETHODCALLTYPE
    DllGetClassObject(REFCLSID id, REFIID interfaceId, void **object)
{
    static Factory factory;
    if (IsEqualGUID(id, classId)) return factory.QueryInterface(interfaceId, object);
    *object = nullptr;
    return CLASS_E_CLASSNOTAVAILABLE;
}

__declspec(dllexport) HRESULT STDMETHODCALLTYPE DllCanUnloadNow()
{
    return S_FALSE; // the tests read the count until they end
}

__declspec(dllexport) long fakeDriversAlive()
{
    return liveObjects;
}
}
