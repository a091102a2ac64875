#pragma once

#include "device/transport.h"

#include <memory>

/// The way to a real Tamber on this platform. Where the interface has no kernel driver it is a
/// transport that never finds a device.
std::unique_ptr<Transport> platformTransport();
