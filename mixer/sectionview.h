#pragma once

#include "mixer/parameters.h"

#include <array>

class DialControl;
class DrawCompressor;
class DrawEq;
class QLabel;
class QPushButton;
class QWidget;

namespace mixer {

/// The widgets of the editing area above the strips, as the mixer rules see them. The window
/// builds the record once, together with the widgets; the widgets belong to the window. GUI thread
/// only.
struct SectionView
{
    struct Knob
    {
        DialControl *dial = nullptr;
        QLabel *text = nullptr; ///< shows the value
    };

    /// Holds all of them, and is built disabled: while no strip is shown everything in it is quiet
    /// and takes no input.
    QWidget *area = nullptr;
    QLabel *title = nullptr;                ///< names the strip that is shown
    std::array<Knob, parameterCount> knobs; ///< by ParameterId
    QPushButton *lowCut = nullptr;
    DrawEq *eqCurve = nullptr;
    DrawCompressor *compressorCurve = nullptr;
    QLabel *gainReduction = nullptr; ///< the bar
    /// The bar's caption; the style sheet colours it by its dynamic property "state":
    /// "GR_Passive", "GR_Available" or "GR_Active".
    QLabel *gainReductionCaption = nullptr;
};

} // namespace mixer
