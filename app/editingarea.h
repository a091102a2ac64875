#pragma once

#include "app/mixerwidgets.h"

/// The panel above the strips: the equalizer and the compressor of the strip that is shown.
/// GUI thread only.
namespace editingarea {

/// Makes the widgets as children of `area`, in its coordinates and at their places, with object
/// names, tooltips and accessible names, in the order in which Tab walks them. No strip is shown:
/// the area is disabled, all values are empty and the curves flat. Nothing is connected.
SectionWidgets build(QWidget *area);

} // namespace editingarea
