#pragma once

#include <array>
#include <memory>

/// The ASIO drivers of this computer, and the one of them that is loaded. This is the seam between
/// the panel and the platform's way of finding and loading drivers. GUI thread only.
class AsioHost
{
public:
    static constexpr int nameLimit = 127; ///< the most names that are asked for
    /// A name in UTF-8; it ends at the first zero byte, or with the array.
    using Name = std::array<char, 32>;
    using Names = std::array<Name, nameLimit>;

    virtual ~AsioHost() = default;

    /// Lists the registered drivers and returns how many names it has filled in: 0 to nameLimit.
    virtual int listNames(Names &names) = 0;
    /// Loads a driver of the list, in place of the one that was loaded; false when it cannot.
    virtual bool load(const Name &name) = 0;
    /// Initialises the loaded driver with an information record that is all zero; false when the
    /// driver refuses.
    virtual bool initialise() = 0;
    /// Asks the loaded driver for its rate in hertz; false when it reports an error, whatever it
    /// has left in rate.
    virtual bool sampleRate(double &rate) = 0;
};

/// The drivers of this platform. Where there are no ASIO drivers the list is empty.
std::unique_ptr<AsioHost> platformAsioHost();
