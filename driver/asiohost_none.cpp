#include "driver/asiohost.h"

namespace {

/// The host for platforms without ASIO. Its list is empty and every other call fails.
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
