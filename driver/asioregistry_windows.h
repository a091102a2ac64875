#pragma once

#include "driver/asiohost.h"

#include <string>
#include <vector>

/// A registered driver.
struct AsioEntry
{
    AsioHost::Name name;
    std::wstring classId; ///< as text: "{...}"
};

/// Returns the first `limit` registered drivers whose file exists.
std::vector<AsioEntry> registeredAsioDrivers(int limit);
