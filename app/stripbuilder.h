#pragma once

#include "app/mixerwidgets.h"

class QWidget;

/// Builders of strips. They make a strip's widgets as children of `parent`, in tab order, with
/// their places, object names, tool tips and accessible names. The widgets show the default values
/// (fader 0 dB, pan centre, no level). Nothing is connected. GUI thread only.
namespace stripbuilder {

/// Builds a mono strip in the left half of `parent` for an odd number, else in the right half.
/// @param number 1 to 16
StripWidgets buildMono(int number, QWidget *parent);
/// Builds a pair's stereo strip.
/// @param left the pair's left channel: 1, 3, ... 15
StripWidgets buildPair(int left, QWidget *parent);
/// Builds the master strip.
StripWidgets buildMaster(QWidget *parent);

/// Builds the mark that a recall keeps the strips of a pair, hidden. It lies on the link button.
/// @param left the pair's left channel: 1, 3, ... 15
QLabel *buildSafeMark(int left, QWidget *parent);
/// Builds the same mark for the master, beside its title.
QLabel *buildMasterSafeMark(QWidget *parent);

/// Builds the button at the foot of a pair that links or unlinks its two channels.
/// @param left the pair's left channel: 1, 3, ... 15
/// @param linked whether the button belongs to the linked pair and unlinks it
QPushButton *buildLinkButton(int left, bool linked, QWidget *parent);

} // namespace stripbuilder
