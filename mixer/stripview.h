#pragma once

#include "mixer/strip.h"

#include <array>

class ChannelControl;
class fader;
class PanControl;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

/// The widgets of the strips, as the mixer rules see them. The window builds the records once,
/// together with the widgets; the widgets belong to the window. GUI thread only.
namespace mixer {

/// What a channel has in a view: a mono strip has one side, a stereo strip two.
struct SideView
{
    QPushButton *phase = nullptr;
    PanControl *panKnob = nullptr;
    QLabel *panText = nullptr; ///< shown while the knob is held
    QLabel *meter = nullptr;
    QLabel *peak = nullptr;
};

/// One strip. The master has only the fader, its text, the mute and two sides with meter and peak.
struct StripView
{
    StripId id;
    ChannelControl *frame = nullptr; ///< the background, which shows that the strip is selected
    QPushButton *select = nullptr;
    QPushButton *eq = nullptr;
    QPushButton *comp = nullptr;
    QPushButton *solo = nullptr;
    QPushButton *mute = nullptr;
    fader *faderKnob = nullptr;
    QLabel *faderText = nullptr;
    QLineEdit *name = nullptr;
    std::array<SideView, 2> sides; ///< left and right; a mono strip uses the first alone
};

/// What a pair's place in the window has beside its strips.
struct PairView
{
    QStackedWidget *pages = nullptr; ///< 0 the two mono strips, 1 the stereo strip
    QPushButton *linkOn = nullptr;
    QPushButton *linkOff = nullptr;
};

struct MixerView
{
    std::array<StripView, stripCount> strips; ///< in the order of StripId::index()
    std::array<PairView, pairCount> pairs;
};

/// Columns and rows in the parent of a strip's controls, in pixels of the 1x layout.
constexpr int stripWidth = 59;                   ///< a mono strip; a pair's page is two of them
constexpr int faderColumns[] = {12, 71, 35, 17}; ///< left edge of the fader cap, by StripKind
constexpr int panRow = 128;                      ///< top edge of the pan markers
constexpr int meterTop = 154;                    ///< row of a full level meter
constexpr int meterBottom = 260;                 ///< its last row

} // namespace mixer
