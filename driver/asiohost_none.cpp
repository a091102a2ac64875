#include "driver/asiohost.h"

namespace {

/// For platforms without ASIO: there is no driver, so there is nothing to load or ask.
class NoDrivers final : public AsioHost
{
public:
    int listNames(Names &) override { return 0; }
    bool load(const Name &) override { return false; }
    bool initialise() override { return false; }
    bool sampleRate(double &) override { return false; }
};

} // namespace

std::unique_ptr<AsioHost> platformAsioHost()
{
    return std::make_unique<NoDrivers>();
}
