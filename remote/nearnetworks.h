#pragma once

#include <QElapsedTimer>
#include <QHostAddress>
#include <QPair>

#include <vector>

namespace remote {

/// The networks that this computer is in. GUI thread only.
class NearNetworks
{
public:
    /// Returns whether an address belongs to one of them. Others may be anywhere in the world.
    bool has(const QHostAddress &address);

private:
    QElapsedTimer m_sinceRead; ///< the system is asked at most once a second
    std::vector<QPair<QHostAddress, int>> m_networks;
};

} // namespace remote
