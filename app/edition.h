#pragma once

#include "common/constants.h"

/// The values that differ between the panel and the demo, and between starts.
struct Edition
{
    const char *organisation;  ///< the organisation that all settings are stored under
    const char *updateAddress; ///< address of the update information; "" switches the check off
    /// This process replaces another one. Boxes that open at every start have been seen.
    bool isReplacement = false;
};

constexpr Edition panelEdition{constants::organisation, constants::updateInformation};
/// The demo must never touch the settings of a real panel, and it does not check for updates.
constexpr Edition demoEdition{constants::demoOrganisation, ""};
