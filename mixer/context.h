#pragma once

#include "mixer/sectionview.h"
#include "mixer/stripview.h"

class QStackedWidget;
class QVXDevice;
class Settings;

namespace mixer {

constexpr int monoPageIndex = 0;
constexpr int stereoPageIndex = 1;

/// What every rule of the mixer works on: the stored state, the device and the widgets of the
/// strips and of the editing area. The rules own none of them. GUI thread only.
struct Context
{
    Settings &settings;
    QVXDevice &device;
    const MixerView &view;
    const SectionView &section;

    const StripView &viewOf(const StripId &strip) const;

    /// Whether a pair is linked, and so its page shows the stereo strip.
    bool isLinked(const StripId &pair) const;

    /// Where a pair shows its two mono strips or its stereo strip.
    QStackedWidget *pagesOf(const StripId &pair) const;

    /// Whether a strip is on the page that its pair shows, whatever is stored.
    bool isOnScreen(const StripId &strip) const;

    /// Whether a strip is on the page that its pair shows; the master always is. A strip that is
    /// not shown keeps its values but must not send them. While a pair is being linked or parted,
    /// when its "Link" and its page differ, none of its strips counts as shown.
    bool isShown(const StripId &strip) const;
};

} // namespace mixer
