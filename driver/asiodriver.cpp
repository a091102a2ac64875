#include "driver/asiodriver.h"

#include "common/constants.h"

#include <algorithm>

namespace {

constexpr int significantDigits = 6;

bool isOurs(const AsioHost::Name &name)
{
    const auto length = static_cast<int>(qstrnlen(name.data(), static_cast<uint>(name.size())));
    return QString::fromUtf8(name.data(), length) == QString::fromUtf8(constants::driverName);
}

} // namespace

AsioDriver::AsioDriver(AsioHost &host) : m_host(host) {}

QString AsioDriver::driverSampleRateText()
{
    if (!m_loaded) m_loaded = load();
    if (!m_loaded) return QStringLiteral("No  ASIO  Driver"); // contract: two blanks each
    double rate = 0;
    m_loaded = m_host.sampleRate(rate);
    return QString::number(rate, 'g', significantDigits);
}

bool AsioDriver::load()
{
    AsioHost::Names names{};
    const int count = m_host.listNames(names);
    // contract: a full list counts as no driver, because it can be incomplete.
    if (count >= AsioHost::nameLimit) return false;
    const auto end = names.cbegin() + std::max(count, 0);
    const auto ours = std::find_if(names.cbegin(), end, isOurs);
    return ours != end && m_host.load(*ours) && m_host.initialise();
}
