#pragma once

#include "mixer/routing.h"

#include <array>

class LineOut;
class QCheckBox;
class QComboBox;
class QPushButton;
class QRadioButton;

namespace mixer {

/// The widgets of the Output page, as its rule sees them. The window builds the record once,
/// together with the widgets; the widgets belong to the window. GUI thread only.
struct OutputView
{
    std::array<QComboBox *, lineOutCount> lists{}; ///< the sources of line output 1 to 8
    LineOut *picture = nullptr;
    QCheckBox *stereoBus = nullptr;
    QPushButton *stereoBusTwin = nullptr; ///< shows the same; never enabled for a click
    QRadioButton *bypassOn = nullptr;
    QRadioButton *bypassOff = nullptr;
};

} // namespace mixer
