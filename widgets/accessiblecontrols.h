#pragma once

#include <QString>

#include <functional>

class QWidget;

/// What screen readers are told about the panel's own controls. GUI thread only.
namespace accessiblecontrols {

/// Registers the interfaces for StepControl, ChannelControl, lists and spoken widgets with Qt. Call
/// it once, before the first window.
void install();

/// Gives a drawn widget words for what it shows, such as a meter's level. They are computed when a
/// screen reader asks for them, so that a meter costs nothing while nothing listens. Replaces words
/// that the widget had before.
void setWords(QWidget *widget, const std::function<QString()> &words);

} // namespace accessiblecontrols
