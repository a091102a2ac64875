#pragma once

#include "device/commandvalues.h"
#include "mixer/parameters.h"
#include "mixer/strip.h"
#include "storage/values.h"

#include <optional>

/// Readers of the stored values. Views and the sender read through the same functions, so that
/// screen and device agree. A value outside its scale reads as the control's default. Pure
/// functions; any thread.
namespace mixer {

using storage::Values;

/// @name Which strips there are
///@{
bool isLinked(const Values &values, const StripId &pair);
/// Returns whether a strip is on screen: a pair if it is linked, a mono strip if its pair is not,
/// and always the master. A strip that is not shown keeps its values, but they are not sent and its
/// solo does not count.
bool isShown(const Values &values, const StripId &strip);
/// Returns the strip that is shown for an input (1 to 16): its pair if that is linked, else its
/// mono strip.
StripId shownStrip(const Values &values, int input);
/// Returns the strip that the editing area shows: the first strip that is stored as selected. If
/// that strip is not shown, returns the pair or left channel that is shown in its place. Returns
/// nothing while no strip is selected or the mixer is bypassed.
std::optional<StripId> editedStrip(const Values &values);
///@}

bool isOn(const Values &values, const StripId &strip, const storage::SwitchKey &key);
bool isBypassed(const Values &values);
/// Returns whether any shown strip but `except` is soloed.
bool isAnySoloed(const Values &values, const std::optional<StripId> &except = std::nullopt);
/// Returns whether a strip is muted only because other strips are soloed.
bool isMutedBySolo(const Values &values, const StripId &strip);

/// @name Positions
///@{
/// Returns faderTop to faderBottom; see faderscale.h.
int faderPosition(const Values &values, const StripId &strip);
/// Returns the pan position of an input, 1 to 16; see panscale.h.
int panPosition(const Values &values, int input);
Value knobValue(const Values &values, const StripId &strip, const Parameter &parameter);
///@}

/// Returns the name that the user gave a strip, or "".
QString stripName(const Values &values, const StripId &strip);
/// Returns a strip's title and the user's name for it: "Channel 3 Snare", or "Channel 3" without a
/// name.
QString titleWithName(const Values &values, const StripId &strip);
/// Returns the source of a line output (1 to 8), 0 to 9; see routing.h.
int lineOutSource(const Values &values, int output);

/// @name Values of the commands
///@{
/// Returns whole decibels in two's complement, -127 for silence.
std::uint8_t faderByte(const Values &values, const StripId &strip);
/// Returns -127 (left) to 127 (right) in two's complement.
std::uint8_t panByte(const Values &values, int input);
/// @param band see EqBand
Eq eqOf(const Values &values, const StripId &strip, int band);
Comp compOf(const Values &values, const StripId &strip);
///@}

} // namespace mixer
