#pragma once

#include "mixer/rules.h"

namespace mixer {

/// Says in a few words what a recall would change: "12 faders, 3 mutes, EQ of 2 strips, routing of
/// 5 and 6", or "nothing". Counts the strips that are shown after the recall, by the values that
/// their controls show. Pure; any thread.
/// @param safe see recall()
QString recallSummary(const Values &now, const Values &scene, const SafeStrips &safe = {});

} // namespace mixer
