#include "remote/nearnetworks.h"

#include <QNetworkInterface>

#include <algorithm>

namespace remote {

bool NearNetworks::has(const QHostAddress &address)
{
    constexpr int validTime = 1000; // milliseconds
    if (!m_sinceRead.isValid() || m_sinceRead.hasExpired(validTime)) {
        m_sinceRead.start();
        m_networks.clear();
        for (const QNetworkInterface &card : QNetworkInterface::allInterfaces())
            for (const QNetworkAddressEntry &entry : card.addressEntries())
                m_networks.push_back({entry.ip(), entry.prefixLength()});
    }
    return std::any_of(m_networks.begin(), m_networks.end(), [&](const auto &network) {
        return network.second > 0 && address.isInSubnet(network.first, network.second);
    });
}

} // namespace remote
