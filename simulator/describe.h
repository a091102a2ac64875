#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace simulator {

/// Returns a set command in words for the device window: "Fader of input 3 to -16 dB". Returns an
/// empty text for a message that sets nothing. Pure function; any thread.
std::string describe(const std::uint8_t *message, std::size_t length);

} // namespace simulator
