#pragma once

#include <string>

/// Looks among the sound interfaces that are present for one of the driver with this service name,
/// exactly as it is written. Returns the path of the last of them, empty when there is none.
std::wstring findSoundInterface(const wchar_t *service);

/// Prints the system's words for the last error, and the number of the line that met it.
void reportSystemError(int line);
