#pragma once

#include <QString>

#include <cstdint>

namespace driver {

/// Returns the display text of a sample rate: "44.1 kHz" for 44100 hertz. Returns an empty text for
/// a rate that the interface does not support. Pure function; any thread.
QString sampleRateText(std::uint32_t hertz);

} // namespace driver
