#pragma once

#include "app/mixerwidgets.h"
#include "mixer/meters.h"

#include <QObject>

#include <vector>

/// Shows the readings of all level meters. GUI thread only.
class MetersView : public QObject
{
    Q_OBJECT

public:
    /// @param widgets must outlive the object
    explicit MetersView(const MixerWidgets &widgets);

    /// Shows new readings; changes only the widgets whose reading has changed.
    void show(const mixer::Meters::Readings &readings);

signals:
    void clearRequested(); ///< of the clip memories

private:
    void add(const SideWidgets &side);

    mixer::Meters::Readings m_readings;
    std::vector<DrawLevelMeter *> m_meters; ///< in the order of the readings
};
