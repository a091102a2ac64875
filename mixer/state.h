#pragma once

#include "device/commandvalues.h"
#include "mixer/parameters.h"
#include "mixer/strip.h"
#include "storage/values.h"

#include <optional>

/// What the stored values mean: for every value that a control shows or the device is sent, the one
/// place that reads it. A value outside its scale reads as the control's default. Pure functions;
/// any thread.
namespace mixer {

using storage::Values;

/// @name Which strips there are
///@{
bool isLinked(const Values &values, const StripId &pair);
/// Whether a strip is on the page that its pair shows; the master always is. A strip that is not
/// shown keeps its values, but they are not sent, and its solo does not count.
bool isShown(const Values &values, const StripId &strip);
/// The strip that an input (1 to 16) is heard through: its pair if that is linked.
StripId shownStrip(const Values &values, int input);
/// The strip that is shown for editing: the first that is stored as selected, or, if that is not
/// shown, the one in its place. None while no strip is selected or the mixer is bypassed.
std::optional<StripId> editedStrip(const Values &values);
///@}

bool isOn(const Values &values, const StripId &strip, const storage::SwitchKey &key);
bool isBypassed(const Values &values);
/// Whether a strip that is shown is soloed, other than the excepted one.
bool isAnySoloed(const Values &values, const std::optional<StripId> &except = std::nullopt);

/// @name Positions
///@{
int faderPosition(const Values &values, const StripId &strip);
int panPosition(const Values &values, int input);
Value knobValue(const Values &values, const StripId &strip, const Parameter &parameter);
///@}

QString stripName(const Values &values, const StripId &strip);
/// "Channel 3 Snare", "Channel 3" without a name.
QString titleWithName(const Values &values, const StripId &strip);
/// Place of the source of a line output, 1 to 8.
int lineOutSource(const Values &values, int output);

/// @name What the commands carry
///@{
std::uint8_t faderByte(const Values &values, const StripId &strip);
std::uint8_t panByte(const Values &values, int input);
/// band is 0 low, 1 high, 2 high-mid, 3 low-mid.
Eq eqOf(const Values &values, const StripId &strip, int band);
Comp compOf(const Values &values, const StripId &strip);
///@}

} // namespace mixer
