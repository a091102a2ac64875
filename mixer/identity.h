#pragma once

#include <QString>

#include <cstdint>

class QVXDevice;

namespace mixer {

/// The device's own description, as far as it is known and current.
struct Identity
{
    bool present = false;         ///< all other fields are empty without a device
    QString firmware;             ///< "1.02 0034", or "" if unknown
    QString name;                 ///< product name, or "" if unknown
    std::uint32_t sampleRate = 0; ///< in hertz, or 0 if unknown
};

/// Returns the device's last answers and requests new ones. Does not block. GUI thread only.
Identity askIdentity(QVXDevice &device);

/// Returns the text of a firmware version: "1.02 0034" for version 102 and build 34. Pure.
QString firmwareText(std::uint16_t version, std::uint16_t build);

} // namespace mixer
