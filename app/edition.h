#pragma once

#include "common/constants.h"

/// The values that differ between the panel and the demo.
struct Edition
{
    const char *organisation;  ///< the organisation that all settings are stored under
    const char *updateAddress; ///< address of the update information; "" switches the check off
};

constexpr Edition panelEdition{constants::organisation, constants::updateInformation};
/// The demo must never touch the settings of a real panel, and it does not check for updates.
constexpr Edition demoEdition{constants::demoOrganisation, ""};
