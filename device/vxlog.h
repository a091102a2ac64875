#pragma once

#include <cstdint>

/// The console lines of the message and command layers. They are for developers only: the panel
/// runs without a console, and no line reaches the user. Device worker's thread.
namespace vxlog {

/// Source names in the lines.
// contract: readers of the console output expect these paths and the form of the lines.
constexpr char vxmsg[] = "..\\vxtest\\vxmsg";
constexpr char vxctl[] = "..\\vxtest\\vxctl";

/// Writes "source:line:ERROR". Always returns 1, the layers' result for a failure.
int error(const char *source, int line);

/// Writes "source:line:ERROR value" with the value that failed the check, in hexadecimal. Always
/// returns 1.
int error(const char *source, int line, std::uint32_t value);

} // namespace vxlog
