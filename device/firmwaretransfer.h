#pragma once

#include "device/vxctl.h"

namespace vxctl {

/// Sends a firmware image to the device in chunks of at most 61 bytes, as fast as the device grants
/// credit. Then waits up to ten seconds for the device to finish writing its flash. Blocks until
/// all this is done.
/// @param progress receives the number of bytes sent so far, after every chunk
/// @return 0 for success, also if the ten seconds ran out; 1 if a transfer failed or the device
///         stalled
// contract: the panel never calls this; the maker's firmware updater does.
int transferFirmware(
    const Link &link, const std::uint8_t *image, std::uint32_t total, std::uint32_t &progress);

} // namespace vxctl
