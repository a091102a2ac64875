#pragma once

#include "driver/asiohost.h"

#include <string>
#include <vector>

/// A driver as the registry knows it.
struct AsioEntry
{
    AsioHost::Name name;
    std::wstring classId; ///< as text: "{...}"
};

/// The registered drivers whose file exists, at most as many as `most`.
std::vector<AsioEntry> registeredAsioDrivers(int most);
