#pragma once

class QWidget;

/// The pages of the window, numbered as in their stack and in the settings.
enum class Page { Mixer = 0, Interface = 1, Output = 2 };

/// Makes the row of tabs at the top of a page: a mark of the page itself and a button to each of
/// the others, named "pB_ToOutputFromMixer" and so on. What the buttons do is up to the window.
QWidget *makePageBar(Page current, QWidget *parent);
