#pragma once

#include "app/mixerwidgets.h"

class QWidget;

/// Makes the widgets of one strip as children of `parent`, in its coordinates and at their
/// places, with object names, tooltips, accessible names and the look of the default values
/// (fader 0 dB, pan centre, no level). They are made in the order in which Tab walks them. Nothing
/// is connected. GUI thread only.
namespace stripbuilder {

/// `number` 1 to 16: an odd one is the left half of its pair's page, an even one the right half.
StripWidgets buildMono(int number, QWidget *parent);
/// `left` is the pair's left channel, 1, 3, ... 15.
StripWidgets buildPair(int left, QWidget *parent);
StripWidgets buildMaster(QWidget *parent);

/// The button across a pair's page that links its two channels, or parts them again.
QPushButton *buildLinkButton(int left, bool linked, QWidget *parent);

} // namespace stripbuilder
