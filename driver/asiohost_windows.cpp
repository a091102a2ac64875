#include "driver/asioregistry_windows.h"

#include <algorithm>
#include <windows.h>

/// The first methods of an ASIO driver object. Except for the inherited ones, they have the
/// compiler's default calling convention for members.
///
/// This must not be in an unnamed namespace. There the compiler would conclude that no class
/// implements the interface, and would remove the calls.
// contract: the order of the methods, including those that the panel does not call.
struct AsioObject : public IUnknown
{
    virtual long init(void *systemHandle) = 0; ///< returns 0 if the driver refuses
    virtual void getDriverName(char *name) = 0;
    virtual long getDriverVersion() = 0;
    virtual void getErrorMessage(char *text) = 0;
    virtual long start() = 0;
    virtual long stop() = 0;
    virtual long getChannels(long *inputs, long *outputs) = 0;
    virtual long getLatencies(long *input, long *output) = 0;
    virtual long getBufferSize(long *least, long *most, long *preferred, long *granularity) = 0;
    virtual long canSampleRate(double rate) = 0;
    virtual long getSampleRate(double *rate) = 0; ///< returns 0 for success
};

namespace {

/// The information record for the initialisation of a driver. The host fills in the handle and the
/// driver the rest.
struct DriverInformation
{
    long asioVersion;
    long driverVersion;
    char name[32];
    char errorMessage[124];
    void *systemHandle;
};

constexpr long asioOk = 0;

/// Initialises COM for the lifetime of the object.
class Com
{
public:
    Com() : m_ours(SUCCEEDED(CoInitialize(nullptr))) {}
    ~Com()
    {
        if (m_ours) CoUninitialize(); // not if COM was already initialised in another mode
    }
    Com(const Com &) = delete;
    Com &operator=(const Com &) = delete;

private:
    const bool m_ours;
};

struct Release
{
    void operator()(AsioObject *driver) const { driver->Release(); }
};
using Driver = std::unique_ptr<AsioObject, Release>;

/// Creates a driver object. Returns null if that fails. ASIO defines no interface identifier; the
/// class identifier takes its place.
Driver create(const std::wstring &classId)
{
    CLSID id = {};
    void *object = nullptr;
    if (FAILED(CLSIDFromString(classId.c_str(), &id))) return {};
    if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, id, &object))) return {};
    return Driver(static_cast<AsioObject *>(object));
}

/// The drivers that are listed in the registry. The first load() initialises COM.
class RegisteredDrivers final : public AsioHost
{
public:
    int listNames(Names &names) override;
    bool load(const Name &name) override;
    bool initialise() override;
    bool sampleRate(double &rate) override;

private:
    std::unique_ptr<Com> m_com;
    Driver m_driver; // declared after m_com, so that it is destroyed first
    std::vector<AsioEntry> m_entries;
};

int RegisteredDrivers::listNames(Names &names)
{
    m_entries = registeredAsioDrivers(nameLimit);
    std::transform(m_entries.cbegin(), m_entries.cend(), names.begin(), [](const AsioEntry &entry) {
        return entry.name;
    });
    return static_cast<int>(m_entries.size());
}

bool RegisteredDrivers::load(const Name &name)
{
    const auto entry =
        std::find_if(m_entries.cbegin(), m_entries.cend(), [&name](const AsioEntry &e) {
            return e.name == name;
        });
    if (entry == m_entries.cend()) return false;
    m_driver.reset();
    if (!m_com) m_com = std::make_unique<Com>();
    m_driver = create(entry->classId);
    return m_driver != nullptr;
}

bool RegisteredDrivers::initialise()
{
    if (!m_driver) return false;
    DriverInformation information = {};
    if (m_driver->init(information.systemHandle) != 0) return true;
    m_driver->getErrorMessage(information.errorMessage);
    m_driver.reset();
    return false;
}

bool RegisteredDrivers::sampleRate(double &rate)
{
    return m_driver && m_driver->getSampleRate(&rate) == asioOk;
}

} // namespace

std::unique_ptr<AsioHost> platformAsioHost()
{
    return std::make_unique<RegisteredDrivers>();
}
