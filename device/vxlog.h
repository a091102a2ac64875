#pragma once

#include <cstdint>

/// The console lines of the message and command layers. They are a developer's aid: the panel runs
/// without a console, and nothing of them reaches the user. Device worker's thread.
namespace vxlog {

/// Source names as the lines carry them.
constexpr char vxmsg[] = "..\\vxtest\\vxmsg";
constexpr char vxctl[] = "..\\vxtest\\vxctl";

/// Writes "source:line:ERROR"; always returns 1, the layers' answer for a failure.
int error(const char *source, int line);

/// The same with the value that made the check fail, in hexadecimal.
int error(const char *source, int line, std::uint32_t value);

} // namespace vxlog
