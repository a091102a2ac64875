#pragma once

#include "mixer/parameters.h"
#include "mixer/routing.h"
#include "mixer/strip.h"

#include <array>

class ChannelControl;
class ClipMark;
class DialControl;
class DrawCompressor;
class DrawEq;
class fader;
class LineOut;
class NameEdit;
class PanControl;
class QCheckBox;
class QComboBox;
class DrawLevelMeter;
class ElidedLabel;
class QLabel;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QWidget;

/// @file
/// Records of the pages' widgets. The pages fill them once, and the views use them. The window owns
/// the widgets. GUI thread only.

/// The widgets of one side of a strip. A mono strip has one side, a stereo strip and the master
/// two.
struct SideWidgets
{
    QPushButton *phase = nullptr;
    PanControl *panKnob = nullptr;
    QLabel *panText = nullptr;
    DrawLevelMeter *meter = nullptr;
    QWidget *bar = nullptr;
    QWidget *hold = nullptr; ///< the line at the bar's maximum
    QWidget *peak = nullptr;
    ClipMark *clip = nullptr;
};

/// The widgets of one strip. The master has only a frame, the fader, its text, the mute and two
/// sides with meter and peak mark; its other pointers are null.
struct StripWidgets
{
    mixer::StripId id = mixer::master();
    ChannelControl *frame = nullptr; ///< the background, which shows that the strip is selected
    QPushButton *select = nullptr;
    QPushButton *eq = nullptr;
    QPushButton *comp = nullptr;
    QPushButton *solo = nullptr;
    QPushButton *mute = nullptr;
    fader *faderKnob = nullptr;
    QLabel *faderText = nullptr;
    NameEdit *name = nullptr;
    std::array<SideWidgets, 2> sides; ///< left and right; a mono strip uses only the first
};

/// The widgets that a pair's two mono strips and its stereo strip share.
struct PairWidgets
{
    QStackedWidget *pages = nullptr; ///< 0 the two mono strips, 1 the stereo strip
    QPushButton *linkOn = nullptr;
    QPushButton *linkOff = nullptr;
    std::array<QLabel *, 2> safeMarks{}; ///< on both pages; shown while a recall keeps the strips
};

/// The widgets of all strips and pairs.
struct MixerWidgets
{
    std::array<StripWidgets, mixer::stripCount> strips; ///< in the order of StripId::index()
    std::array<PairWidgets, mixer::pairCount> pairs;
    QLabel *masterSafeMark = nullptr;

    const StripWidgets &of(const mixer::StripId &strip) const
    {
        return strips[static_cast<std::size_t>(strip.index())];
    }
    const PairWidgets &ofPair(const mixer::StripId &pair) const
    {
        return pairs[static_cast<std::size_t>(pair.number / 2)];
    }
};

/// The widgets of the editing area above the strips.
struct SectionWidgets
{
    struct Knob
    {
        DialControl *dial = nullptr;
        QLabel *text = nullptr; ///< shows the value
        QLabel *unit = nullptr; ///< null for a parameter without a unit
    };

    /// The parent of the other widgets. It is disabled while no strip is shown.
    QWidget *area = nullptr;
    ElidedLabel *title = nullptr;                  ///< names the strip that is shown
    std::array<Knob, mixer::parameterCount> knobs; ///< by ParameterId
    QPushButton *lowCut = nullptr;
    DrawEq *eqCurve = nullptr;
    DrawCompressor *compressorCurve = nullptr;
    QLabel *gainReduction = nullptr; ///< the gain-reduction bar
    /// The caption of the gain-reduction bar. The style sheet colours it by its dynamic property
    /// "state": "GR_Passive", "GR_Available" or "GR_Active".
    QLabel *gainReductionCaption = nullptr;
    QLabel *gainReductionText = nullptr; ///< the reduction in decibels
    QLabel *hint = nullptr;              ///< says how to select a strip while none is shown
};

/// The widgets of the Output page.
struct OutputWidgets
{
    std::array<QComboBox *, mixer::lineOutCount> lists{}; ///< the sources of line outputs 1 to 8
    LineOut *picture = nullptr;
    QCheckBox *stereoBus = nullptr;
    QPushButton *stereoBusTwin = nullptr; ///< shows the check box's state and takes no clicks
    QRadioButton *bypassOn = nullptr;
    QRadioButton *bypassOff = nullptr;
};
