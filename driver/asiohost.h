#pragma once

#include <array>
#include <memory>

/// The interface between the panel and the platform code that finds and loads ASIO drivers. At most
/// one driver is loaded at a time. GUI thread only.
class AsioHost
{
public:
    static constexpr int nameLimit = 127; ///< contract: maximum number of names in the list
    /// A name in UTF-8. It ends at the first zero byte or at the end of the array.
    using Name = std::array<char, 32>;
    using Names = std::array<Name, nameLimit>;

    virtual ~AsioHost() = default;

    /// Fills in the names of the registered drivers. Returns their number: 0 to nameLimit.
    virtual int listNames(Names &names) = 0;
    /// Loads a driver of the list and releases the one loaded before. Returns false if the driver
    /// is not in the list or cannot be loaded.
    virtual bool load(const Name &name) = 0;
    /// Initialises the loaded driver with an information record of zeros. Returns false if the
    /// driver refuses.
    virtual bool initialise() = 0;
    /// Asks the loaded driver for its rate in hertz. Returns false if the driver reports an error.
    /// The driver may set rate even then.
    virtual bool sampleRate(double &rate) = 0;
};

/// Returns the ASIO host of this platform. On a platform without ASIO its list is empty.
std::unique_ptr<AsioHost> platformAsioHost();
