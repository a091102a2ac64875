#pragma once

#include "device/vxctl.h"

namespace vxctl {

/// Sends a firmware image to the device in chunks of at most 61 bytes, as fast as the device gives
/// credit, and waits up to ten seconds until it has written its flash; that time running out is no
/// failure. Blocks throughout.
/// The panel itself never calls this; the maker's updater does.
/// @param progress receives the number of bytes sent so far, after every chunk.
int transferFirmware(
    const Link &link, const std::uint8_t *image, std::uint32_t total, std::uint32_t &progress);

} // namespace vxctl
