#pragma once

#include "simulator/mixerstate.h"

#include <QStringList>

class Settings;

/// What a device holds when it agrees with a settings file. It is worked out from the file alone,
/// by the scales, without any of the code that sends.
simulator::MixerState storedState(const Settings &settings);

/// Each value that is not the same in both, as "input 3 fader: -127, expected -16".
QStringList differences(const simulator::MixerState &state, const simulator::MixerState &expected);

/// Stores a value for everything that a device holds. All seem to be chosen at random, and are the
/// same each time; two pairs are linked, one strip is selected and the mixer is in use.
void storeVariety(Settings &settings);
