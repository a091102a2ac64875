#pragma once

#include "mixer/strip.h"

#include <QRect>
#include <QString>

class fader;
class PanControl;
class QLabel;
class QPushButton;
class QWidget;

/// The single controls that strips are made of, at their places in `parent` and with the look of
/// their default values. A control's `role` is what the style sheet knows it by. GUI thread only.
namespace stripcontrols {

/// How a control is called by the program and by a screen reader, and what it says of itself.
struct Naming
{
    QString object;
    QString spoken;
    QString tip;
};

void apply(const Naming &naming, const char *role, QWidget *widget);

/// A button that stays down.
QPushButton *makeToggle(
    const Naming &naming, const char *role, const QString &text, const QRect &area,
    QWidget *parent);
QLabel *makeText(
    const Naming &naming, const char *role, const QString &text, const QRect &area,
    QWidget *parent);
/// The cap of a fader, at 0 dB.
fader *makeFader(const Naming &naming, mixer::StripKind kind, QWidget *parent);
/// The marker of a pan control; `centre` is the column of its left edge there.
PanControl *makePan(const Naming &naming, int centre, QWidget *parent);
/// The lit part of a meter, hidden: the image of a full bar, of which the widget shows the lower
/// end, so that a level has the same colour however high the bar is.
QLabel *makeMeter(const Naming &naming, int column, QWidget *parent);
/// The mark above a meter, hidden.
QLabel *makePeak(const Naming &naming, int column, QWidget *parent);

} // namespace stripcontrols
