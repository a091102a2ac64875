#include "driver/asioregistry_windows.h"

#include <algorithm>
#include <windows.h>

/// The first methods of an ASIO driver object, in the standard's order. No methods but these may
/// stand here, and none may go: a method is known by its place. All but the inherited ones are
/// called as the compiler calls members by itself.
///
/// In no unnamed namespace: nothing of this program implements it, from which the compiler would
/// conclude there that nobody does, and that it cannot be called.
struct AsioObject : public IUnknown
{
    virtual long init(void *systemHandle) = 0; ///< 0 when the driver refuses
    virtual void getDriverName(char *name) = 0;
    virtual long getDriverVersion() = 0;
    virtual void getErrorMessage(char *text) = 0;
    virtual long start() = 0;
    virtual long stop() = 0;
    virtual long getChannels(long *inputs, long *outputs) = 0;
    virtual long getLatencies(long *input, long *output) = 0;
    virtual long getBufferSize(long *least, long *most, long *preferred, long *granularity) = 0;
    virtual long canSampleRate(double rate) = 0;
    virtual long getSampleRate(double *rate) = 0; ///< 0 for success
};

namespace {

/// What a host hands to a driver that it initialises, and gets back from it.
struct DriverInformation
{
    long asioVersion;
    long driverVersion;
    char name[32];
    char errorMessage[124];
    void *systemHandle;
};

constexpr long asioOk = 0;

/// COM, for as long as this object lives.
class Com
{
public:
    Com() : m_ours(SUCCEEDED(CoInitialize(nullptr))) {}
    ~Com()
    {
        if (m_ours) CoUninitialize(); // not where someone else had chosen another kind of COM
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

/// ASIO drivers have no interface identifier of their own: that of the class stands for it.
Driver create(const std::wstring &classId)
{
    CLSID id = {};
    void *object = nullptr;
    if (FAILED(CLSIDFromString(classId.c_str(), &id))) return {};
    if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, id, &object))) return {};
    return Driver(static_cast<AsioObject *>(object));
}

/// The drivers that are listed in the registry. COM comes up with the first that is loaded.
class RegisteredDrivers final : public AsioHost
{
public:
    int listNames(Names &names) override;
    bool load(const Name &name) override;
    bool initialise() override;
    bool sampleRate(double &rate) override;

private:
    std::unique_ptr<Com> m_com;
    Driver m_driver; // behind COM, so that it goes first
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
