#pragma once

#include <QString>

#include <cstdint>

class QVXDevice;

namespace mixer {

/// What the device has said of itself, as far as it is still true.
struct Identity
{
    bool present = false;
    QString firmware;             ///< "1.02 0034", "" if it is not known
    QString name;                 ///< "" if it is not known
    std::uint32_t sampleRate = 0; ///< hertz, 0 if it is not known
};

/// What the device answered last; asks it anew. GUI thread only.
Identity askIdentity(QVXDevice &device);

/// "1.02 0034" for version 102 and build 34. Pure.
QString firmwareText(std::uint16_t version, std::uint16_t build);

} // namespace mixer
