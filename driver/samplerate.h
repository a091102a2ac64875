#pragma once

#include <QString>

#include <cstdint>

namespace driver {

/// A sample rate as it is shown: "44.1 kHz" for 44100 hertz. Empty for a rate at which the
/// interface does not work. Pure; any thread.
QString sampleRateText(std::uint32_t hertz);

} // namespace driver
