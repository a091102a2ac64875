#pragma once

#include "simulator/mixerstate.h"
#include "storage/store.h"

#include <QStringList>

/// What a device holds when it agrees with these settings. It is worked out by the scales alone,
/// without any of the code that sends.
simulator::MixerState storedState(const storage::Values &settings);

/// Each value that is not the same in both, as "input 3 fader: -127, expected -16".
QStringList differences(const simulator::MixerState &state, const simulator::MixerState &expected);

/// Stores a value for everything that a device holds. All seem to be chosen at random, and are the
/// same each time; two pairs are linked, one strip is selected and the mixer is in use.
void storeVariety(storage::Store &store);
