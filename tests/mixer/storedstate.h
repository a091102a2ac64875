#pragma once

#include "simulator/mixerstate.h"
#include "storage/store.h"

#include <QStringList>

/// The values in the text of a settings file.
storage::Values valuesOf(const QByteArray &ini);

/// The state of a device that agrees with these settings. Uses the scales, but none of the code
/// that sends.
simulator::MixerState storedState(const storage::Values &settings);

/// Each value that differs, as "input 3 fader: -127, expected -16".
QStringList differences(const simulator::MixerState &state, const simulator::MixerState &expected);

/// Stores a pseudo-random value for everything that a device holds, the same values on each call.
/// Two pairs are linked, one strip is selected and the mixer is not bypassed.
void storeVariety(storage::Store &store);
