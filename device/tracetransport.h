#pragma once

#include "device/transport.h"

#include <memory>

/// With TAMBER_TRACE=FILE in the environment: a transport that does what the given one does and
/// appends a line for every request to FILE: milliseconds since the start, "out", "in", "rate" or
/// "find", the result (0 or 1), and the bytes in hexadecimal, those of "in" without the zero
/// padding at their end. Without it, or when FILE cannot be opened: the given transport itself.
std::unique_ptr<Transport> tracedWhereAsked(std::unique_ptr<Transport> transport);
