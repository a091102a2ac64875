#pragma once

#include "app/mixerwidgets.h"
#include "mixer/meters.h"
#include "widgets/drawlevelmeter.h"

#include <vector>

/// Shows the readings of all level meters. GUI thread only.
class MetersView
{
public:
    /// @param widgets must outlive the object
    explicit MetersView(const MixerWidgets &widgets);

    /// Shows new readings; changes only the widgets whose reading has changed.
    void show(const mixer::Meters::Readings &readings);

private:
    std::vector<DrawLevelMeter> m_meters; ///< in the order of the readings
};
