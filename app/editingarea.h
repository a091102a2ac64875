#pragma once

#include "app/mixerwidgets.h"

/// The editing area above the strips: the equalizer and the compressor of one strip.
/// GUI thread only.
namespace editingarea {

/// Makes the widgets of the editing area as children of `area`, with their places, object names,
/// tool tips and accessible names, in tab order. The area is disabled and shows no strip: all
/// values are empty and the curves are flat. Nothing is connected.
SectionWidgets build(QWidget *area);

} // namespace editingarea
