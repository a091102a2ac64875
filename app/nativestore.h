#pragma once

#include "common/constants.h"

#include <QSettings>
#include <QString>

/// Returns the native store, which keeps the lasting values that are not the mixer's: places of
/// windows, zoom, the current scene, safe strips. Works without an application object.
/// @param organisation see Edition::organisation
inline QSettings nativeStore(const QString &organisation)
{
    return QSettings(organisation, QLatin1String(constants::applicationName));
}
