#pragma once

#include "mixer/mixer.h"

#include <optional>

class ControlGestures;
class StepControl;
class TurnControl;

/// What the controls of the channel editor need. All outlive them.
struct EditorContext
{
    mixer::Mixer &mixer;
    const storage::Store &store;
    ControlGestures &gestures;
};

/// Connects controls of the channel editor to the knobs of the edited strip. GUI thread only.
namespace editorknob {

/// Lets a field or dial change a knob of the edited strip, by all gestures.
/// @param readout where the value editor opens
void connectTo(
    const EditorContext &context, mixer::ParameterId id, TurnControl *control, QWidget *readout);

/// Tells screen readers name and value of a knob.
/// @param title follows the strip's name: "Low-mid band"
void speak(
    StepControl *control, const storage::Values &values, const std::optional<mixer::StripId> &strip,
    mixer::ParameterId id, const QString &title);

/// Returns the value that the edited strip's knob shows; without a strip that of the default.
mixer::Value valueOf(
    const storage::Values &values, const std::optional<mixer::StripId> &strip,
    mixer::ParameterId id);
/// Returns the value with its unit, or "" without a strip.
QString textOf(
    const storage::Values &values, const std::optional<mixer::StripId> &strip,
    mixer::ParameterId id);

/// Which values a part of the window shows.
enum class Part { Eq, Compressor, Head };

/// Returns whether a change set has changed what a part shows: a value of the edited strip, or
/// which strip is edited.
/// @param shown the strip that the part shows now
bool concerns(
    const storage::ChangeSet &changes, Part part, const std::optional<mixer::StripId> &shown,
    const std::optional<mixer::StripId> &edited);

} // namespace editorknob
