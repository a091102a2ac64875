#pragma once

class QWidget;

/// The pages of the window.
// contract: the numbers, which are stored in the settings.
enum class Page { Mixer = 0, Interface = 1, Output = 2 };

/// Returns a new row of tabs for the top of a page: a label for the page itself and a button for
/// each other page. The buttons are named "pB_ToOutputFromMixer" and so on; the window connects
/// them by these names. GUI thread only.
QWidget *makePageBar(Page current, QWidget *parent);
