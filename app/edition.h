#pragma once

#include "common/constants.h"

/// What tells the panel and the demo apart, beside the device.
struct Edition
{
    const char *organisation;  ///< of all settings
    const char *updateAddress; ///< of the update information; "" to ask nobody
};

constexpr Edition panelEdition{constants::organisation, constants::updateInformation};
/// The demo must never touch the settings of a real panel, and asks nobody for updates.
constexpr Edition demoEdition{constants::demoOrganisation, ""};
