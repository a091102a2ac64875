#pragma once

#include "device/transport.h"

#include <memory>

/// Returns the transport to a real Tamber. On a platform without a kernel driver for the Tamber,
/// the transport never finds a device.
std::unique_ptr<Transport> platformTransport();
