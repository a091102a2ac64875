#pragma once

#include <string>

/// Searches the present sound interfaces for those of the driver with this service name. The name
/// must match exactly, including its case. Returns the path of the last match, or an empty path if
/// there is none.
std::wstring findSoundInterface(const wchar_t *service);

/// Prints the system's description of the last error and the source line that reports it.
void reportSystemError(int line);
