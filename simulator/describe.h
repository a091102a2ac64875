#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace simulator {

/// A set command in words, for somebody who watches the device: "Fader of input 3 to -16 dB". A
/// message that sets nothing gives no words. Pure; any thread.
std::string describe(const std::uint8_t *message, std::size_t length);

} // namespace simulator
