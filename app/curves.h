#pragma once

#include "mixer/strip.h"
#include "storage/values.h"
#include "widgets/compressorcurve.h"
#include "widgets/eqcurve.h"

#include <optional>

/// The stored EQ and compressor of a strip as the displays take them. Pure functions; any thread.
namespace curves {

/// Without a strip the curve is flat and in the state NoChannel. The marks are not set.
EqCurve eqOf(const storage::Values &values, const std::optional<mixer::StripId> &strip);
/// Without a strip the curve is in the state NoChannel.
CompressorCurve
compressorOf(const storage::Values &values, const std::optional<mixer::StripId> &strip);

} // namespace curves
