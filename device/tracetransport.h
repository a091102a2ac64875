#pragma once

#include "device/transport.h"

#include <memory>

/// Returns a transport that forwards every request and appends one line for it to the file named by
/// the environment variable TAMBER_TRACE. Returns the given transport itself if the variable is
/// unset or the file cannot be opened.
///
/// A line holds the milliseconds since the start, the kind of request ("out", "in", "rate" or
/// "find"), the result (0 or 1) and the bytes in hexadecimal. An "in" line leaves out the zero
/// padding at the end of the message.
std::unique_ptr<Transport> tracedWhereAsked(std::unique_ptr<Transport> transport);
