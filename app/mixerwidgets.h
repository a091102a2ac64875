#pragma once

#include "mixer/parameters.h"
#include "mixer/routing.h"
#include "mixer/strip.h"

#include <array>

class ChannelControl;
class DialControl;
class DrawCompressor;
class DrawEq;
class fader;
class LineOut;
class PanControl;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QWidget;

/// The widgets of the pages, in records that the pages build once and the views work on. The
/// widgets belong to the window. GUI thread only.

/// What a channel has in a view: a mono strip has one side, a stereo strip two.
struct SideWidgets
{
    QPushButton *phase = nullptr;
    PanControl *panKnob = nullptr;
    QLabel *panText = nullptr;
    QLabel *meter = nullptr;
    QLabel *peak = nullptr;
};

/// One strip. The master has only the fader, its text, the mute and two sides with meter and peak.
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
    QLineEdit *name = nullptr;
    std::array<SideWidgets, 2> sides; ///< left and right; a mono strip uses the first alone
};

/// What a pair's place in the window has beside its strips.
struct PairWidgets
{
    QStackedWidget *pages = nullptr; ///< 0 the two mono strips, 1 the stereo strip
    QPushButton *linkOn = nullptr;
    QPushButton *linkOff = nullptr;
};

struct MixerWidgets
{
    std::array<StripWidgets, mixer::stripCount> strips; ///< in the order of StripId::index()
    std::array<PairWidgets, mixer::pairCount> pairs;

    const StripWidgets &of(const mixer::StripId &strip) const
    {
        return strips[static_cast<std::size_t>(strip.index())];
    }
    const PairWidgets &ofPair(const mixer::StripId &pair) const
    {
        return pairs[static_cast<std::size_t>(pair.number / 2)];
    }
};

/// The editing area above the strips.
struct SectionWidgets
{
    struct Knob
    {
        DialControl *dial = nullptr;
        QLabel *text = nullptr; ///< shows the value
    };

    /// Holds all of them. Disabled while no strip is shown.
    QWidget *area = nullptr;
    QLabel *title = nullptr;                       ///< names the strip that is shown
    std::array<Knob, mixer::parameterCount> knobs; ///< by ParameterId
    QPushButton *lowCut = nullptr;
    DrawEq *eqCurve = nullptr;
    DrawCompressor *compressorCurve = nullptr;
    QLabel *gainReduction = nullptr; ///< the bar
    /// The bar's caption; the style sheet colours it by its dynamic property "state":
    /// "GR_Passive", "GR_Available" or "GR_Active".
    QLabel *gainReductionCaption = nullptr;
};

/// The Output page.
struct OutputWidgets
{
    std::array<QComboBox *, mixer::lineOutCount> lists{}; ///< the sources of line output 1 to 8
    LineOut *picture = nullptr;
    QCheckBox *stereoBus = nullptr;
    QPushButton *stereoBusTwin = nullptr; ///< shows the same; never enabled for a click
    QRadioButton *bypassOn = nullptr;
    QRadioButton *bypassOff = nullptr;
};
